// The page reader beside its slow twin: over every short text of the pieces that matter to a rule,
// over random ones, and over pages with random changes.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "reference/page/beside_library.h"
#include "support/generated_texts.h"

namespace pagescan::tests {
namespace {

using reference::page::elementDifference;
using reference::page::ElementOptions;
using Pieces = std::vector<std::string_view>;

::testing::AssertionResult agreeOnElements(const std::string& text, const ElementOptions& options) {
  const std::string difference = elementDifference(text, options);
  if (difference.empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << text << "\n(scripting " << options.scripting
                                       << ", context " << options.contextName << ")\n"
                                       << difference;
}

// Every text of up to so many pieces, with scripting on and off.
void compareAll(const Pieces& pieces, std::size_t quick, std::size_t deep,
                ElementOptions options = {}) {
  forEachText(pieces, inShortOrDeepRun(quick, deep), [&](const std::string& text) {
    if (testing::Test::HasFailure()) return;  // the first one is the shortest
    for (const bool scripting : {true, false}) {
      options.scripting = scripting;
      ASSERT_TRUE(agreeOnElements(text, options));
    }
  });
}

TEST(ElementTwin, AgreesOnTags) {
  compareAll({"<a", "</a", " b", "=", "\"", "'", "/", ">", "<", "\n"}, 5, 6);
}

TEST(ElementTwin, AgreesOnComments) {
  compareAll({"<!", "--", "-", "!", ">", "<", "<b>", "?", "[CDATA[", "]]", "<svg>"}, 4, 6);
}

TEST(ElementTwin, AgreesOnScripts) {
  compareAll({"<script>", "</script>", "<script ", "<!--", "-->", "-", "</script", "/", "x"}, 5, 6);
}

TEST(ElementTwin, AgreesOnRawTexts) {
  compareAll({"<title>", "</title>", "<style>", "</style>", "<noscript>", "</noscript>",
              "<textarea>", "</textarea ", "<xmp>", "</xmp/", ">", "<a>", "\n"},
             3, 5);
}

TEST(ElementTwin, AgreesOnFormatting) {
  compareAll({"<a>", "</a>", "<b>", "</b>", "<p>", "</p>", "<div>", "</div>", "x"}, 5, 7);
  compareAll({"<nobr>", "</nobr>", "<i a=1>", "</i>", "<table>", "<td>", "<button>", "<object>"}, 4,
             6);
}

TEST(ElementTwin, AgreesOnTables) {
  compareAll({"<table>", "</table>", "<tr>", "<td>", "</td>", "<caption>", "<col>", "<tbody>",
              "<a>", "x", " ", "<input type=hidden>"},
             4, 5);
  compareAll({"<table>", "<colgroup>", "</colgroup>", "<form>", "</form>", "<template>",
              "</template>", "<select>", "</tr>", "</tbody>", "<th>", "<thead>"},
             4, 5);
}

TEST(ElementTwin, AgreesOnForeignContent) {
  compareAll({"<svg>", "</svg>", "<math>", "<mi>", "<foreignObject>", "<desc>", "<p>", "</p>",
              "<a>", "<title>", "<font color=x>", "<mglyph>"},
             4, 5);
  compareAll(
      {"<svg/>", "<annotation-xml encoding=text/html>", "<annotation-xml>", "<math>", "<svg>",
       "</math>", "<![CDATA[", "]]>", "<b>", "</foreignobject>", "<script>", "</script>"},
      4, 5);
}

TEST(ElementTwin, AgreesOnTemplates) {
  compareAll({"<template>", "</template>", "<template shadowrootmode=open>", "<div>", "</div>",
              "<tr>", "<td>", "<col>", "<a>", "<p>", "<body>"},
             4, 5);
}

TEST(ElementTwin, AgreesOnFramesets) {
  compareAll({"<frameset>", "</frameset>", "<frame>", "<body>", "</body>", "</html>", "<html b>",
              "<head>", "</head>", "<noframes>", "</noframes>", " ", "x"},
             3, 5);
}

TEST(ElementTwin, AgreesOnDocuments) {
  compareAll({"<html a=1>", "<html b=2>", "<head>", "</head>", "<body a=1>", "<body b=2>",
              "<title>", "</title>", "<meta>", "<noscript>", "</noscript>", "<p>"},
             4, 5);
  compareAll({"<!doctype html>", "<!doctype x>", "<p>", "<table>", "<a>", "<!---->", "\n"}, 4, 6);
}

TEST(ElementTwin, AgreesOnSelects) {
  compareAll({"<select>", "</select>", "<option>", "</option>", "<optgroup>", "<input>", "<hr>",
              "<p>", "<textarea>", "</p>", "<button>", "<div>"},
             4, 5);
}

TEST(ElementTwin, AgreesOnLists) {
  compareAll({"<li>", "</li>", "<ul>", "</ul>", "<dd>", "<dt>", "<p>", "<address>", "<h1>", "</h2>",
              "<div>", "<form>"},
             4, 5);
  compareAll({"<ruby>", "<rt>", "<rtc>", "<rp>", "<rb>", "</ruby>", "<p>", "<pre>", "\n", "<b>"}, 4,
             5);
}

// --- Random texts ---

const Pieces kMarkup = {"<a>",
                        "</a>",
                        "<a href=x>",
                        "<b>",
                        "</b>",
                        "<i>",
                        "</i>",
                        "<u x=1>",
                        "</u>",
                        "<nobr>",
                        "</nobr>",
                        "<font size=1>",
                        "</font>",
                        "<p>",
                        "</p>",
                        "<div>",
                        "</div>",
                        "<table>",
                        "</table>",
                        "<table>",
                        "<tr>",
                        "</tr>",
                        "<td>",
                        "</td>",
                        "<th>",
                        "<tbody>",
                        "</tbody>",
                        "<thead>",
                        "<tfoot>",
                        "<caption>",
                        "</caption>",
                        "<colgroup>",
                        "</colgroup>",
                        "<col>",
                        "<svg>",
                        "</svg>",
                        "<math>",
                        "</math>",
                        "<mi>",
                        "<mo>",
                        "</mi>",
                        "<annotation-xml>",
                        "<annotation-xml encoding=TEXT/html>",
                        "<foreignObject>",
                        "</foreignObject>",
                        "<desc>",
                        "</desc>",
                        "<svg><title>",
                        "</title>",
                        "<title>",
                        "<template>",
                        "</template>",
                        "<template>",
                        "<template shadowrootmode=closed>",
                        "<select>",
                        "</select>",
                        "<option>",
                        "</option>",
                        "<optgroup>",
                        "</optgroup>",
                        "<input>",
                        "<input type=HIDDEN>",
                        "<hr>",
                        "<form>",
                        "</form>",
                        "<li>",
                        "</li>",
                        "<ul>",
                        "</ul>",
                        "<dd>",
                        "<dt>",
                        "</dd>",
                        "<dl>",
                        "</dl>",
                        "<button>",
                        "</button>",
                        "<object>",
                        "</object>",
                        "<marquee>",
                        "</marquee>",
                        "<applet>",
                        "<noscript>",
                        "</noscript>",
                        "<style>",
                        "</style>",
                        "<script>",
                        "</script>",
                        "<textarea>",
                        "</textarea>",
                        "<xmp>",
                        "</xmp>",
                        "<iframe>",
                        "</iframe>",
                        "<noembed>",
                        "</noembed>",
                        "<noframes>",
                        "</noframes>",
                        "<plaintext>",
                        "<frameset>",
                        "</frameset>",
                        "<frame>",
                        "<html>",
                        "</html>",
                        "<html lang=x>",
                        "<head>",
                        "</head>",
                        "<body>",
                        "</body>",
                        "<body id=x>",
                        "<base>",
                        "<link>",
                        "<meta>",
                        "<br>",
                        "</br>",
                        "<img>",
                        "<image>",
                        "<embed>",
                        "<h1>",
                        "</h1>",
                        "<h2>",
                        "</h3>",
                        "<ruby>",
                        "</ruby>",
                        "<rt>",
                        "<rp>",
                        "<rb>",
                        "<rtc>",
                        "<pre>",
                        "</pre>",
                        "<listing>",
                        "<address>",
                        "</address>",
                        "<section>",
                        "</section>",
                        "<span>",
                        "</span>",
                        "<x-y>",
                        "</x-y>",
                        "<main>",
                        "<search>",
                        "</search>",
                        "<source>",
                        "<picture>",
                        "</picture>",
                        "<video>",
                        "</video>",
                        "<mglyph>",
                        "<malignmark>",
                        "<keygen>",
                        "<menuitem>",
                        "<isindex>",
                        "<dialog>",
                        "<details>",
                        "<summary>",
                        "x",
                        " ",
                        "\n",
                        "\r\n",
                        std::string_view("\0", 1),
                        "&amp;",
                        "<!-- -->",
                        "<!--",
                        "-->",
                        "<![CDATA[",
                        "]]>",
                        "<?x?>",
                        "<!doctype html>",
                        "<!x>",
                        "</>",
                        "</ >",
                        "<",
                        "<input type=&#104idden>",
                        "<annotation-xml encoding=text&#47;html>",
                        "<template shadowrootmode='op&#101;n'>",
                        "<svg/>",
                        "<div/>",
                        "<a/>",
                        "<\xC3\xA9>",
                        "</\xC3\xA9>",
                        "<font color=x>",
                        "<big>",
                        "<small>",
                        "<em>",
                        "</em>",
                        "<strong>",
                        "<code>"};

TEST(ElementTwin, AgreesOnRandomTexts) {
  RandomTexts random;
  for (std::size_t round = randomRuns(15000, 1500000); round > 0; --round) {
    ElementOptions options;
    options.scripting = random.number(2) == 0;
    options.isSrcdoc = random.number(8) == 0;
    ASSERT_TRUE(agreeOnElements(random.text(kMarkup, 4 + random.number(40)), options));
  }
}

// A few pieces, again and again: deep stacks of the same.
TEST(ElementTwin, AgreesOnRandomTextsOfFewPieces) {
  RandomTexts random;
  for (std::size_t round = randomRuns(15000, 1500000); round > 0; --round) {
    Pieces few;
    for (std::size_t i = 2 + random.number(10); i > 0; --i) {
      few.push_back(kMarkup[random.number(kMarkup.size())]);
    }
    ElementOptions options;
    options.scripting = random.number(2) == 0;
    ASSERT_TRUE(agreeOnElements(random.text(few, 60), options));
  }
}

TEST(ElementTwin, AgreesOnFragments) {
  RandomTexts random;
  const Pieces contexts = {"div",    "table",    "tbody",    "tr",     "td",
                           "select", "template", "body",     "html",   "frameset",
                           "head",   "caption",  "colgroup", "option", "p"};
  for (std::size_t round = randomRuns(10000, 500000); round > 0; --round) {
    ElementOptions options;
    options.scripting = random.number(2) == 0;
    options.contextName = contexts[random.number(contexts.size())];
    ASSERT_TRUE(agreeOnElements(random.text(kMarkup, 20), options));
  }
}

}  // namespace
}  // namespace pagescan::tests
