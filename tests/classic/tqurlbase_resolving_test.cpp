#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/placement.h"
#include "support/texts.h"
#include "tqurlbase.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

// --- Single links: calcUrl(url) ---------------------------------------------------------------

struct LinkCase {
  Here here;
  std::string_view base;
  std::string_view url;
  std::string_view expected;
  std::string_view urlAfter;
};

void expectLink(const LinkCase& row, Placement& place) {
  urlBase base(place.constString(row.base));
  RWCString& url = place.string(row.url);
  const RWCString keeper(url);
  EXPECT_EQ(bytesOf(base.calcUrl(url)), row.expected);
  EXPECT_EQ(bytesOf(url), row.urlAfter);
  EXPECT_EQ(bytesOf(keeper), row.url);
}

constexpr std::string_view kDeep = "http://w1/a/b/c/f.html";

constexpr LinkCase kLinks[] = {
    {HERE, kDeep, "x.html"sv, "http://w1/a/b/c/x.html", "x.html"},
    {HERE, kDeep, "/x"sv, "http://w1/x", "/x"},
    {HERE, kDeep, "#f"sv, "http://w1/a/b/c/f.html#f", "#f"},
    {HERE, kDeep, "?q"sv, "http://w1/a/b/c/?q", "?q"},  // without the file name
    {HERE, kDeep, "./"sv, "http://w1/a/b/c/", "./"},
    {HERE, kDeep, "./x"sv, "http://w1/a/b/c/x", "x"},
    {HERE, kDeep, "./../x"sv, "http://w1/a/b/c/../x", "../x"},
    {HERE, kDeep, "././x"sv, "http://w1/a/b/c/./x", "./x"},
    {HERE, kDeep, ".x"sv, "http://w1/a/b/c/.x", ".x"},
    // Fewer than two bytes.
    {HERE, kDeep, ""sv, "http://w1/a/b/c/", ""},
    {HERE, kDeep, " \n"sv, "http://w1/a/b/c/", ""},
    {HERE, kDeep, "/"sv, "http://w1/", "/"},
    {HERE, kDeep, "a"sv, "http://w1/a/b/c/", "a"},
    {HERE, kDeep, "#"sv, "http://w1/a/b/c/", "#"},
    {HERE, kDeep, "."sv, "http://w1/a/b/c/", "."},
    {HERE, kDeep, "%41"sv, "http://w1/a/b/c/", "A"},
    // Absolute links stay, whatever their scheme; "://" in the query does not make one.
    {HERE, kDeep, "http://x/y?u=1"sv, "http://x/y?u=1", "http://x/y?u=1"},
    {HERE, kDeep, "FTP://x/../y"sv, "FTP://x/../y", "FTP://x/../y"},
    {HERE, kDeep, "x/y://z"sv, "x/y://z", "x/y://z"},
    {HERE, kDeep, "://"sv, "://", "://"},
    {HERE, kDeep, "a://b?c://d"sv, "a://b?c://d", "a://b?c://d"},
    {HERE, kDeep, "/r?u=http://x"sv, "http://w1/r?u=http://x", "/r?u=http://x"},
    {HERE, kDeep, "p?u=http://x"sv, "http://w1/a/b/c/p?u=http://x", "p?u=http://x"},
    {HERE, kDeep, "/x://y"sv, "http://w1/x://y", "/x://y"},
    // A leading "//" becomes the protocol, in the argument too.
    {HERE, kDeep, "//cdn/x.js"sv, "http://cdn/x.js", "http://cdn/x.js"},
    {HERE, kDeep, "//"sv, "http://", "http://"},
    {HERE, kDeep, "///x"sv, "http:///x", "http:///x"},
    {HERE, "https://s/", "//c/x"sv, "https://c/x", "https://c/x"},
    // Other schemes stay, http-like ones and class ids are resolved.
    {HERE, kDeep, "mailto:a@b"sv, "mailto:a@b", "mailto:a@b"},
    {HERE, kDeep, "javascript:go( 1 )"sv, "javascript:go( 1 )", "javascript:go( 1 )"},
    {HERE, kDeep, "file:/x"sv, "file:/x", "file:/x"},
    {HERE, kDeep, "tel:1"sv, "tel:1", "tel:1"},
    {HERE, kDeep, "clsid:1"sv, "http://w1/a/b/c/clsid:1", "clsid:1"},
    {HERE, kDeep, "http:x"sv, "http://w1/a/b/c/http:x", "http:x"},
    {HERE, kDeep, "svn+ssh:x"sv, "http://w1/a/b/c/svn+ssh:x", "svn+ssh:x"},
    // Cleaning and decoding come first.
    {HERE, kDeep, " x y\t "sv, "http://w1/a/b/c/x%20y", "x%20y"},
    {HERE, kDeep, "&amp;x=1"sv, "http://w1/a/b/c/&x=1", "&x=1"},
    {HERE, kDeep, "a&#47;b&lt;"sv, "http://w1/a/b/c/a/b<", "a/b<"},
    {HERE, kDeep, "&nbsp;ab"sv, "http://w1/a/b/c/ab", "ab"},
    {HERE, kDeep, "%2e%2e/x"sv, "http://w1/a/b/x", "../x"},
    {HERE, kDeep, "x%41?%41"sv, "http://w1/a/b/c/xA?%41", "xA?%41"},
    {HERE, kDeep, "x\0y"sv, "http://w1/a/b/c/x\0y"sv, "x\0y"sv},
};

