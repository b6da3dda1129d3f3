#include "tqurlbase.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>

#include "support/placement.h"
#include "support/texts.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

// --- Schemes that are resolved ----------------------------------------------------------------

struct HttpCase {
  Here here;
  std::string_view url;
  bool expected;
};
constexpr HttpCase kHttp[] = {
    {HERE, "page.html"sv, true},
    {HERE, "HTTPS://h"sv, true},
    {HERE, "http:"sv, true},
    {HERE, "httpx:y"sv, true},
    {HERE, "clsid:1"sv, true},
    {HERE, "CLSIDs:1"sv, true},
    {HERE, "mailto:a"sv, false},
    {HERE, "ftp://h"sv, false},
    {HERE, "htt:x"sv, false},
    {HERE, "clsi:x"sv, false},
    {HERE, "xhttp:y"sv, false},
    {HERE, "javascript:x"sv, false},
    {HERE, "c:\\x"sv, false},
    // Without letters from the first byte up to a ":" there is no scheme.
    {HERE, ""sv, true},
    {HERE, "http"sv, true},
    {HERE, "1abc:x"sv, true},
    {HERE, ":x"sv, true},
    {HERE, "svn+ssh://h"sv, true},
    {HERE, " ftp:x"sv, true},
    {HERE, "ft\0p:x"sv, true},
    {HERE, "\xE4:x"sv, true},
    {HERE, "/ftp:x"sv, true},
    {HERE, "aschemethatistoolongtostandinthestringobject:x"sv, false},
    {HERE, "httpaschemethatistoolongtostandinthestringobject:x"sv, true},
};

TEST(IsHttpProtocol, AcceptsNoSchemeAndHttpAndClsidPrefixes) {
  forEachPlacement(kHttp, [](const HttpCase& row, Placement& place) {
    const RWCString& url = place.constString(row.url);
    EXPECT_EQ(isHttpProtocol(url), row.expected);
    EXPECT_EQ(bytesOf(url), row.url);
  });
}

TEST(IsHttpProtocol, EndsOnLargeUrls) {
  const std::string letters(4U << 20, 'h');
  EXPECT_TRUE(isHttpProtocol(stringOf(letters)));
  EXPECT_FALSE(isHttpProtocol(stringOf(letters + ":")));
}

// --- The base ---------------------------------------------------------------------------------

TEST(UrlBase, StartsEmpty) {
  const urlBase base;
  EXPECT_EQ(base.fullUrl.length(), 0U);
  EXPECT_EQ(base.baseNoQuery.length(), 0U);
  EXPECT_EQ(base.protocol.length(), 0U);
  EXPECT_EQ(base.host.length(), 0U);
  EXPECT_EQ(base.dirPath.length(), 0U);
  EXPECT_EQ(base.fileName.length(), 0U);
  EXPECT_EQ(base.dirDepth, 0);
  EXPECT_FALSE(base.parsed);
  EXPECT_FALSE(base.spareFlag);
  EXPECT_TRUE(std::has_virtual_destructor_v<urlBase>);
}

struct SplitCase {
  Here here;
  std::string_view url;
  std::string_view fullUrl;
  std::string_view baseNoQuery;
  int result;
  std::string_view scheme;  // without "//"; "" where the split fails
  std::string_view host;
  std::string_view dirPath;
  std::string_view fileName;
  int dirDepth;
};

void expectParts(const urlBase& base, const SplitCase& row, std::string_view protocol) {
  EXPECT_EQ(bytesOf(base.fullUrl), row.fullUrl);
  EXPECT_EQ(bytesOf(base.baseNoQuery), row.baseNoQuery);
  EXPECT_EQ(bytesOf(base.protocol), protocol);
  EXPECT_EQ(bytesOf(base.host), row.host);
  EXPECT_EQ(bytesOf(base.dirPath), row.dirPath);
  EXPECT_EQ(bytesOf(base.fileName), row.fileName);
  EXPECT_EQ(base.dirDepth, row.dirDepth);
  EXPECT_TRUE(base.parsed);
}

void expectSplit(const SplitCase& row, Placement& place) {
  const std::string scheme(row.scheme);
  urlBase shortly(place.constString(row.url));
  EXPECT_FALSE(shortly.parsed);
  EXPECT_EQ(shortly.shortParse(), row.result);
  expectParts(shortly, row, scheme.empty() ? scheme : scheme + "//");
  // A second split, of either kind, does nothing.
  EXPECT_EQ(shortly.shortParse(), 1);
  EXPECT_EQ(shortly.parse(), 1);
  expectParts(shortly, row, scheme.empty() ? scheme : scheme + "//");
  urlBase base;
  EXPECT_TRUE(base.setBase(place.constString(row.url)));
  EXPECT_EQ(base.parse(), row.result);
  expectParts(base, row, scheme);
  EXPECT_EQ(base.shortParse(), 1);
  expectParts(base, row, scheme);
}

