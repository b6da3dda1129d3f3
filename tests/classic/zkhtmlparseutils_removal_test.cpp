#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <string_view>

#include "support/placement.h"
#include "support/texts.h"
#include "zkhtmlparseutils.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kMany = 300000;

struct TagCase {
  Here here;
  std::string_view tag;
  std::string_view text;
  std::string_view expected;
};

// --- The first single tag ---------------------------------------------------------------------

constexpr TagCase kSingleTags[] = {
    {HERE, "<img"sv, "x<IMG src=a>y<img>"sv, "xy<img>"sv},
    {HERE, "<img"sv, "x<b>y"sv, "x<b>y"sv},
    {HERE, "<img"sv, ""sv, ""sv},
    {HERE, "<img"sv, "x<img"sv, "x<img"sv},
    {HERE, "<img"sv, "x<img src=a"sv, "x<img src=a"sv},
    {HERE, "<img"sv, "><img src=a"sv, "><img src=a"sv},
    {HERE, "<IMG"sv, "<img>"sv, ""sv},
    {HERE, "<a"sv, "<abbr title=x>y</abbr><a>"sv, "y</abbr><a>"sv},
    {HERE, "<img"sv, "<img alt='a>b'>c"sv, "b'>c"sv},
    {HERE, "<img>"sv, "<img>x>y"sv, "y"sv},  // the next ">" after what was given
    {HERE, "<img>"sv, "<img>x"sv, "<img>x"sv},
    {HERE, "<img"sv, "<img\0>x"sv, "x"sv},
    {HERE, "<i\0"sv, "<i<i\0x>y"sv, "<iy"sv},
    {HERE, "\xC4"sv, "\xE4>\xC4>"sv, "\xE4>"sv},
    // An empty tag is found at the start.
    {HERE, ""sv, "ab>c"sv, "c"sv},
    {HERE, ""sv, ">"sv, ""sv},
    {HERE, ""sv, "abc"sv, "abc"sv},
    {HERE, ""sv, ""sv, ""sv},
    {HERE, "<img"sv, "a page that is too long for the object <img src=a.gif> and goes on"sv,
     "a page that is too long for the object  and goes on"sv},
};

TEST(TqRemoveFirstSingleTag, RemovesThroughTheNextAngleBracket) {
  forEachPlacement(kSingleTags, [](const TagCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const RWCString keeper(text);
    tqRemoveFirstSingleTag(text, place.string(row.tag));
    EXPECT_EQ(bytesOf(text), row.expected);
    EXPECT_EQ(bytesOf(keeper), row.text);
  });
}

// --- Bodies of elements -----------------------------------------------------------------------

void expectEmptied(const TagCase& row, Placement& place) {
  RWCString& text = place.string(row.text);
  const RWCString& tag = place.constString(row.tag);
  const RWCString keeper(text);
  tqSkipTagBody(tag, text);
  EXPECT_EQ(bytesOf(text), row.expected);
  EXPECT_EQ(bytesOf(tag), row.tag);
  EXPECT_EQ(bytesOf(keeper), row.text);
}