TEST(CalcUrlOfALink, FollowsItsRules) {
  forEachPlacement(kLinks, expectLink);
}

constexpr LinkCase kClimbs[] = {
    {HERE, kDeep, "../x"sv, "http://w1/a/b/x", "../x"},
    {HERE, kDeep, "../../x"sv, "http://w1/a/x", "../../x"},
    {HERE, kDeep, "../../../x"sv, "http://w1/x", "../../../x"},
    {HERE, kDeep, "../../../../x"sv, "http://w1/x", "../../../../x"},
    {HERE, kDeep, "../"sv, "http://w1/a/b/", "../"},
    {HERE, kDeep, "../../"sv, "http://w1/a/", "../../"},
    // What follows the leading groups stays as it is.
    {HERE, kDeep, ".."sv, "http://w1/a/b/c/..", ".."},
    {HERE, kDeep, "../.."sv, "http://w1/a/b/..", "../.."},
    {HERE, kDeep, "../a/../b"sv, "http://w1/a/b/a/../b", "../a/../b"},
    {HERE, kDeep, "x/../y"sv, "http://w1/a/b/c/x/../y", "x/../y"},
    {HERE, kDeep, "../?q"sv, "http://w1/a/b/?q", "../?q"},
    {HERE, kDeep, "..//x"sv, "http://w1/a/b//x", "..//x"},
    {HERE, "http://w1/a/f", "../x"sv, "http://w1/x", "../x"},
    {HERE, "http://w1/f", "../x"sv, "http://w1/x", "../x"},
    {HERE, "http://w1", "../x"sv, "http://w1/x", "../x"},
};

TEST(CalcUrlOfALink, ClimbsTheDirectories) {
  forEachPlacement(kClimbs, expectLink);
}

constexpr LinkCase kOddBases[] = {
    {HERE, "http://h", "x.html"sv, "http://h/x.html", "x.html"},
    {HERE, "http://h?q", "#f"sv, "http://h/#f", "#f"},
    {HERE, "http://h/d/", "#f"sv, "http://h/d/#f", "#f"},
    // A base that cannot be split leaves nothing before the link.
    {HERE, "ftp://h/d/", "x.html"sv, "x.html", "x.html"},
    {HERE, "ftp://h/d/", "/x"sv, "/x", "/x"},
    {HERE, "ftp://h/d/", "//c/x"sv, "c/x", "c/x"},
    {HERE, "ftp://h/d/", "../x"sv, "/x", "../x"},
    {HERE, "", ""sv, "", ""},
    {HERE, "", "/"sv, "/", "/"},
};

TEST(CalcUrlOfALink, UsesWhatTheBaseHas) {
  forEachPlacement(kOddBases, expectLink);
}

