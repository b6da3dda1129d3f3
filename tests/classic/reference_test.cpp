// Holds the slow twins to worked examples of their rules, those above all that random cases miss.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "reference/classic/charset.h"
#include "reference/classic/records.h"
#include "reference/classic/regexp.h"
#include "reference/classic/scannumber.h"
#include "reference/classic/strings.h"
#include "reference/classic/tqbuffpart.h"
#include "reference/classic/tqurlbase.h"
#include "reference/classic/urlcmp.h"
#include "reference/classic/zkhtmlattributefinder.h"
#include "reference/classic/zkhtmloffsetparser.h"
#include "reference/classic/zkhtmlparseutils.h"
#include "reference/classic/zkurlencoding.h"
#include "reference/classic/zkutf8.h"

namespace reference {
namespace {

using std::string_literals::operator""s;

struct Row {
  int line;
  std::string in;
  std::string want;
};
#define ROW(in, want)  \
  Row {                \
    __LINE__, in, want \
  }

using Edit = std::string (*)(std::string);

void expectRows(Edit edit, const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(edit(row.in), row.want) << "row at line " << row.line;
}

// ---- searches and patterns

TEST(ReferenceStrings, SearchFromAStart) {
  EXPECT_EQ(index("aXa", "a", 1), 2u);
  EXPECT_EQ(index("aXa", "", 3), 3u);
  EXPECT_EQ(index("aXa", "", 4), npos);
  EXPECT_EQ(index("aXa", "aXaX", 0), npos);
  EXPECT_EQ(index("a\0b"s, "\0B"s, 0, Case::ignore), 1u);
  EXPECT_EQ(index("\xC4", "\xE4", 0, Case::ignore), npos);
}

TEST(ReferenceStrings, StripRunsOfAByte) {
  EXPECT_EQ(strip("\"\"a\"b\"", Strip::both, '"'), "a\"b");
  EXPECT_EQ(strip("xax", Strip::leading, 'x'), "ax");
  EXPECT_EQ(strip("xax", Strip::trailing, 'x'), "xa");
  EXPECT_EQ(strip("xx", Strip::both, 'x'), "");
}

TEST(ReferenceRegexp, FindsTheLeftmostThenLongestMatch) {
  EXPECT_EQ(search("xaab", "a*b", 0), (Match{1, 3}));
  EXPECT_EQ(search("aaa", "a*a", 0), (Match{0, 3}));
  EXPECT_EQ(search("ab", "b?", 0), (Match{0, 0}));
  EXPECT_EQ(search("xy", "a*", 2), (Match{2, 0}));
  EXPECT_EQ(search("xy", "a*", 3), Match{});
  EXPECT_EQ(search("a\tb", "[>\\t\\r\\n ]", 0), (Match{1, 1}));
  EXPECT_EQ(search("at", "[\\t]", 0), Match{});
  EXPECT_EQ(search("a\\t\t", "\\t", 0), (Match{3, 1}));
  EXPECT_EQ(search("aa*]", "\\*[\\]]", 0), (Match{2, 2}));
  EXPECT_EQ(search("a\\", "a\\", 0), (Match{0, 2}));
  EXPECT_EQ(search("x&#65;", "&#?[a-zA-Z0-9]+;", 0), (Match{1, 5}));
  EXPECT_EQ(search("Ab:c:", "^[a-zA-Z]+:", 0), (Match{0, 3}));
  EXPECT_EQ(search("xAb:", "^[a-zA-Z]+:", 1), Match{});
  EXPECT_EQ(search("a-b", "[b-]", 0), (Match{1, 1}));
}

TEST(ReferenceScanNumber, ReadsAsScanf) {
  const auto integer = [](const std::string& text) {
    int number = 77;
    scanInteger(text, number);
    return number;
  };
  EXPECT_EQ(integer("0x41"), 65);
  EXPECT_EQ(integer("0101"), 65);
  EXPECT_EQ(integer("09"), 0);
  EXPECT_EQ(integer("0x"), 0);
  EXPECT_EQ(integer("0xg"), 0);
  EXPECT_EQ(integer("0b1"), 0);
  EXPECT_EQ(integer("abc"), 77);
  EXPECT_EQ(integer("99999999999999999999"), -1);
  EXPECT_EQ(integer("4294967361"), 65);
  int number = 0;
  scanTwoHexDigits("-1", number);
  EXPECT_EQ(number, -1);
  scanHex(" 7", number);
  EXPECT_EQ(number, 7);
}

// ---- scanning

TEST(ReferenceScanning, StepsBeforeItLooks) {
  unsigned long pos = 0;
  EXPECT_TRUE(htmlSkipWhiteSpaces("a  b", 4, pos));
  EXPECT_EQ(pos, 3u);
  pos = 0;
  EXPECT_TRUE(htmlSkipWhiteSpaces("ab", 2, pos));
  EXPECT_EQ(pos, 1u);
  EXPECT_FALSE(htmlSkipWhiteSpaces("ab", 99, pos));
  EXPECT_EQ(pos, 2u);
  pos = 0;
  EXPECT_TRUE(htmlSkipNonWhiteSpaces("abc<d", 5, pos));
  EXPECT_EQ(pos, 3u);
}

TEST(ReferenceScanning, ReadsValues) {
  struct {
    int line;
    std::string text;
    bool whole;
    std::string value;
    unsigned long valueStart, furthest;
  } const rows[] = {
      {__LINE__, "= 'a b'>", true, "a b", 3, 6}, {__LINE__, "=abc>", true, "abc", 1, 4},
      {__LINE__, "=>", true, "", 1, 1},          {__LINE__, "=\"abc", false, "abc", 2, 0},
      {__LINE__, "=  ", false, "old", 77, 0},
  };
  for (const auto& row : rows) {
    std::string value = "old";
    unsigned long valueStart = 77;
    unsigned long furthest = 0;
    EXPECT_EQ(htmlGetStringValue(row.text, value, 0, valueStart, furthest, row.text.length()),
              row.whole)
        << "row at line " << row.line;
    EXPECT_EQ(value, row.value) << "row at line " << row.line;
    EXPECT_EQ(valueStart, row.valueStart) << "row at line " << row.line;
    EXPECT_EQ(furthest, row.furthest) << "row at line " << row.line;
  }
}

TEST(ReferenceScanning, TellsElements) {
  EXPECT_TRUE(isElementOfType("a", 1, "a>", 0, ' '));
  EXPECT_TRUE(isElementOfType("a", 1, "a ", 0, ' '));
  EXPECT_FALSE(isElementOfType("a", 1, "ab", 0, ' '));
  EXPECT_TRUE(isElementOfType("a", 1, "ab", 0, '~'));
  EXPECT_FALSE(isElementOfType("a", 0, "ab", 3, '~'));
}

TEST(ReferenceScanning, GivesAttributesOneByOne) {
  const std::string text = " href=\"x.html\" alt>";
  std::string name;
  std::string value;
  unsigned long pos = 0;
  unsigned long valueStart = 0;
  htmlFindNextAttribute_(text, name, value, pos, valueStart);
  EXPECT_EQ(name + "|" + value, "href|x.html");
  EXPECT_EQ(valueStart, 7u);
  EXPECT_EQ(pos, 13u);
  htmlFindNextAttribute_(text, name, value, pos, valueStart);
  EXPECT_EQ(name + "|" + value, "alt|");
  EXPECT_EQ(pos, 18u);
  htmlFindNextAttribute_(text, name, value, pos, valueStart);
  EXPECT_EQ(pos, 19u);
}

// ---- blanking and removal

TEST(ReferenceBlanking, BlanksComments) {
  expectRows(
      [](std::string text) {
        tqOverwriteTagWithBlanks(text, "<!--", "-->");
        return text;
      },
      {ROW("<!-- x -->", "<p>   </p>"), ROW("a<!--x-->b", "a<p> </p>b"), ROW("<!---->", "<p></p>"),
       ROW("<!---> <!-- -->", "<!---> <p> </p>"), ROW("--> <!-- x -->", "--> <!-- x -->")});
}

TEST(ReferenceBlanking, BlanksScripts) {
  expectRows(
      [](std::string text) {
        std::size_t endlessAt = 0;
        EXPECT_TRUE(tqOverwriteScriptWithBlanks(text, endlessAt));
        EXPECT_EQ(endlessAt, npos);
        return text;
      },
      {ROW("<script type=x>a<b</script>", "<script type=x>   </script>"),
       ROW("<SCRIPT></SCRIPT>", "<SCRIPT></SCRIPT>"), ROW("x</SCRIPT>y", "x</SCRIPT>y"),
       ROW("</SCRIPT><SCRIPT>a</SCRIPT>", "</SCRIPT><SCRIPT>a</SCRIPT>")});
}

TEST(ReferenceBlanking, ReportsWhereItWouldNotReturn) {
  EXPECT_EQ(tqFindEndlessScript("<script>a</script>b<SCRIPT x</script>"), 19u);
  EXPECT_EQ(tqFindEndlessScript("<SCRIPT x</script>>"), 0u);
  EXPECT_EQ(tqFindEndlessScript("<SCRIPT x"), npos);
  EXPECT_EQ(tqFindEndlessScript("</script><SCRIPT x</script>"), npos);
  EXPECT_TRUE(ParseHTML("http://h/", "<img src=a><script x</script>").endless);
}

TEST(ReferenceBlanking, RemovesTheFirstSingleTag) {
  expectRows(
      [](std::string text) {
        tqRemoveFirstSingleTag(text, "<img");
        return text;
      },
      {ROW("x<IMG src=a>y<img>", "xy<img>"), ROW("x<img", "x<img"), ROW("xy>", "xy>")});
}

TEST(ReferenceBlanking, EmptiesElements) {
  std::string text = "<SELECT name=a><option>1</select>z";
  tqSkipTagBody("select", text);
  EXPECT_EQ(text, "<select></select>z");
  expectRows(
      [](std::string in) {
        tqSkipTagBody("a", in);
        return in;
      },
      {ROW("<!-- <a href=x></a> --><a>x</a>", "<!-- <a href=x></a> --><a></a>"),
       ROW("<a</a>", "<a></a>"), ROW("<a>1</a><a>2", "<a></a><a>2"),
       ROW("<a><!--</a>--></a>z", "<a></a>z"), ROW("<abbr></a>", "<a></a>")});
  text = "<a></a>";
  tqSkipTagBody("", text);
  EXPECT_EQ(text, "<a></a>");
}

TEST(ReferenceBlanking, DisarmsHandlers) {
  expectRows(
      [](std::string text) {
        tqSkipOnloadAttribute(text);
        return text;
      },
      {ROW("<body onload=\"init()\">", "<body onload=\"\">"),
       ROW("<BODY ONLOAD = 'init()'>", "<BODY onload=\"\"'>"),
       ROW("<a onmouseover=\"x\" onmouseout=\"y\">", "<a onmouseover=\"\" onmouseout=\"\">"),
       ROW("<img onload=go()>", "<img onload=\"\">"), ROW("onloadx", "onloadx"),
       ROW("onlo", "onlo"), ROW("<body onload=", "<body onload=\"\""),
       ROW("<a onload=x onload='y z>", "<a onload=\"\" onload=\"\""),
       ROW("data-onload=x>", "data-onload=\"\">")});
}

// ---- the finder and the parser

TEST(ReferenceFinder, ReadsATag) {
  std::map<std::string, std::string> values;
  std::map<std::string, int> offsets;
  unsigned long pos = 1;
  FindAttributes("<a HREF=\"x.html\" target=_top disabled>", pos, values, offsets);
  EXPECT_EQ(values, (std::map<std::string, std::string>{
                        {"href", "x.html"}, {"target", "_top"}, {"disabled", ""}}));
  EXPECT_EQ(offsets, (std::map<std::string, int>{{"href", 9}, {"target", 24}, {"disabled", -1}}));
  EXPECT_EQ(pos, 37u);
  pos = 3;
  FindAttributes("<img src = 'a b.gif'>", pos, values, offsets);
  EXPECT_EQ(values, (std::map<std::string, std::string>{{"src", "a b.gif"}}));
  EXPECT_EQ(offsets.at("src"), 12);
  for (const char* nothing : {"<a =x href=y>", "<a href=\"x>"}) {
    pos = 1;
    FindAttributes(nothing, pos, values, offsets);
    EXPECT_TRUE(values.empty()) << nothing;
  }
  pos = 1;
  FindAttributes("<a href=\"x\" HREF=\"y\">", pos, values, offsets);
  EXPECT_EQ(values.at("href"), "x");
}

// Each attribute as tag.name=written@offset.
std::string summary(const std::vector<Record>& records) {
  std::string out;
  for (const Record& record : records) {
    for (const Attribute& attribute : record.attributes) {
      if (!out.empty()) out += " ";
      out += record.tag + "." + attribute.name + "=" + attribute.original + "@" +
             std::to_string(attribute.offset);
    }
  }
  return out;
}

TEST(ReferenceParser, RecordsTags) {
  expectRows(
      [](std::string page) { return summary(ParseHTML("http://h/", page).records); },
      {ROW("<img SRC=\"a.gif\">", "IMG.src=a.gif@10"),
       ROW("<IMG lowsrc=l.gif src=s.gif>", "IMG.src=s.gif@22 IMG.lowsrc=l.gif@12"),
       ROW("<a href=x.html>", ""), ROW("<frame name=f>", "FRAME.src=@-1"),
       ROW("<iframe src=p.html>", "IFRAME.src=p.html@12"),
       ROW("<applet classid=c code=k.class>", "APPLET.code=k.class@23 APPLET.classid=c@16"),
       ROW("<!--<img src=a.gif>--><script src=s><img src=a.gif></script>", "SCRIPT.src=s@34"),
       ROW("<img src=a.gif", ""), ROW("<img~src=a.gif>", "IMG.src=a.gif@9"),
       ROW("<IMG>src=a.gif <B>", "IMG.src=a.gif@9"), ROW("<TEST x=1>", ""),
       ROW("<img src=a>\0<img src=b>"s, "IMG.src=a@9"),
       ROW("<?IMPORT implementation=a>", "?IMPORT.implementation=a@24"), ROW("", "")});
}

TEST(ReferenceParser, RecordsStyleText) {
  expectRows(
      [](std::string css) {
        const StylePass pass = ParseCSS("http://h/", css);
        return summary(pass.records) + (pass.boundsError ? "!" : "");
      },
      {ROW("body { background: url(img/bg.gif) }", "IMG.src=img/bg.gif@23"),
       ROW("@import \"a.css\";", "IMG.src=a.css@9"),
       ROW("@import url('a.css');", "IMG.src=a.css@13"),
       ROW("a { font-family: \"Arial\" }", "IMG.src=Arial@18"),
       ROW("p{a:url(A.gif)} q{b:URL(\"B.gif\")}", "IMG.src=A.gif@8 IMG.src=B.gif@25"),
       ROW("/* url(x.gif) */ p { }", ""), ROW("*/ /* url(a.gif) */", "IMG.src=a.gif@10"),
       ROW("url(#a)", ""), ROW("@import url(#a);", "IMG.src=#a@12"), ROW("p{x:url(x.gif}", ""),
       ROW("background:url(x.gif)", "!"), ROW("url(a)b:url(c)", "IMG.src=a@4!"),
       ROW("p{a:url( \"a.gif\" )}", "IMG.src= \"a.gif\" @8"), ROW("", "")});
}

TEST(ReferenceRecords, SumBytesAsWords) {
  EXPECT_EQ(CalcCheckSum("", 0), 0u);
  EXPECT_EQ(CalcCheckSum("A", 1), 0x41u);
  EXPECT_EQ(CalcCheckSum("ABCDEFGH", 8), 0x4847464544434241u);
  EXPECT_EQ(CalcCheckSum("ABCDEFGHIJ", 10), 0x4847464544430808u);
  EXPECT_EQ(CalcCheckSum("ABCDEFGHABCDEFGH", 16), 0u);
}

TEST(ReferenceRecords, Print) {
  EXPECT_EQ(PrintAll({{"IMG", {{"src", "v", "o", -1}}}, {"X", {}}}),
            "Queue contains 2 objects\n"
            "===== NUMBER: 0\t ===== TagName: IMG\n=== First Attr Name src\n"
            "Name:\tsrc\nValue:\tv\nOValue:\to\nOffset:\t-1\n\n"
            "===== NUMBER: 1\t ===== TagName: X\n=== First Attr Name \n\n");
}

// ---- slices

TEST(ReferenceSlice, Compares) {
  EXPECT_EQ(comparePart("abc", "abcd", false), -1);
  EXPECT_EQ(comparePart("abc", "ab", false), 1);
  EXPECT_EQ(comparePart("abc", "abc", false), 0);
  EXPECT_EQ(comparePart("abc", "ABC", true), 0);
  EXPECT_EQ(comparePart("abc", "ABC", false), 32);
  EXPECT_EQ(comparePart("", "", false), 0);
  EXPECT_EQ(comparePart("", "a", false), -1);
  EXPECT_EQ(comparePart("a\0b"s, "a", false), 1);
  EXPECT_EQ(comparePart("a\0b"s, "a\0c"s, false), 0);
  EXPECT_LT(comparePart("_", "B", true), 0);
  EXPECT_EQ(copyOfPart("a\0b"s), "a\0\0"s);
}

// ---- URLs

TEST(ReferenceUrl, StripsPlainly) {
  expectRows(
      [](std::string url) {
        stripUrl(url, false);
        return url;
      },
      {ROW("  http://a/b c\r\n", "http://a/b%20c"),
       ROW("JavaScript:alert(1) ;", "JavaScript:alert(1) ;"), ROW("x y", "x%20y"),
       ROW(" \r\n\t", ""), ROW("", ""), ROW("a%41", "a%41")});
}

TEST(ReferenceUrl, StripsAndDecodes) {
  expectRows(
      [](std::string url) {
        stripUrl(url, true);
        return url;
      },
      {ROW("a%41b", "aAb"), ROW("a%20b", "a%20b"), ROW("a?b%41", "a?b%41"), ROW("a%", "a\0"s),
       ROW("%3F%41", "?A"), ROW("%zz", "\0"s), ROW("%4x", "\x04"), ROW("%-1", "\xFF"),
       ROW("%2", "\x02"), ROW("%0x1", "\0"s + "1")});
}

TEST(ReferenceUrl, TellsSchemes) {
  struct {
    int line;
    std::string url;
    int code, length;
  } const rows[] = {
      {__LINE__, "HTTP://x", 3, 5},     {__LINE__, "https:", 4, 6},
      {__LINE__, "mailto:a", 5, 7},     {__LINE__, "JavaScript:void(0)", 6, 11},
      {__LINE__, "ftp://h", 1, 4},      {__LINE__, "File:c", 2, 5},
      {__LINE__, "clsid:1234", 8, 6},   {__LINE__, "news:x", 7, 5},
      {__LINE__, "svn+ssh://h", 0, -1}, {__LINE__, "no-colon", 0, -1},
      {__LINE__, ":x", 7, 1},           {__LINE__, "", 0, -1},
  };
  for (const auto& row : rows) {
    int length = 0;
    EXPECT_EQ(getProtocol(row.url, length), row.code) << "row at line " << row.line;
    EXPECT_EQ(length, row.length) << "row at line " << row.line;
  }
  for (const char* url : {"page.html", "HTTPS://h", "httpx:y", "clsid:1", "1abc:x"}) {
    EXPECT_TRUE(isHttpProtocol(url)) << url;
  }
  for (const char* url : {"mailto:a", "ftp://h"}) EXPECT_FALSE(isHttpProtocol(url)) << url;
}

TEST(ReferenceUrl, RanksLinks) {
  LinkCompare link;
  link.level = 2;
  EXPECT_EQ(link.rank(), 8);
  link.preferred = true;
  EXPECT_EQ(link.rank(), 7);
  link.level = 0x7FFFFFFF;
  EXPECT_EQ(link.rank(), 1);
  link.qualifierA = link.qualifierB = link.propThird = true;
  EXPECT_EQ(link.rank(), 3);
  EXPECT_EQ(link.propRank(), 1);
}

// The split as result, protocol, host, dirPath, fileName, dirDepth.
std::string shortSplit(std::string url) {
  UrlBase base(url);
  const std::string result = std::to_string(base.shortParse());
  return result + " " + base.protocol + " " + base.host + " " + base.dirPath + " " + base.fileName +
         " " + std::to_string(base.dirDepth);
}

TEST(ReferenceUrl, SplitsABase) {
  expectRows(shortSplit,
             {ROW("HTTP://Host:81/a/b/page.html?x=1#top", "0 http:// Host:81 /a/b/ page.html 3"),
              ROW("http://h", "1 http:// h /  0"), ROW("http://", "1 http://  /  0"),
              ROW("https://h/dir/", "0 https:// h /dir/  2"), ROW("ftp://h/x", "-1     0"),
              ROW("ftp://h/http/x", "-1     0"), ROW("http://h/p?q=/x/y", "0 http:// h / p 1"),
              ROW("http://h/go/https://o/", "0 https:// h /go/https://o/  5")});
  UrlBase base("  http://h/a b\n");
  EXPECT_EQ(base.fullUrl, "http://h/a%20b");
  base.setBase("http://h/%7Euser/");
  EXPECT_EQ(base.fullUrl, "http://h/~user/");
  EXPECT_EQ(base.parse(), 0);
  EXPECT_EQ(base.protocol, "http:");
  EXPECT_EQ(base.shortParse(), 1);
}

TEST(ReferenceUrl, ResolvesByValue) {
  expectRows(
      [](std::string url) { return UrlBase("http://w1/a/b/c/f.html").calcUrl(url); },
      {ROW("../x", "http://w1/a/b/x"), ROW("../../x", "http://w1/a/x"),
       ROW("../../../x", "http://w1/x"), ROW("../../../../x", "http://w1/x"),
       ROW("a", "http://w1/a/b/c/"), ROW("?q", "http://w1/a/b/c/?q"),
       ROW("#f", "http://w1/a/b/c/f.html#f"), ROW("&amp;x=1", "http://w1/a/b/c/&x=1"),
       ROW("http://x/y?u=1", "http://x/y?u=1"), ROW("/r?u=http://x", "http://w1/r?u=http://x"),
       ROW("p?u=http://x", "http://w1/a/b/c/p?u=http://x"), ROW("//cdn/x.js", "http://cdn/x.js"),
       ROW("./", "http://w1/a/b/c/"), ROW("./x", "http://w1/a/b/c/x"), ROW("/", "http://w1/"),
       ROW("mailto:a", "mailto:a"), ROW("clsid:1", "http://w1/a/b/c/clsid:1")});
}

std::string resolve(std::string in) {
  std::string out = "old";
  UrlBase("http://w1/d/page.html?x").calcUrl(in, out, true, true);
  return out;
}

TEST(ReferenceUrl, ResolvesIntoAString) {
  expectRows(resolve, {ROW("", "http://w1/d/"),
                       ROW("img.png", "http://w1/d/img.png"),
                       ROW("./img.png", "http://w1/d/img.png"),
                       ROW("/a/./b/../c.png", "http://w1/a/c.png"),
                       ROW("../up.png", "http://w1/up.png"),
                       ROW("#top", "http://w1/d/page.html#top"),
                       ROW("?y=1", "http://w1/d/page.html?y=1"),
                       ROW("//cdn/x.js", "http://cdn/x.js"),
                       ROW("HTTPS://Other/a/../b", "HTTPS://Other/a/../b"),
                       ROW("javascript:go()", "javascript:go()"),
                       ROW("mailto:a", "mailto:a"),
                       ROW("ftp://f/x", "ftp://f/x"),
                       ROW("tel:1", "tel:1"),
                       ROW("\\\\srv\\share\\f", "file://srv\\share\\f"),
                       ROW("a\\b.png", "http://w1/d/a/b.png"),
                       ROW("file:a/b", "file:a/b"),
                       ROW("file:/x", "file:///x"),
                       ROW("file:c:/x", "file:///c:/x"),
                       ROW("file:", "file:///"),
                       ROW("http:page.html", "http://w1/d/page.html"),
                       ROW("clsid:1", "http://w1/d/clsid:1"),
                       ROW("a/../b?u=../x", "http://w1/d/b?u=../x"),
                       ROW("/../x", "http://w1/x"),
                       ROW("/a/b../c", "http://w1/a/c"),
                       ROW("  ", "http://w1/d/")});
  std::string out = "old";
  UrlBase("http://w1/").calcUrl("", out, false, true);
  EXPECT_EQ(out, "old");
  UrlBase("https://s/").calcUrl("//c/x", out, false, true);
  EXPECT_EQ(out, "https://c/x");
}

TEST(ReferenceUrl, FoldsWithoutAHost) {
  const auto resolveNowhere = [](std::string in) {
    std::string out;
    UrlBase().calcUrl(in, out, true, false);
    return out;
  };
  expectRows(resolveNowhere,
             {ROW("x", "//x"), ROW("../x", "/x"), ROW("a/../../x", "/x"), ROW("?../x", "?../x")});
}

// ---- encodings

std::string literals(int type) {
  std::string kept;
  for (std::size_t c = 0; c < 256; ++c) {
    const char byte = static_cast<char>(c);
    if (!isLetter(byte) && !isDigit(byte) && tableOf(type)[c] == std::string(1, byte)) kept += byte;
  }
  return kept + "|" + tableOf(type)[' '] + tableOf(type)[255];
}

TEST(ReferenceEncoding, TablesKeepTheirSets) {
  EXPECT_EQ(literals(1), "*-.@_|+%FF");
  EXPECT_EQ(literals(2), "*+-./@_|%20%FF");
  EXPECT_EQ(literals(3), "!#$&'()*+-./:;=?@_`~|%20%FF");
  EXPECT_EQ(literals(4), "!'()*-._`~|%20%FF");
  EXPECT_EQ(literals(5), "*-._|+%FF");
  EXPECT_EQ(literals(6), "!'()*-.<>_`~|+%FF");
  EXPECT_EQ(literals(7), "!$%()*+,-./:;@[\\]^_`{|}~|%20%FF");
  EXPECT_EQ(literals(8), "!$'()*+,-._|%20%ff");
  EXPECT_EQ(literals(9), literals(1));
  EXPECT_EQ(literals(-1), literals(1));
}

TEST(ReferenceEncoding, EncodesAndDecodes) {
  std::string out = "x=";
  EXPECT_TRUE(EncodeString("a b&#25;0A", out, 1));
  EXPECT_EQ(out, "x=a+b%0A");
  EXPECT_FALSE(EncodeString("a b", out, 0));
  EXPECT_EQ(out, "x=a+b%0Aa b");
  out.clear();
  EXPECT_TRUE(EncodeString("a&#25", out, 8));
  EXPECT_EQ(out, "a%26%2325");
  expectRows(
      [](std::string text) {
        const bool decoded = DecodeString(text, 1);
        return (decoded ? "1" : "0") + text;
      },
      {ROW("a+b%41", "1a bA"), ROW("%0A", "0&#25;0A"), ROW("%zz", "0&#25;zz"),
       ROW("abc%4", "0abc%4"), ROW("%E9", "1\xE9"), ROW("%2541", "1%41"), ROW("%-1", "0&#25;-1"),
       ROW("%%41", "1&#25;A"), ROW("%4g", "0&#25;4g")});
  out = "a+b%41";
  EXPECT_TRUE(DecodeString(out, 8));
  EXPECT_EQ(out, "a+bA");
}

TEST(ReferenceEncoding, Checks) {
  EXPECT_TRUE(CheckUrlDecoding("a=b%20c&d=e", 2));
  EXPECT_FALSE(CheckUrlDecoding("a=b%20c&d=e", 1));
  EXPECT_TRUE(CheckUrlDecoding("", 4));
  EXPECT_EQ(CheckUrlDecoding(""), 1);
  EXPECT_EQ(CheckUrlDecoding("abc1"), 1);
  EXPECT_EQ(CheckUrlDecoding("a=b%20c&d=e"), 2);
  std::string out = "old";
  EXPECT_TRUE(EncodeStringUnreadables("A\0\n\xC8", 4, out));
  EXPECT_EQ(out, "A%00\n%C8");
  EXPECT_FALSE(EncodeStringUnreadables(nullptr, 4, out));
}

TEST(ReferenceUtf8, Detects) {
  const auto looksLikeUtf8 = [](const std::string& text) {
    return isUtf8(text.data(), static_cast<int>(text.length()));
  };
  std::string even;
  for (int i = 0; i < 10; ++i) even += "\xC3\xA9";
  EXPECT_TRUE(looksLikeUtf8(even));
  for (int i = 0; i < 9; ++i) even += "\xC3x";
  EXPECT_TRUE(looksLikeUtf8(even));
  even += "\xC3x";
  EXPECT_FALSE(looksLikeUtf8(even));
  EXPECT_FALSE(looksLikeUtf8(""));
  EXPECT_FALSE(looksLikeUtf8("\xC3"));
  EXPECT_FALSE(looksLikeUtf8("abc"));
  EXPECT_FALSE(looksLikeUtf8("a\xE9z"));
  EXPECT_FALSE(looksLikeUtf8("A\x80"));
}

TEST(ReferenceUtf8, Converts) {
  expectRows([](std::string in) { return utf8ToLatin1(in); },
             {ROW("a\xC3\xA9", "a\xE9"), ROW("\xE2\x82\xAC", "?"), ROW("\xC3", "?"),
              ROW("\x80\x80", "??"), ROW("\xE2\x82z", "?z"), ROW("\xC0\x80", "??"),
              ROW("\xED\xA0\x80", "???"), ROW("\xF0\x9F\x98\x80", "?"), ROW("a\0b"s, "a")});
  std::string text = "\xE9";
  ConvertAnsitoUtf8(text);
  EXPECT_EQ(text, "\xC3\xA9");
  ConvertUtf8toAnsi(text);
  EXPECT_EQ(text, "\xE9");
}

TEST(ReferenceEntities, Decode) {
  EXPECT_EQ(entityTable().size(), 100u);
  expectRows(
      [](std::string text) {
        convert(text);
        return text;
      },
      {ROW("", ""),
       ROW("AT&amp;T", "AT&T"),
       ROW("&AMP;", "&AMP;"),
       ROW("&Eacute;", "\xC9"),
       ROW("&eacute;", "\xE9"),
       ROW("&yuml;", "\xFF"),
       ROW("&iexcl;", "\xA1"),
       ROW("&nbsp;", " "),
       ROW("&#160;", "\xA0"),
       ROW("&#xa0;", "\xA0"),
       ROW("&#65;", "A"),
       ROW("&#x41;", "A"),
       ROW("&#X41;", "A"),
       ROW("&#x041;", "&#x041;"),
       ROW("&#0101;", "A"),
       ROW("&#08;", "\0"s),
       ROW("&#x;", "\0"s),
       ROW("&#xzz;", "\0"s),
       ROW("&#0x41;", "A"),
       ROW("&#0x;", "\0"s),
       ROW("&#8364;", "&#8364;"),
       ROW("&#256;", "&#256;"),
       ROW("&#255;", "\xFF"),
       ROW("&amp;amp;", "&amp;"),
       ROW("&amp", "&amp"),
       ROW("&#;", "&#;"),
       ROW("&apos;", "&apos;"),
       ROW("&#abc;", "&#abc;"),
       ROW("&#65;&#abc;", "AA"),
       ROW("&#300;&#abc;", "&#300;&#abc;"),
       ROW("&amp;lt;", "&lt;"),
       ROW("&#99999999999999999999;", "\xFF")});
}

}  // namespace
}  // namespace reference