constexpr TagCase kBodies[] = {
    {HERE, "select"sv, "<SELECT name=a><option>1</select>z"sv, "<select></select>z"sv},
    {HERE, "Select"sv, "<SELECT name=a><option>1</sELECT>z"sv, "<Select></Select>z"sv},
    {HERE, "a"sv, ""sv, ""sv},
    {HERE, "a"sv, "no element"sv, "no element"sv},
    {HERE, "a"sv, "<a>1</a>2<a>3</a>4"sv, "<a></a>2<a></a>4"sv},
    {HERE, "a"sv, "x<a href='>'>\0</a>y"sv, "x<a></a>y"sv},
    {HERE, "a"sv, "<<a>x</a>"sv, "<<a></a>"sv},
    {HERE, "a"sv, "<b><a>x</a></b>"sv, "<b><a></a></b>"sv},
    // The result may be longer than the text.
    {HERE, "a"sv, "<a</a>"sv, "<a></a>"sv},
    {HERE, "a"sv, "<a</a><a</a>"sv, "<a></a><a></a>"sv},
    // Prefixes match.
    {HERE, "b"sv, "<body x>y</b>z"sv, "<b></b>z"sv},
    {HERE, "b"sv, "<br>1<b>2</b>3"sv, "<b></b>3"sv},
    // The closing tag is matched whole.
    {HERE, "a"sv, "<a>x</a >y</a>z"sv, "<a></a>z"sv},
    {HERE, "a"sv, "<a>x</ab>y"sv, "<a>x</ab>y"sv},
    // Elements of the same name are not counted.
    {HERE, "a"sv, "<a><a>x</a>y</a>"sv, "<a></a>y</a>"sv},
    // The first element whose closing tag is missing ends the work.
    {HERE, "a"sv, "<a>x<b>y</b>"sv, "<a>x<b>y</b>"sv},
    {HERE, "a"sv, "<a>1</a><a>2"sv, "<a></a><a>2"sv},
    {HERE, "a"sv, "<a"sv, "<a"sv},
    {HERE, "a"sv, "<"sv, "<"sv},
    {HERE, "a"sv, "</a><a>x</a>"sv, "</a><a></a>"sv},
    {HERE, "select"sv, "<select><sel"sv, "<select><sel"sv},
    // An empty tag changes nothing.
    {HERE, ""sv, "<a>x</a>"sv, "<a>x</a>"sv},
    {HERE, ""sv, "<>x</>"sv, "<>x</>"sv},
    // A NUL byte in the opening tag counts as a mismatch.
    {HERE, "a\0b"sv, "<a\0b>x</a\0b>"sv, "<a\0b>x</a\0b>"sv},
    {HERE, "ab"sv, "<a\0><ab>x</ab>"sv, "<a\0><ab></ab>"sv},
    {HERE, "/a"sv, "</a>x<//a>y"sv, "</a><//a>y"sv},
    {HERE, "\xC4"sv, "<\xE4>x</\xE4><\xC4>y</\xC4>"sv, "<\xE4>x</\xE4><\xC4></\xC4>"sv},
};

TEST(TqSkipTagBody, EmptiesElements) {
  forEachPlacement(kBodies, expectEmptied);
}

constexpr TagCase kBodiesAndComments[] = {
    // Comments between elements are passed over.
    {HERE, "a"sv, "<!-- <a href=x></a> --><a>x</a>"sv, "<!-- <a href=x></a> --><a></a>"sv},
    {HERE, "a"sv, "<!-- <a>x</a>"sv, "<!-- <a>x</a>"sv},
    {HERE, "a"sv, "<!-- x --><!-- <a></a> --><a>y</a>"sv, "<!-- x --><!-- <a></a> --><a></a>"sv},
    {HERE, "a"sv, "<!----><a>x</a>"sv, "<!----><a></a>"sv},
    // Its end is searched after the opener: neither "<!-->" nor "<!--->" is a whole comment.
    {HERE, "a"sv, "<!--> <a>x</a> --><a>y</a>"sv, "<!--> <a>x</a> --><a></a>"sv},
    {HERE, "a"sv, "<!--><a>x</a>"sv, "<!--><a>x</a>"sv},
    {HERE, "a"sv, "<!---><a>x</a>"sv, "<!---><a>x</a>"sv},
    {HERE, "a"sv, "<a>x</a><!--"sv, "<a></a><!--"sv},
    {HERE, "a"sv, "<!--ab"sv, "<!--ab"sv},
    // Other declarations are not comments.
    {HERE, "a"sv, "<!DOCTYPE <a>x</a>>"sv, "<!DOCTYPE <a></a>>"sv},
    {HERE, "a"sv, "<!- <a>x</a>"sv, "<!- <a></a>"sv},
    {HERE, "a"sv, "<!><a>x</a>"sv, "<!><a></a>"sv},
    {HERE, "!x"sv, "<!x>1</!x>"sv, "<!x>1</!x>"sv},
    // A comment inside the element may hold its closing tag.
    {HERE, "a"sv, "<a><!-- </a> -->y</a>z"sv, "<a></a>z"sv},
    {HERE, "a"sv, "<a<!-- </a> --></a>z"sv, "<a></a>z"sv},
    {HERE, "a"sv, "<a><!-- </a> -->y"sv, "<a><!-- </a> -->y"sv},
    {HERE, "a"sv, "<a>1</a><a><!-- </a> -->y"sv, "<a></a><a><!-- </a> -->y"sv},
    {HERE, "a"sv, "<a><!-- x -->y</a>z"sv, "<a></a>z"sv},
    {HERE, "a"sv, "<a>x</a><!-- </a> -->"sv, "<a></a><!-- </a> -->"sv},
    {HERE, "a"sv, "<a><!-- </a>"sv, "<a></a>"sv},
    // Only the first comment is honoured.
    {HERE, "a"sv, "<a><!-- x --><!-- </a> -->y</a>z"sv, "<a></a> -->y</a>z"sv},
    // Here its end may overlap its opener.
    {HERE, "a"sv, "<a><!--></a>--></a>z"sv, "<a></a>--></a>z"sv},
    {HERE, "a"sv, "<a><!---></a>--></a>z"sv, "<a></a>--></a>z"sv},
};