constexpr SplitCase kSplits[] = {
    {HERE, "HTTP://Host:81/a/b/page.html?x=1#top"sv, "HTTP://Host:81/a/b/page.html?x=1",
     "HTTP://Host:81/a/b/page.html", 0, "http:", "Host:81", "/a/b/", "page.html", 3},
    {HERE, "https://h/dir/"sv, "https://h/dir/", "https://h/dir/", 0, "https:", "h", "/dir/", "",
     2},
    {HERE, "http://h/"sv, "http://h/", "http://h/", 0, "http:", "h", "/", "", 1},
    {HERE, "http://h/f"sv, "http://h/f", "http://h/f", 0, "http:", "h", "/", "f", 1},
    {HERE, "http://u:p@h/f"sv, "http://u:p@h/f", "http://u:p@h/f", 0, "http:", "u:p@h", "/", "f",
     1},
    {HERE, "http://h//f"sv, "http://h//f", "http://h//f", 0, "http:", "h", "//", "f", 2},
    {HERE, "http:///f"sv, "http:///f", "http:///f", 0, "http:", "", "/", "f", 1},
    // Without a path.
    {HERE, "http://h"sv, "http://h", "http://h", 1, "http:", "h", "/", "", 0},
    {HERE, "http://"sv, "http://", "http://", 1, "http:", "", "/", "", 0},
    {HERE, "https://"sv, "https://", "https://", 1, "https:", "", "/", "", 0},
    // Query and fragment never reach the path.
    {HERE, "http://h/p?q=/x/y"sv, "http://h/p?q=/x/y", "http://h/p", 0, "http:", "h", "/", "p", 1},
    {HERE, "http://h?q=/x/y"sv, "http://h?q=/x/y", "http://h", 1, "http:", "h", "/", "", 0},
    {HERE, "http://h/p#a?b/c"sv, "http://h/p", "http://h/p", 0, "http:", "h", "/", "p", 1},
    {HERE, "http://h/p?a#b"sv, "http://h/p?a", "http://h/p", 0, "http:", "h", "/", "p", 1},
    // The base is cleaned, with escapes before the query decoded.
    {HERE, "  http://h/a b\n"sv, "http://h/a%20b", "http://h/a%20b", 0, "http:", "h", "/", "a%20b",
     1},
    {HERE, "http://h/%7Euser/"sv, "http://h/~user/", "http://h/~user/", 0, "http:", "h", "/~user/",
     "", 2},
    {HERE, "http://h/%2fx"sv, "http://h//x", "http://h//x", 0, "http:", "h", "//", "x", 2},
    {HERE, "http://h/%3fx?%41"sv, "http://h/?x?%41", "http://h/", 0, "http:", "h", "/", "", 1},
    {HERE, "http://h/%23x"sv, "http://h/#x", "http://h/#x", 0, "http:", "h", "/", "#x", 1},
    {HERE, "http://h/%zz/y"sv, "http://h/\0/y"sv, "http://h/\0/y"sv, 0, "http:", "h", "/\0/"sv, "y",
     2},
    // The scheme may stand anywhere, and "https://" wins wherever it stands.
    {HERE, "xhttp://h/f"sv, "xhttp://h/f", "xhttp://h/f", 0, "http:", "h", "/", "f", 1},
    {HERE, "http://h/go/https://other/x"sv, "http://h/go/https://other/x",
     "http://h/go/https://other/x", 0, "https:", "h", "/go/https://other/", "x", 5},
    {HERE, "ftp://h/http://x"sv, "ftp://h/http://x", "ftp://h/http://x", 0, "http:", "h",
     "/http://", "x", 3},
    {HERE, "//h/http://x"sv, "//h/http://x", "//h/http://x", 0, "http:", "h", "/http://", "x", 3},
    {HERE, "HtTpS://H/F"sv, "HtTpS://H/F", "HtTpS://H/F", 0, "https:", "H", "/", "F", 1},
    // No http or https base: the parts of a fresh object stay empty.
    {HERE, ""sv, "", "", -1, "", "", "", "", 0},
    {HERE, "#x"sv, "", "", -1, "", "", "", "", 0},
    {HERE, "htt"sv, "htt", "htt", -1, "", "", "", "", 0},
    {HERE, "http"sv, "http", "http", -1, "", "", "", "", 0},
    {HERE, "http:/"sv, "http:/", "http:/", -1, "", "", "", "", 0},
    {HERE, "http:/h"sv, "http:/h", "http:/h", -1, "", "", "", "", 0},
    {HERE, "http:h/x"sv, "http:h/x", "http:h/x", -1, "", "", "", "", 0},
    {HERE, "ftp://h/x"sv, "ftp://h/x", "ftp://h/x", -1, "", "", "", "", 0},
    {HERE, "ftp://h/http/x"sv, "ftp://h/http/x", "ftp://h/http/x", -1, "", "", "", "", 0},
    {HERE, "ftp://h/?http://x"sv, "ftp://h/?http://x", "ftp://h/", -1, "", "", "", "", 0},
};