// The parts are a host's to change.
TEST(CalcUrlOfALink, StaysInTheDirectoryWhateverItsDepth) {
  urlBase base(stringOf(kDeep));
  base.shortParse();
  base.dirDepth = 9;
  RWCString url("../x");
  EXPECT_EQ(bytesOf(base.calcUrl(url)), "http://w1/a/b/c/x");
}

// --- Attributes: calcUrl(in, out, resolveEmpty, decodePercent) --------------------------------

struct ResolveCase {
  Here here;
  std::string_view base;
  std::string_view in;
  std::string_view expected;
};

constexpr std::string_view kPage = "http://w1/d/page.html?x";
constexpr std::string_view kOld = "what out held before the call";

void expectResolved(const ResolveCase& row, Placement& place) {
  urlBase base(place.constString(row.base));
  const RWCString& in = place.constString(row.in);
  RWCString& out = place.string(kOld);
  base.calcUrl(in, out, true, true);
  EXPECT_EQ(bytesOf(out), row.expected);
  EXPECT_EQ(bytesOf(in), row.in);
  RWCString& both = place.string(row.in);
  base.calcUrl(both, both, true, true);
  EXPECT_EQ(bytesOf(both), row.expected) << "with the result in the argument";
}

constexpr ResolveCase kReferences[] = {
    {HERE, kPage, ""sv, "http://w1/d/"},
    {HERE, kPage, "img.png"sv, "http://w1/d/img.png"},
    {HERE, kPage, "./img.png"sv, "http://w1/d/img.png"},
    {HERE, kPage, "/a/./b/../c.png"sv, "http://w1/a/c.png"},
    {HERE, kPage, "../up.png"sv, "http://w1/up.png"},
    {HERE, kPage, "#top"sv, "http://w1/d/page.html#top"},
    {HERE, kPage, "?y=1"sv, "http://w1/d/page.html?y=1"},
    {HERE, kPage, "//cdn/x.js"sv, "http://cdn/x.js"},
    {HERE, kPage, "HTTPS://Other/a/../b"sv, "HTTPS://Other/a/../b"},
    {HERE, kPage, "javascript:go()"sv, "javascript:go()"},
    {HERE, kPage, "mailto:a"sv, "mailto:a"},
    {HERE, kPage, "ftp://f/x"sv, "ftp://f/x"},
    {HERE, kPage, "tel:1"sv, "tel:1"},
    {HERE, kPage, "\\\\srv\\share\\f"sv, "file://srv\\share\\f"},
    {HERE, kPage, "a\\b.png"sv, "http://w1/d/a/b.png"},
    {HERE, kPage, "/"sv, "http://w1/"},
    {HERE, kPage, "a"sv, "http://w1/d/a"},
    {HERE, kPage, "#"sv, "http://w1/d/page.html#"},
    {HERE, kPage, "?"sv, "http://w1/d/page.html?"},
    {HERE, "https://s/", "//c/x"sv, "https://c/x"},
    {HERE, "https://s/", "x"sv, "https://s/x"},
    {HERE, "http://h", "x"sv, "http://h/x"},
    {HERE, "http://h?q", "#f"sv, "http://h#f"},
    // Cleaned before it is looked at; entities stay.
    {HERE, kPage, "  a b\n"sv, "http://w1/d/a%20b"},
    {HERE, kPage, " "sv, "http://w1/d/"},
    {HERE, kPage, "%41?%41"sv, "http://w1/d/A?%41"},
    {HERE, kPage, "%2e%2e/x"sv, "http://w1/x"},
    {HERE, kPage, "a&amp;b"sv, "http://w1/d/a&amp;b"},
    {HERE, kPage, " javascript: a b "sv, "javascript: a b"},
    {HERE, kPage, "a\0b"sv, "http://w1/d/a\0b"sv},
    {HERE, kPage, "%zz"sv, "http://w1/d/\0"sv},
};

TEST(CalcUrl, ResolvesReferences) {
  forEachPlacement(kReferences, expectResolved);
}