TEST(TqSkipTagBody, HonoursComments) {
  forEachPlacement(kBodiesAndComments, expectEmptied);
}

TEST(TqSkipTagBody, TakesTheLongestTagAllowed) {
  const std::string tag(254, 't');
  RWCString text = stringOf("<" + tag + " x>y</" + tag + ">z");
  tqSkipTagBody(stringOf(tag), text);
  EXPECT_EQ(bytesOf(text), "<" + tag + "></" + tag + ">z");
}

TEST(TqSkipTagBodyDeathTest, AbortsOnALongerTag) {
  for (const std::string_view bytes : {""sv, "<t>x</t>"sv, "no element"sv}) {
    for (const std::size_t length : {255U, 256U, 5000U}) {
      RWCString text = stringOf(bytes);
      EXPECT_EXIT(tqSkipTagBody(stringOf(std::string(length, 't')), text),
                  testing::KilledBySignal(SIGABRT),
                  "zkhtmlparseutils[^:]*:489: "
                  "void tqSkipTagBody\\(const RWCString&, RWCString&\\): Assertion `0' failed");
    }
  }
}

TEST(TqSkipTagBody, EndsOnLargeTexts) {
  const auto emptied = [](const std::string& bytes) {
    RWCString text = stringOf(bytes);
    tqSkipTagBody("a", text);
    return std::string(bytesOf(text));
  };
  EXPECT_EQ(emptied(repeated("<a>x</a>", kMany)), repeated("<a></a>", kMany));
  EXPECT_EQ(emptied(repeated("<a</a>", kMany)), repeated("<a></a>", kMany));
  EXPECT_EQ(emptied(repeated("<a><!--</a>", kMany)), repeated("<a></a>", kMany));
  EXPECT_EQ(emptied(repeated("<a><!--</a>--></a>", kMany)), repeated("<a></a>", kMany));
  const std::string openers = repeated("<a>", kMany);
  EXPECT_EQ(emptied(openers), openers);
  EXPECT_EQ(emptied(openers + "</a>"), "<a></a>");
  const std::string brackets = repeated("<", kMany);
  EXPECT_EQ(emptied(brackets), brackets);
  const std::string comments = repeated("<!-- -->", kMany);
  EXPECT_EQ(emptied(comments + "<a>x</a>"), comments + "<a></a>");
  const std::string declarations = repeated("<!-", kMany);
  EXPECT_EQ(emptied(declarations), declarations);
}

// --- Event handlers ---------------------------------------------------------------------------