TEST(UrlBase, SplitsHttpUrls) {
  forEachPlacement(kSplits, expectSplit);
}

// --- What a failed or missing part leaves -----------------------------------------------------

struct StaleCase {
  Here here;
  std::string_view url;  // given to an object that held http://old:1/x/y/z.html
  int result;
  std::string_view protocol;
  std::string_view host;
  std::string_view dirPath;
  std::string_view fileName;
  int dirDepth;
};
constexpr StaleCase kStale[] = {
    // No "http" anywhere, or too short: everything stays.
    {HERE, "ftp://h/x"sv, -1, "http:", "old:1", "/x/y/", "z.html", 3},
    {HERE, ""sv, -1, "http:", "old:1", "/x/y/", "z.html", 3},
    {HERE, "htt"sv, -1, "http:", "old:1", "/x/y/", "z.html", 3},
    // Found to be no URL later on: host and path are emptied, protocol and file name stay.
    {HERE, "http"sv, -1, "http:", "", "", "z.html", 0},
    {HERE, "ftp://h/http/x"sv, -1, "http:", "", "", "z.html", 0},
    // Without a path only the file name stays.
    {HERE, "https://h"sv, 1, "https:", "h", "/", "z.html", 0},
    {HERE, "https://h/"sv, 0, "https:", "h", "/", "", 1},
};

TEST(UrlBase, KeepsPartsOfAnEarlierBase) {
  forEachPlacement(kStale, [](const StaleCase& row, Placement& place) {
    urlBase base("http://old:1/x/y/z.html");
    EXPECT_EQ(base.parse(), 0);
    base.setBase(place.constString(row.url));
    EXPECT_FALSE(base.parsed);
    EXPECT_EQ(bytesOf(base.host), "old:1") << "the parts stay until the next split";
    EXPECT_EQ(base.parse(), row.result);
    EXPECT_EQ(bytesOf(base.protocol), row.protocol);
    EXPECT_EQ(bytesOf(base.host), row.host);
    EXPECT_EQ(bytesOf(base.dirPath), row.dirPath);
    EXPECT_EQ(bytesOf(base.fileName), row.fileName);
    EXPECT_EQ(base.dirDepth, row.dirDepth);
  });
}

TEST(UrlBase, SplitsAgainAfterEachNewBase) {
  urlBase base("http://h/a");
  EXPECT_EQ(base.shortParse(), 0);
  EXPECT_EQ(bytesOf(base.protocol), "http://");
  base.setBase("http://h/a");
  EXPECT_EQ(base.parse(), 0);
  EXPECT_EQ(bytesOf(base.protocol), "http:");
}

TEST(UrlBase, CopiesAreIndependent) {
  urlBase base("http://h/a/b");
  base.parse();
  urlBase copy(base);
  base.setBase("http://other/c");
  base.parse();
  EXPECT_EQ(bytesOf(copy.host), "h");
  EXPECT_EQ(bytesOf(copy.dirPath), "/a/");
  copy = base;
  EXPECT_EQ(bytesOf(copy.host), "other");
}

TEST(UrlBase, SplitsAVeryLongPath) {
  constexpr std::size_t kCount = 500000;
  const std::string path = "/" + repeated("ab/", kCount);
  urlBase base(stringOf("http://h" + path + "f"));
  EXPECT_EQ(base.parse(), 0);
  EXPECT_EQ(bytesOf(base.dirPath), path);
  EXPECT_EQ(bytesOf(base.fileName), "f");
  EXPECT_EQ(base.dirDepth, static_cast<int>(kCount) + 1);
}

}  // namespace
}  // namespace pagescan::tests