constexpr ResolveCase kSchemes[] = {
    // file: only the second byte after the scheme is tested.
    {HERE, kPage, "file://h/x"sv, "file://h/x"},
    {HERE, kPage, "file:a/b"sv, "file:a/b"},
    {HERE, kPage, "file:/x"sv, "file:///x"},
    {HERE, kPage, "file:c:/x"sv, "file:///c:/x"},
    {HERE, kPage, "FILE:x"sv, "file:///x"},
    {HERE, kPage, "file:"sv, "file:///"},
    {HERE, kPage, "file:/"sv, "file:///"},
    {HERE, kPage, "file:x"sv, "file:///x"},
    {HERE, kPage, "file:\\\\h\\x"sv, "file:///\\\\h\\x"},
    {HERE, kPage, "file:../x"sv, "file:///../x"},
    // http without "//" is relative.
    {HERE, kPage, "http:page.html"sv, "http://w1/d/page.html"},
    {HERE, kPage, "https:page.html"sv, "http://w1/d/page.html"},
    {HERE, kPage, "http:/x"sv, "http://w1/x"},
    {HERE, kPage, "http:"sv, "http://w1/d/"},
    {HERE, kPage, "http:/"sv, "http://w1/"},
    {HERE, kPage, "http:?q"sv, "http://w1/d/page.html?q"},
    {HERE, kPage, "http:../x"sv, "http://w1/x"},
    {HERE, kPage, "http:\\\\x"sv, "http://w1//x"},
    {HERE, kPage, "http://"sv, "http://"},
    {HERE, kPage, "//"sv, "http://"},
    {HERE, kPage, "http:ftp:x"sv, "http://w1/d/ftp:x"},
    // Class ids end up after the directory, other schemes stay.
    {HERE, kPage, "clsid:1-2"sv, "http://w1/d/clsid:1-2"},
    {HERE, kPage, ":x"sv, ":x"},
    {HERE, kPage, "news:a\\b"sv, "news:a\\b"},
    {HERE, kPage, "svn+ssh://h"sv, "http://w1/d/svn+ssh://h"},
    {HERE, kPage, "\\\\"sv, "file://"},
    {HERE, kPage, "\\"sv, "http://w1/"},
    {HERE, kPage, "\\x"sv, "http://w1/x"},
    {HERE, kPage, "/\\x"sv, "http://w1//x"},
};

TEST(CalcUrl, TreatsSchemes) {
  forEachPlacement(kSchemes, expectResolved);
}

constexpr ResolveCase kDots[] = {
    //           base                 in                expected
    {HERE, kPage, "./"sv, "http://w1/d/"},
    {HERE, kPage, "."sv, "http://w1/d/."},
    {HERE, kPage, "./."sv, "http://w1/d/."},
    {HERE, kPage, "././x"sv, "http://w1/d/./x"},
    {HERE, kPage, "./././x"sv, "http://w1/d/./x"},
    {HERE, kPage, "/./"sv, "http://w1/"},
    {HERE, kPage, "a/././b"sv, "http://w1/d/a/b"},
    {HERE, kPage, "a/./././b/./c"sv, "http://w1/d/a/b/c"},
    {HERE, kPage, "a//./b"sv, "http://w1/d/a//b"},
    {HERE, kPage, "a?b/./c"sv, "http://w1/d/a?b/c"},
    {HERE, kPage, "a/."sv, "http://w1/d/a/."},
    {HERE, kPage, "a/./"sv, "http://w1/d/a/"},
    // Backslashes become slashes after "./" has gone and before "../" goes.
    {HERE, kPage, ".\\x"sv, "http://w1/d/./x"},
    {HERE, kPage, "..\\x"sv, "http://w1/x"},
    {HERE, kPage, "a\\.\\b"sv, "http://w1/d/a/./b"},
    {HERE, kPage, "a?b\\c"sv, "http://w1/d/a?b/c"},
    {HERE, kPage, "#a\\b"sv, "http://w1/d/page.html#a/b"},
    // Parents.
    {HERE, kPage, "../"sv, "http://w1/"},
    {HERE, kPage, ".."sv, "http://w1/d/.."},
    {HERE, kPage, "../.."sv, "http://w1/.."},
    {HERE, kPage, "../../x"sv, "http://w1/x"},
    {HERE, kPage, "../../../x"sv, "http://w1/x"},
    {HERE, kPage, "/../x"sv, "http://w1/x"},
    {HERE, kPage, "/a/b/../c"sv, "http://w1/a/c"},
    {HERE, kPage, "/a/b/c/../../d"sv, "http://w1/a/d"},
    {HERE, kPage, "/a/../b/../c"sv, "http://w1/c"},
    {HERE, kPage, "a//../b"sv, "http://w1/d/a/b"},
    // What stands between the "/" and the ".." goes too.
    {HERE, kPage, "/a/b../c"sv, "http://w1/a/c"},
    {HERE, kPage, ".../x"sv, "http://w1/d/x"},
    {HERE, kPage, "..x/../y"sv, "http://w1/d/y"},
    // Nothing in a query is folded, a fragment is.
    {HERE, kPage, "a/../b?u=../x"sv, "http://w1/d/b?u=../x"},
    {HERE, kPage, "a?../x"sv, "http://w1/d/a?../x"},
    {HERE, kPage, "?../x"sv, "http://w1/d/page.html?../x"},
    {HERE, kPage, "#../x"sv, "http://w1/d/x"},
    {HERE, kPage, "a/../b?c/../../d"sv, "http://w1/d/b?c/../../d"},
};

