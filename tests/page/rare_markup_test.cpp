// Markup that random texts hardly ever make, beside the slow twin.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "reference/page/beside_library.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using reference::page::elementDifference;

std::string repeated(std::string_view piece, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) text += piece;
  return text;
}

// With scripting on and off.
void expectAgreement(const std::string& text) {
  for (const bool scripting : {true, false}) {
    reference::page::ElementOptions options;
    options.scripting = scripting;
    EXPECT_EQ(elementDifference(text, options), "") << text;
  }
}

// Each `</b>` puts the b that it makes anew right before the i that was closed, again and again in
// the same gap of the list of active formatting elements.
TEST(RareMarkup, MovesOneElementInFrontOfAnotherManyTimes) {
  for (const int times : {1, 20, 40, 70, 200}) {
    const std::string moves = "<b><p><i></p>" + repeated("<div></b>", times);
    expectAgreement(moves + "x<img src=a>");
    std::string many;
    for (int i = 0; i < 20; ++i) many += "<font size=" + std::to_string(i) + ">";
    // Twenty elements that were reopened together stand before it.
    expectAgreement("<p>" + many + "</p><p>x" + moves + "x<img src=a>");
    expectAgreement("<p>" + moves + "</p>" + many + "<p>x</p><p>y</b><img src=a>");
  }
}

// Elements of one kind, moved past one another.
TEST(RareMarkup, MovesElementsPastThoseOfTheirKind) {
  for (const std::string_view piece : {"<b>", "<b class=a>", "<font size=1 color=2>"}) {
    const std::string three = repeated(piece, 3);
    const std::string end = piece[1] == 'b' ? "</b>" : "</font>";
    const std::string piecesText(piece);
    for (const std::string& text :
         {three + "<div>" + end + piecesText + "<p>" + end + end + piecesText,
          three + "<p><i>" + three + "</p>" + end + "<div>" + end + piecesText + "x",
          "<i>" + three + "<p></i>" + three + end + "<div>" + end + end + "x",
          three + "<div><i>" + three + "<p>" + end + "</i>" + end + "x" + piecesText}) {
      expectAgreement(text + "<img src=a>");
      expectAgreement(text + text + "<img src=a>");
    }
  }
}

struct Row {
  Here here;
  std::string_view text;
};

constexpr Row kRows[] = {
    {HERE, "<head></head></template><img>"},
    {HERE, "<head></head><template></template></template><frameset><frame>"},
    {HERE, "<b a='x\ry'><b a='x\r\ny'><b a='x\ny'><b a='x&#10;y'><p>x</b></b></b></b><img>"},
    {HERE, "<b a='x&amp;y'><b a=x&y><b a='x&#38;y'><b a='x&y'><p>x</b></b></b></b><img>"},
    {HERE, "<input type=hid&#100;en><frameset><frame>"},
    {HERE, "<input type=hid&#101;en><frameset><frame>"},
    {HERE, "<table><input type=hid&#100;en></table><frameset><frame>"},
    {HERE, "&#32;&#9;&Tab;<frameset><frame>"},
    {HERE, "&#32;&#65;<frameset><frame>"},
    {HERE, "<table>&#32;&NewLine;<b>&#32;x<td>"},
    {HERE, "<head>&#32;</head>&#32;<frameset>&#32;<frame>"},
    {HERE, "<?xml version=1?><?a b='>'?><img><?"},
};

TEST(RareMarkup, IsReadAsByTheTwin) {
  for (const Row& row : kRows) {
    const testing::ScopedTrace trace(row.here.file, row.here.line, "this row");
    expectAgreement(std::string(row.text));
  }
}

}  // namespace
}  // namespace pagescan::tests