struct HandlerCase {
  Here here;
  std::string_view text;
  std::string_view expected;
};
constexpr HandlerCase kHandlers[] = {
    {HERE, "<body onload=\"init()\">"sv, "<body onload=\"\">"sv},
    {HERE, "<BODY ONLOAD = 'init()'>"sv, "<BODY onload=\"\"'>"sv},  // the single quote stays
    {HERE, "<a onmouseover=\"x\" onmouseout=\"y\">"sv, "<a onmouseover=\"\" onmouseout=\"\">"sv},
    {HERE, "<img onload=go()>"sv, "<img onload=\"\">"sv},
    {HERE, "<img onload=go() alt=x>"sv, "<img onload=\"\" alt=x>"sv},
    {HERE, "<img onload=\"a\" onload=\"b\">"sv, "<img onload=\"\" onload=\"\">"sv},
    {HERE, "<img onload=\"\">"sv, "<img onload=\"\">"sv},
    {HERE, "<img onload=''>"sv, "<img onload=\"\"'>"sv},
    {HERE, "<img onload=>"sv, "<img onload=\"\">"sv},
    {HERE, "<img onload= >"sv, "<img onload=\"\">"sv},
    {HERE, "<img onload=\"a>b\tc\0d\">"sv, "<img onload=\"\">"sv},
    {HERE, "<img onload=\"it's\">"sv, "<img onload=\"\">"sv},
    {HERE, "<img onload \t\r\n= \n\"x\">"sv, "<img onload=\"\">"sv},
    {HERE, "<img oNmOuSeOvEr=x oNmOuSeOuT\n=\ny>"sv, "<img onmouseover=\"\" onmouseout=\"\">"sv},
    // Prose and the tails of longer names are rewritten too.
    {HERE, "set onload=1 now"sv, "set onload=\"\" now"sv},
    {HERE, "<b data-onload=x>"sv, "<b data-onload=\"\">"sv},
    {HERE, "onload=x onload=y>"sv, "onload=\"\" onload=\"\">"sv},
    // No "=" after the name.
    {HERE, "onloadx"sv, "onloadx"sv},
    {HERE, "onload"sv, "onload"sv},
    {HERE, "onload onmouseover onmouseout"sv, "onload onmouseover onmouseout"sv},
    {HERE, "onload\f=x>"sv, "onload\f=x>"sv},
    {HERE, "onload x onload=y>"sv, "onload x onload=\"\">"sv},
    {HERE, "ononload=y>"sv, "ononload=\"\">"sv},
    {HERE, "onmouseover"sv, "onmouseover"sv},
    {HERE, "onmouseout "sv, "onmouseout "sv},
    // Short texts.
    {HERE, ""sv, ""sv},
    {HERE, "onloa"sv, "onloa"sv},
    {HERE, "onloa="sv, "onloa="sv},
    {HERE, "onload="sv, "onload=\"\""sv},
    {HERE, "onmouseout="sv, "onmouseout=\"\""sv},
    {HERE, "onmouseover="sv, "onmouseover=\"\""sv},
    // Without a whole value everything from the name on is replaced.
    {HERE, "<body onload="sv, "<body onload=\"\""sv},
    {HERE, "<body onload=  "sv, "<body onload=\"\""sv},
    {HERE, "<body onload=init() "sv, "<body onload=\"\" "sv},
    {HERE, "<body onload=init()"sv, "<body onload=\"\""sv},
    {HERE, "<body onload=\"init()><p>more"sv, "<body onload=\"\""sv},
    {HERE, "<body onload='init()><p>more"sv, "<body onload=\"\""sv},
    {HERE, "<a onload=x> <b onload="sv, "<a onload=\"\"> <b onload=\"\""sv},
    {HERE, "<a onload=\"long value\"> <b onload=  "sv, "<a onload=\"\"> <b onload=\"\""sv},
    {HERE, "<a onload=\"x\"> <b onload=\"y"sv, "<a onload=\"\"> <b onload=\"\""sv},
    {HERE, "<a onmouseover=\"x\"> <b onmouseout="sv, "<a onmouseover=\"\"> <b onmouseout=\"\""sv},
    {HERE, "onload=\"x"sv, "onload=\"\""sv},
    // The phases run one after the other over what the last one left.
    {HERE, "<a onmouseover='onload=\"x\"'>"sv, "<a onmouseover=\"\"'>"sv},
    {HERE, "<a onload=\"onmouseout=1\">"sv, "<a onload=\"\">"sv},
    {HERE, "<a onmouseout=x onmouseover=y onload=z>"sv,
     "<a onmouseout=\"\" onmouseover=\"\" onload=\"\">"sv},
    {HERE, "<a onmouseover=x onload="sv, "<a onmouseover=\"\" onload=\"\""sv},
    {HERE, "<a onload=onload=x>"sv, "<a onload=\"\">"sv},
    {HERE, "onmouseout=onmouseover= >"sv, "onmouseout=\"\">"sv},
};

TEST(TqSkipOnloadAttribute, EmptiesTheHandlers) {
  forEachPlacement(kHandlers, [](const HandlerCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const RWCString keeper(text);
    tqSkipOnloadAttribute(text);
    EXPECT_EQ(bytesOf(text), row.expected);
    EXPECT_EQ(bytesOf(keeper), row.text);
  });
}

TEST(TqSkipOnloadAttribute, EndsOnLargeTexts) {
  const auto disarmed = [](const std::string& bytes) {
    RWCString text = stringOf(bytes);
    tqSkipOnloadAttribute(text);
    return std::string(bytesOf(text));
  };
  EXPECT_EQ(disarmed(repeated("onload=x ", kMany)), repeated("onload=\"\" ", kMany));
  EXPECT_EQ(disarmed(repeated("onmouseout='xyz'", kMany)), repeated("onmouseout=\"\"'", kMany));
  const std::string names = repeated("onload", kMany);
  EXPECT_EQ(disarmed(names), names);
  const std::string blanks = repeated("onmouseover          ", kMany / 4);
  EXPECT_EQ(disarmed(blanks), blanks);
  EXPECT_EQ(disarmed("onload=\"" + names), "onload=\"\"");
  EXPECT_EQ(disarmed("onload" + std::string(4U << 20, ' ') + "=x>"), "onload=\"\">");
}

}  // namespace
}  // namespace pagescan::tests