TEST(CalcUrl, FoldsDotSegments) {
  forEachPlacement(kDots, expectResolved);
}

constexpr ResolveCase kHosts[] = {
    // The host is looked for from the start: one that also stands in the scheme is taken there.
    {HERE, "http://t/d/", "../x"sv, "http://t/x"},
    {HERE, "http://t/d/", "../../x"sv, "http://x"},
    {HERE, "http://t/d/", "../../../../"sv, ""},
    {HERE, "http://t/d/", "../../../../x"sv, "x"},
    {HERE, "http://tp/d/", "../../x"sv, "http://x"},
    {HERE, "http://p/d/", "../../x"sv, "http://x"},
    {HERE, "http://W1/d/", "../../x"sv, "http://W1/x"},
    // An empty host, and bases that cannot be split: folding starts at 0.
    {HERE, "http:///d/", "../x"sv, "http:///x"},
    {HERE, "", "x"sv, "//x"},
    {HERE, "", "/x"sv, "///x"},
    {HERE, "", "//c/x"sv, "////c/x"},
    {HERE, "", "x/../../y"sv, "/y"},
    {HERE, "", "../y"sv, "/y"},
    {HERE, "", "../../y"sv, "/y"},
    {HERE, "", "../../../../y"sv, "/y"},
    {HERE, "ftp://h/x", "#y"sv, "ftp://h/x#y"},
    {HERE, "ftp://h/x", "?y"sv, "ftp://h/x?y"},
    // No "/" before the bytes to remove, or nothing before the "../" at all.
    {HERE, "a", "#../b"sv, "b"},
    {HERE, "../a", "#b"sv, "a#b"},
    {HERE, "../../a", "#b"sv, "a#b"},
    {HERE, "a../../b", "#c"sv, "/b#c"},
};

TEST(CalcUrl, FoldsAfterTheFirstPlaceOfTheHost) {
  forEachPlacement(kHosts, expectResolved);
}

// A base that cannot be split keeps the host of an earlier one, which the text need not hold.
TEST(CalcUrl, FoldsFromTheStartWithoutTheHostInTheText) {
  urlBase base("http://old/d/f");
  base.parse();
  base.setBase("ftp://h/x");
  RWCString out;
  base.calcUrl("#../../y", out, true, true);
  EXPECT_EQ(bytesOf(out), "ftp://y");
  base.calcUrl("z", out, true, true);
  EXPECT_EQ(bytesOf(out), "http://old/d/z");
}

TEST(CalcUrl, LeavesOutAloneForAnEmptyReference) {
  urlBase base(stringOf(kPage));
  RWCString out = stringOf(kOld);
  base.calcUrl("", out, false, true);
  EXPECT_EQ(bytesOf(out), kOld);
  EXPECT_FALSE(base.parsed);
  // Only a reference that is empty before it is cleaned.
  base.calcUrl(" \t", out, false, true);
  EXPECT_EQ(bytesOf(out), "http://w1/d/");
}

