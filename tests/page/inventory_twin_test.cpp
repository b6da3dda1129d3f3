// The whole inventory of a page beside that of its slow twin, which resolves by the slow twin of
// the URL parser: places, kinds, slots, flags, values, URLs.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "inventory_agreement.h"
#include "support/generated_texts.h"

namespace pagescan::tests {
namespace {

using Pieces = std::vector<std::string_view>;

void compareAll(const Pieces& pieces, std::size_t quick, std::size_t deep, std::string_view before,
                std::string_view after) {
  forEachText(pieces, inShortOrDeepRun(quick, deep), [&](const std::string& text) {
    if (testing::Test::HasFailure()) return;  // the first one is the shortest
    const std::string page = std::string(before) + text + std::string(after);
    ASSERT_TRUE(agree(page, optionsWith(text.size() % 2 == 0)));
  });
}

// --- Short texts ---

TEST(InventoryTwin, AgreesOnAttributeValues) {
  compareAll({"&amp", "&#32;", ";", "=", "a", "&", " ", "\r\n", "&#x0;", "&copy", "\xC3\xA9"}, 4, 5,
             "<a href=\"", "\">");
}

TEST(InventoryTwin, AgreesOnSrcsets) {
  compareAll({"a", ",", " ", "1x", "2w", "(", ")", "&#44;", "1h", "-1x"}, 4, 6, "<img srcset=\"",
             "\">");
}

TEST(InventoryTwin, AgreesOnRefreshes) {
  compareAll({"0", ";", ",", " ", "url", "=", "'", "x", "&quot;", "."}, 4, 6,
             "<meta http-equiv=refresh content=\"", "\">");
}

TEST(InventoryTwin, AgreesOnStyleAttributes) {
  compareAll({"url(", ")", "a:", "--x:", ";", "&quot;", "'", "image-set(", "\\", " ", "#"}, 4, 5,
             "<p style=\"", "\">");
}

TEST(InventoryTwin, AgreesOnLinks) {
  compareAll({" rel=stylesheet", " rel='icon preload'", " rel=modulepreload", " as=image",
              " as=script", " type=text/css", " type=x", " media=print", " disabled",
              " imagesrcset='a 1x'", " rel=prefetch"},
             3, 5, "<link href=x", ">");
}

TEST(InventoryTwin, AgreesOnScripts) {
  compareAll({" type=''", " type=module", " type=' text/javascript'", " language=x", " nomodule",
              " type=importmap", " type=application/ld+json;x", " language=''", " src=x"},
             3, 4, "<script", ">{\"imports\":{\"a\":\"http://b\"}}</script>");
}

TEST(InventoryTwin, AgreesOnMedia) {
  compareAll({"<picture>", "</picture>", "<video>", "<video src=v preload=none>", "<img src=x>",
              "<source src=x srcset=y>", "<track src=x>", "<object data=x>", "<embed src=x>",
              "<table>", "<audio loading=lazy>", "</video>"},
             3, 5, "", "");
}

TEST(InventoryTwin, AgreesOnBases) {
  compareAll({"<base href=/x/>", "<base href=y/>", "<base href=data:a>", "<base href>",
              "<a href=1>", "<img src=2>", "<template>", "</template>", "<noscript>", "</noscript>",
              "<form action=''>", "<iframe srcdoc='<a href=3><base href=z/><img src=4>'></iframe>"},
             3, 4, "", "");
}

TEST(InventoryTwin, AgreesOnNestedPages) {
  compareAll(
      {"<iframe srcdoc=\"", "\">", "<iframe srcdoc='", "'>", "<img src=x>", "&lt;a href=y&gt;",
       "<noscript>", "</noscript>", "</iframe>", "<template>", "&amp;quot;"},
      4, 5, "", "");
}

TEST(InventoryTwin, AgreesOnSvg) {
  compareAll({"<svg>", "</svg>", "<use href=#a xlink:href=b>", "<image xlink:href=x />", "<style>",
              "a{b:url(", ")}", "</style>", "<![CDATA[", "]]>", "<g fill=url(x)>", "&amp;"},
             3, 5, "<svg>", "");
}

TEST(InventoryTwin, AgreesOnJson) {
  compareAll({"{", "}", "[", "]", ":", ",", "\"http://a\"", "\"@type\"", "\"\\u0041\"", "1", " "},
             4, 6, "<script type=application/ld+json>", "</script>");
  compareAll({"{", "}", "\"imports\":", "\"scopes\":", "\"urls\":", "[", "]", "\"a\"", ":", ","}, 4,
             6, "<script type=importmap>", "</script>");
}

TEST(InventoryTwin, AgreesOnSheets) {
  const Pieces pieces = {"@import ",  "\"a\"",   "url(",        ")",  ";",    "{",   "}",
                         "supports(", "@layer ", "@namespace ", "p ", "<!--", "/**/"};
  forEachText(pieces, inShortOrDeepRun(4, 5), [](const std::string& text) {
    if (testing::Test::HasFailure()) return;
    ASSERT_TRUE(agreeOnSheet(text));
  });
}

TEST(InventoryTwin, AgreesOnCssTokens) {
  const Pieces pieces = {"url(", ")", "\"", "'",  "\\", "\n", "a",    "6",
                         "1e",   "-", "#",  "/*", "*/", " ",  "src(", "\\75rl("};
  forEachText(pieces, inShortOrDeepRun(3, 5), [](const std::string& text) {
    if (testing::Test::HasFailure()) return;
    ASSERT_TRUE(agreeOnSheet(text));
    ASSERT_TRUE(agreeOnSheet("a{b:" + text + "c)\"'}"));
  });
}

// --- Random texts ---

const Pieces kPlaces = {"<a href=x>",
                        "</a>",
                        "<a href='?a&amp;b' ping=\"1 2\">",
                        "<img src=x srcset='a 1x, b 2x'>",
                        "<img src=&#47;x loading=lazy>",
                        "<link rel=stylesheet href=x>",
                        "<link rel=icon href=x>",
                        "<base href=/b/>",
                        "<base href=c/>",
                        "<form action>",
                        "<form action=x>",
                        "</form>",
                        "<button formaction=' '>",
                        "<picture>",
                        "</picture>",
                        "<source src=x srcset=y>",
                        "<video>",
                        "</video>",
                        "<video src=x poster=y preload=none>",
                        "<track src=x default>",
                        "<object data=x>",
                        "</object>",
                        "<embed src=x.swf>",
                        "<iframe src=x>",
                        "</iframe>",
                        "<iframe srcdoc=\"<a href=x><img src=&quot;y&quot;>\">",
                        "<iframe sandbox srcdoc='<noscript><a href=x>'>",
                        "<noscript>",
                        "</noscript>",
                        "<template>",
                        "</template>",
                        "<div>",
                        "</div>",
                        "<template shadowrootmode=open itemid=x>",
                        "<svg>",
                        "</svg>",
                        "<use href=#x>",
                        "<use xlink:href=y />",
                        "<feImage href=x />",
                        "<svg fill='url(#x)'>",
                        "<math href=x>",
                        "<mi>",
                        "<style>",
                        "</style>",
                        "a{b:url(x)}",
                        "@import 'x';",
                        "@import url(y) supports(z);",
                        "url(\"x\")",
                        "<style type=x>",
                        "<p style='a:url(x);--b:url(y)'>",
                        "<p style=\"a:url(&quot;x&quot;)\">",
                        "<script src=x>",
                        "</script>",
                        "<script type=module src=x>",
                        "<script type=importmap>",
                        "{\"imports\":{\"a\":\"b\"}}",
                        "<script type=application/ld+json>",
                        "[\"http://a\",{\"@type\":\"http://b\"}]",
                        "<table background=x>",
                        "<tr>",
                        "<td background=y>",
                        "</table>",
                        "<body background=x>",
                        "<html manifest=x>",
                        "<head profile='x y'>",
                        "</head>",
                        "</body>",
                        "<frameset>",
                        "<frame src=x>",
                        "<meta http-equiv=refresh content='0;url=x'>",
                        "<meta charset=windows-1251>",
                        "<meta charset=shift_jis>",
                        "<meta property=og:url content=x>",
                        "<b style='a:url(x)'>",
                        "</b>",
                        "<i itemid=x>",
                        "<p>",
                        "</p>",
                        "<input type=image src=x>",
                        "<select>",
                        "<option itemid=x>",
                        "<blockquote cite=x>",
                        "<img data-src=x data-srcset='a 1x'>",
                        "<applet archive='a, b'>",
                        "x",
                        " ",
                        "\r\n",
                        "\n",
                        "&amp;",
                        "<!--",
                        "-->",
                        "<![CDATA[",
                        "]]>",
                        "\xC3\xA9",
                        "\xE9",
                        "\xF0\x9F\x98\x80",
                        "<!doctype html>",
                        "<x-y style=a:url(x)>",
                        "<textarea>",
                        "</textarea>",
                        "<title>",
                        "</title>",
                        "<image href=x>",
                        "<svg><style>",
                        "<svg><script href=x>",
                        "<plaintext>",
                        "<a href=\"\xE9?\xE9\">"};

TEST(InventoryTwin, AgreesOnRandomTexts) {
  RandomTexts random;
  for (std::size_t round = randomRuns(10000, 1000000); round > 0; --round) {
    ASSERT_TRUE(
        agree(random.text(kPlaces, 3 + random.number(25)), optionsWith(random.number(2) == 0)));
  }
}

TEST(InventoryTwin, AgreesOnRandomTextsInAnyEncoding) {
  const Pieces labels = {
      "utf-8",  "windows-1252", "windows-1251",   "shift_jis",   "gbk",      "gb18030",
      "big5",   "euc-jp",       "euc-kr",         "iso-2022-jp", "utf-16le", "utf-16be",
      "koi8-r", "macintosh",    "x-user-defined", "replacement", "nonsense", ""};
  Pieces pieces = {"<a href=\"",
                   "\">",
                   "<p style=\"a:url(",
                   ")\">",
                   "<style>@import '",
                   "'</style>",
                   "\x83",
                   "\x5C",
                   "\x95\\",
                   "\x81",
                   "\x30",
                   "\xFE\xFF",
                   "\xFF\xFE",
                   "\xEF\xBB\xBF",
                   "\x1B$B",
                   "\x1B(B",
                   "\x1B(J",
                   "\x8E",
                   "\x8F\xA2",
                   "\xC3\xA9",
                   "?",
                   "&amp;",
                   "&#233;",
                   "x",
                   "\x90\x30",
                   "<img srcset=\"a",
                   " 1x, b\">",
                   "\xD8\x3D",
                   "\r",
                   "\n",
                   "<iframe srcdoc=\"<a href=",
                   ">\">",
                   std::string_view("\0", 1)};
  RandomTexts random;
  for (std::size_t round = randomRuns(10000, 1000000); round > 0; --round) {
    InventoryOptions options = optionsWith(random.number(2) == 0);
    options.charset = labels[random.number(labels.size())];
    std::string text = random.text(pieces, 3 + random.number(20));
    if (options.charset.starts_with("utf-16")) {
      std::string wide;
      for (const char c : text) {
        if (options.charset == "utf-16be") wide += '\0';
        wide += c;
        if (options.charset == "utf-16le") wide += '\0';
      }
      text = random.mutated(wide, 2);
    }
    ASSERT_TRUE(agree(text, options));
  }
}

TEST(InventoryTwin, AgreesOnRandomSheets) {
  const Pieces pieces = {"url(",
                         "url( ",
                         "URL('",
                         ")",
                         " )",
                         "\"",
                         "'",
                         "x",
                         "#y",
                         "\\",
                         "\\29 ",
                         "\\\n",
                         "\n",
                         "\r\n",
                         "\f",
                         ";",
                         "{",
                         "}",
                         "(",
                         "[",
                         "]",
                         "@import ",
                         "@import url(",
                         "@layer a",
                         "@charset \"x\";",
                         "@namespace ",
                         "p ",
                         "supports(",
                         "image-set(",
                         "-webkit-image-set(",
                         "src(",
                         "1x,",
                         ":",
                         "--a:",
                         "/*",
                         "*/",
                         "<!--",
                         "-->",
                         "@media ",
                         "1",
                         "-",
                         "e3",
                         "+.5",
                         "%",
                         "#",
                         "\xC3\xA9",
                         "\xFF",
                         std::string_view("\0", 1),
                         "\\0 ",
                         "\\D800 ",
                         "\\110000",
                         "u\\72l("};
  RandomTexts random;
  for (std::size_t round = randomRuns(20000, 2000000); round > 0; --round) {
    ASSERT_TRUE(agreeOnSheet(random.text(pieces, 3 + random.number(20))));
  }
}

}  // namespace
}  // namespace pagescan::tests