TEST(CalcUrl, KeepsEscapesUnlessTold) {
  urlBase base(stringOf(kPage));
  RWCString out;
  base.calcUrl("%2e%2e/%41 ", out, false, false);
  EXPECT_EQ(bytesOf(out), "http://w1/d/%2e%2e/%41");
}

// One object is meant for one resolver: whichever splits first fixes the protocol's spelling.
TEST(CalcUrl, SharesTheSplitWithTheOtherResolver) {
  urlBase base(stringOf(kPage));
  RWCString link("x.html");
  RWCString out;
  EXPECT_EQ(bytesOf(base.calcUrl(link)), "http://w1/d/x.html");
  base.calcUrl("x", out, true, true);
  EXPECT_EQ(bytesOf(out), "http:////w1/d/x");
  base.setBase(stringOf(kPage));
  base.calcUrl("x", out, true, true);
  EXPECT_EQ(bytesOf(out), "http://w1/d/x");
  EXPECT_EQ(bytesOf(base.calcUrl(link)), "http:w1/d/x.html");
}

// --- Large references -------------------------------------------------------------------------

constexpr std::size_t kMany = 400000;

TEST(CalcUrl, EndsOnLargeReferences) {
  urlBase base("http://w1/d/e");
  const auto resolved = [&](const std::string& bytes) {
    RWCString out;
    base.calcUrl(stringOf(bytes), out, true, true);
    return std::string(bytesOf(out));
  };
  EXPECT_EQ(resolved(repeated("../", kMany) + "x"), "http://w1/x");
  EXPECT_EQ(resolved(repeated("a/", kMany) + repeated("../", kMany) + "x"), "http://w1/d/x");
  EXPECT_EQ(resolved(repeated("a/../", kMany) + "x"), "http://w1/d/x");
  EXPECT_EQ(resolved(repeated("a../", kMany) + "x"), "http://w1/d/x");
  EXPECT_EQ(resolved("/" + repeated("./", kMany) + "x"), "http://w1/x");
  EXPECT_EQ(resolved("a" + repeated("\\", kMany)), "http://w1/d/a" + repeated("/", kMany));
  EXPECT_EQ(resolved("a?" + repeated("../", kMany)), "http://w1/d/a?" + repeated("../", kMany));
  EXPECT_EQ(resolved(std::string(kMany, '.') + "/x"), "http://w1/d/x");
}

TEST(CalcUrl, FoldsALongBase) {
  urlBase base(stringOf("http://w1/" + repeated("a/", kMany) + "f"));
  RWCString out;
  base.calcUrl(stringOf(repeated("../", kMany - 1) + "x"), out, true, true);
  EXPECT_EQ(bytesOf(out), "http://w1/a/x");
}

// The host nearly occurs at every byte before it. A search that tried each place anew would be
// at it for more than ten minutes.
TEST(CalcUrl, EndsOnABaseThatIsLikeItsHost) {
  const std::string like(16'000'000, 'a');
  const std::string text = like + "//" + like + "b/http://x/";
  urlBase base(stringOf(text));
  RWCString out;
  base.calcUrl("#../x", out, true, true);
  EXPECT_TRUE(bytesOf(out) == like + "//" + like + "b/http://x/x");
}

TEST(CalcUrlOfALink, EndsOnLargeLinks) {
  urlBase base(stringOf("http://w1/" + repeated("a/", kMany) + "f"));
  RWCString climbing = stringOf(repeated("../", kMany - 1) + "x");
  EXPECT_EQ(bytesOf(base.calcUrl(climbing)), "http://w1/a/x");
  RWCString references = stringOf("x" + repeated("&amp;", kMany));
  EXPECT_EQ(bytesOf(base.calcUrl(references)),
            "http://w1/" + repeated("a/", kMany) + "x" + repeated("&", kMany));
}

}  // namespace
}  // namespace pagescan::tests
