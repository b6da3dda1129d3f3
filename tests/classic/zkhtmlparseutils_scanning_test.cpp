#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/placement.h"
#include "zkhtmlparseutils.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

constexpr unsigned long kMax = ~0UL;

// --- White space ------------------------------------------------------------------------------

TEST(HtmlIsWhiteSpace, IsTrueForTabLfCrAndSpaceAlone) {
  for (int c = -128; c < 256; ++c) {
    const bool expected = c == 9 || c == 10 || c == 13 || c == 32;
    EXPECT_EQ(htmlIsWhiteSpace(static_cast<char>(c)), expected) << c;
  }
}

struct SkipCase {
  Here here;
  std::string_view text;
  unsigned long end;
  unsigned long pos;
  bool found;
  unsigned long stop;
};

template <bool (*skip)(RWCString&, unsigned long, unsigned long&)>
void expectSkip(const SkipCase& row, Placement& place) {
  RWCString& text = place.string(row.text);
  unsigned long pos = row.pos;
  EXPECT_EQ(skip(text, row.end, pos), row.found);
  EXPECT_EQ(pos, row.stop);
  EXPECT_EQ(bytesOf(text), row.text);
}

constexpr SkipCase kWhiteSpaceSkips[] = {
    //     text        end  pos  found  stop
    {HERE, "a  b"sv, 4, 0, true, 3},
    {HERE, "ab"sv, 2, 0, true, 1},
    {HERE, "a \t\r\nb"sv, 6, 0, true, 5},
    {HERE, "  b"sv, 3, 0, true, 2},
    {HERE, "a\fb"sv, 3, 0, true, 1},  // form feed and vertical tab are not white space
    {HERE, "a\vb"sv, 3, 0, true, 1},
    {HERE, "a\0b"sv, 3, 0, true, 1},
    {HERE, "a \x80"sv, 3, 0, true, 2},
    {HERE, "a \xA0"sv, 3, 0, true, 2},
    {HERE, "a  >"sv, 4, 0, true, 3},
    // Nothing but white space up to the end: the position stays where the walk stopped.
    {HERE, "a  "sv, 3, 0, false, 3},
    {HERE, "a   "sv, 4, 2, false, 4},
    // pos + 1 at or beyond the end.
    {HERE, "ab"sv, 2, 1, false, 2},
    {HERE, "ab"sv, 2, 2, false, 3},
    {HERE, "ab"sv, 2, 5, false, 6},
    {HERE, ""sv, 0, 0, false, 1},
    {HERE, "a"sv, 0, 0, false, 1},
    // The end bounds the walk before the length does, and the length before a larger end.
    {HERE, "a  b"sv, 3, 0, false, 3},
    {HERE, "a  b"sv, 2, 0, false, 2},
    {HERE, "a  b"sv, 1, 0, false, 1},
    {HERE, "a  b"sv, 99, 0, true, 3},
    {HERE, "a   "sv, 99, 0, false, 4},
    {HERE, "a   "sv, kMax, 0, false, 4},
    // Positions next to the largest number: the step wraps around to the first byte.
    {HERE, "ab"sv, 2, kMax - 1, false, kMax},
    {HERE, " b"sv, 2, kMax, true, 1},
    {HERE, "                                        x"sv, 41, 0, true, 40},
};

TEST(HtmlSkipWhiteSpaces, StopsAfterTheWhiteSpace) {
  forEachPlacement(kWhiteSpaceSkips, expectSkip<htmlSkipWhiteSpaces>);
}

constexpr SkipCase kWordSkips[] = {
    {HERE, "abc<d"sv, 5, 0, true, 3},
    {HERE, "abc>d"sv, 5, 0, true, 3},
    {HERE, "abc d"sv, 5, 0, true, 3},
    {HERE, "abc\td"sv, 5, 0, true, 3},
    {HERE, "abc\rd"sv, 5, 0, true, 3},
    {HERE, "abc\nd"sv, 5, 0, true, 3},
    {HERE, "abc\fd\v\0\x80="sv, 9, 0, false, 9},
    {HERE, "<<a"sv, 3, 0, true, 1},
    {HERE, "<a>"sv, 3, 0, true, 2},  // the byte at the position is not looked at
    {HERE, "  "sv, 2, 0, true, 1},
    {HERE, "abc"sv, 3, 0, false, 3},
    {HERE, "abc"sv, 3, 2, false, 3},
    {HERE, "abc"sv, 3, 3, false, 4},
    {HERE, "abc"sv, 3, 8, false, 9},
    {HERE, ""sv, 0, 0, false, 1},
    {HERE, "abc<"sv, 3, 0, false, 3},
    {HERE, "abc<"sv, 9, 0, true, 3},
    {HERE, "abcd"sv, 9, 0, false, 4},
    {HERE, "abcd"sv, kMax, 0, false, 4},
    {HERE, "ab"sv, 2, kMax - 1, false, kMax},
    {HERE, "<b"sv, 2, kMax, true, 0},
};

TEST(HtmlSkipNonWhiteSpaces, StopsAtWhiteSpaceOrAnAngleBracket) {
  forEachPlacement(kWordSkips, expectSkip<htmlSkipNonWhiteSpaces>);
}

// --- Values -----------------------------------------------------------------------------------

constexpr unsigned long kOldStart = 77;
constexpr std::string_view kOldValue = "old";

struct ValueCase {
  Here here;
  std::string_view text;
  unsigned long start;
  unsigned long end;
  unsigned long furthestBefore;
  bool read;
  std::string_view value;
  unsigned long valueStart;
  unsigned long furthest;
};
constexpr ValueCase kValues[] = {
    //     text              start end  before  read   value        at  furthest
    {HERE, "= 'a b'>"sv, 0, 8, 0, true, "a b"sv, 3, 6},
    {HERE, "=abc>"sv, 0, 5, 0, true, "abc"sv, 1, 4},
    {HERE, "=>"sv, 0, 2, 0, true, ""sv, 1, 1},
    {HERE, "=\"abc"sv, 0, 5, 0, false, "abc"sv, 2, 0},
    {HERE, "=\"abc\""sv, 0, 6, 0, true, "abc"sv, 2, 5},
    {HERE, "=\"\""sv, 0, 3, 0, true, ""sv, 2, 2},
    {HERE, "=''"sv, 0, 3, 0, true, ""sv, 2, 2},
    {HERE, "= \t\r\n\"a\" "sv, 0, 9, 0, true, "a"sv, 6, 7},
    // The other quote, white space, ">" and "<" are ordinary inside quotes; nothing escapes.
    {HERE, "=\"a'b >\t<\"x"sv, 0, 10, 0, true, "a'b >\t<"sv, 2, 9},
    {HERE, "='a\"b'"sv, 0, 6, 0, true, "a\"b"sv, 2, 5},
    {HERE, "=\"a\\\"b\""sv, 0, 7, 0, true, "a\\"sv, 2, 4},
    {HERE, "=\"&amp;\""sv, 0, 8, 0, true, "&amp;"sv, 2, 7},
    {HERE, "=\"a\0b\""sv, 0, 6, 0, true, "a\0b"sv, 2, 5},
    {HERE, "='\x80\xFF'"sv, 0, 5, 0, true, "\x80\xFF"sv, 2, 4},
    // A bare value ends at white space or ">" alone.
    {HERE, "=a\"b'c< "sv, 0, 8, 0, true, "a\"b'c<"sv, 1, 7},
    {HERE, "=a\f\v\0b\t"sv, 0, 7, 0, true, "a\f\v\0b"sv, 1, 6},
    {HERE, "=a\rb"sv, 0, 4, 0, true, "a"sv, 1, 2},
    {HERE, "=a\nb"sv, 0, 4, 0, true, "a"sv, 1, 2},
    {HERE, "=/a=b>"sv, 0, 6, 0, true, "/a=b"sv, 1, 5},
    {HERE, "==>"sv, 0, 3, 0, true, "="sv, 1, 2},
    // Unfinished values: what was gathered stays, the maximum does not grow.
    {HERE, "=abc"sv, 0, 4, 0, false, "abc"sv, 1, 0},
    {HERE, "=a"sv, 0, 2, 0, false, "a"sv, 1, 0},
    {HERE, "=\""sv, 0, 2, 0, false, ""sv, 2, 0},
    {HERE, "= '"sv, 0, 3, 0, false, ""sv, 3, 0},
    {HERE, "=\"abc'"sv, 0, 6, 0, false, "abc'"sv, 2, 0},
    // Nothing but white space: nothing is touched.
    {HERE, "="sv, 0, 1, 0, false, kOldValue, kOldStart, 0},
    {HERE, "=  \t"sv, 0, 4, 0, false, kOldValue, kOldStart, 0},
    {HERE, ""sv, 0, 0, 0, false, kOldValue, kOldStart, 0},
    {HERE, "=a>"sv, 7, 3, 0, false, kOldValue, kOldStart, 0},
    // The end bounds the value; one beyond the length is the length.
    {HERE, "=abc>"sv, 0, 4, 0, false, "abc"sv, 1, 0},
    {HERE, "=abc>"sv, 0, 3, 0, false, "ab"sv, 1, 0},
    {HERE, "=abc>"sv, 0, 1, 0, false, kOldValue, kOldStart, 0},
    {HERE, "=\"abc\""sv, 0, 5, 0, false, "abc"sv, 2, 0},
    {HERE, "=\"abc\""sv, 0, 2, 0, false, ""sv, 2, 0},
    {HERE, "=\"abc\""sv, 0, 99, 0, true, "abc"sv, 2, 5},
    {HERE, "=\"abc"sv, 0, 99, 0, false, "abc"sv, 2, 0},
    {HERE, "=abc"sv, 0, kMax, 0, false, "abc"sv, 1, 0},
    {HERE, "= "sv, 0, kMax, 0, false, kOldValue, kOldStart, 0},
    // `furthest` is a running maximum.
    {HERE, "=abc>"sv, 0, 5, 3, true, "abc"sv, 1, 4},
    {HERE, "=abc>"sv, 0, 5, 4, true, "abc"sv, 1, 4},
    {HERE, "=abc>"sv, 0, 5, 9, true, "abc"sv, 1, 9},
    {HERE, "='abc'"sv, 0, 6, 9, true, "abc"sv, 2, 9},
    {HERE, "='abc"sv, 0, 5, 9, false, "abc"sv, 2, 9},
    {HERE, "<a href='x'>"sv, 7, 12, 0, true, "x"sv, 9, 10},
    {HERE, "='a value that is too long for the object'>"sv, 0, 43, 0, true,
     "a value that is too long for the object"sv, 2, 41},
};

TEST(HtmlGetStringValue, ReadsOneQuotedOrBareValue) {
  forEachPlacement(kValues, [](const ValueCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    RWCString& value = place.string(kOldValue);
    unsigned long valueStart = kOldStart;
    unsigned long furthest = row.furthestBefore;
    EXPECT_EQ(htmlGetStringValue(text, value, row.start, valueStart, furthest, row.end), row.read);
    EXPECT_EQ(bytesOf(value), row.value);
    EXPECT_EQ(valueStart, row.valueStart);
    EXPECT_EQ(furthest, row.furthest);
    EXPECT_EQ(bytesOf(text), row.text);
  });
}

// --- Elements ---------------------------------------------------------------------------------

struct ElementCase {
  Here here;
  std::string_view name;
  unsigned long nameLength;
  std::string_view text;
  unsigned long pos;
  char terminator;
  bool expected;
};
constexpr ElementCase kElements[] = {
    //     name     length text       pos  terminator
    {HERE, "a"sv, 1, "a>"sv, 0, ' ', true},
    {HERE, "a"sv, 1, "a "sv, 0, ' ', true},
    {HERE, "a"sv, 1, "ab"sv, 0, ' ', false},
    {HERE, "a"sv, 1, "ab"sv, 0, '~', true},
    {HERE, "a"sv, 1, "b>"sv, 0, ' ', false},
    {HERE, "a"sv, 1, "b>"sv, 0, '~', false},
    {HERE, "img"sv, 3, "<IMG src"sv, 1, ' ', true},
    {HERE, "IMG"sv, 3, "<img\tsrc"sv, 1, ' ', false},  // one terminator, not any white space
    {HERE, "IMG"sv, 3, "<img\tsrc"sv, 1, '\t', true},
    {HERE, "img"sv, 3, "<im"sv, 1, '~', false},
    {HERE, "img"sv, 2, "<im "sv, 1, ' ', true},  // only the given number of bytes counts
    // A name at the very end is followed by the closing NUL.
    {HERE, "a"sv, 1, "a"sv, 0, ' ', false},
    {HERE, "a"sv, 1, "a"sv, 0, '\0', true},
    {HERE, "a"sv, 1, "a"sv, 0, '~', true},
    {HERE, "a"sv, 1, "a\0"sv, 0, '\0', true},
    {HERE, "a"sv, 1, "<>a"sv, 2, '~', true},
    // An empty name: only the byte at the position counts.
    {HERE, ""sv, 0, ">"sv, 0, ' ', true},
    {HERE, ""sv, 0, "x"sv, 0, ' ', false},
    {HERE, ""sv, 0, "x"sv, 0, 'x', true},
    {HERE, ""sv, 0, ""sv, 0, '~', true},
    {HERE, ""sv, 0, ""sv, 0, ' ', false},
    {HERE, ""sv, 0, "abc"sv, 3, '~', true},
    // Positions beyond the length read nothing.
    {HERE, "a"sv, 1, "a"sv, 1, '~', false},
    {HERE, "a"sv, 1, "a"sv, 2, '~', false},
    {HERE, "a"sv, 1, ""sv, 5, '~', false},
    {HERE, ""sv, 0, "abc"sv, 4, '~', false},
    {HERE, ""sv, 0, "abc"sv, 4, '\0', false},
    {HERE, "a"sv, 1, "aaa"sv, kMax, '~', false},
    {HERE, ""sv, 0, "aaa"sv, kMax, '~', false},
    {HERE, "aaaa"sv, 4, "aaa"sv, kMax - 2, '~', false},
    // Letters fold, nothing else does.
    {HERE, "?import"sv, 7, "?IMPORT x"sv, 0, ' ', true},
    {HERE, "a["sv, 2, "A{>"sv, 0, ' ', false},
    {HERE, "\xC4"sv, 1, "\xE4>"sv, 0, ' ', false},
    {HERE, "\xC4"sv, 1, "\xC4>"sv, 0, ' ', true},
    // The comparison is the C library's: it ends at a NUL that stands in both.
    {HERE, "a\0x"sv, 3, "a\0y>"sv, 0, ' ', true},
    {HERE, "ax"sv, 2, "a\0>"sv, 0, ' ', false},
};

TEST(IsElementOfType, ComparesTheNameAndTheByteAfterIt) {
  forEachPlacement(kElements, [](const ElementCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const char* const name = place.bytes(row.name).data();
    EXPECT_EQ(isElementOfType(name, row.nameLength, text, row.pos, row.terminator), row.expected);
    EXPECT_EQ(bytesOf(text), row.text);
  });
}

// --- The next attribute -----------------------------------------------------------------------

constexpr std::string_view kOldName = "N";
constexpr std::string_view kOldAttributeValue = "V";

struct AttributeCase {
  Here here;
  std::string_view text;
  unsigned long pos;
  std::string_view name;
  std::string_view value;
  unsigned long posAfter;
  unsigned long valueStart;
};

void expectAttribute(const AttributeCase& row, Placement& place) {
  RWCString& text = place.string(row.text);
  RWCString& name = place.string(kOldName);
  RWCString& value = place.string(kOldAttributeValue);
  unsigned long pos = row.pos;
  unsigned long valueStart = kOldStart;
  htmlFindNextAttribute_(text, name, value, pos, valueStart);
  EXPECT_EQ(bytesOf(name), row.name);
  EXPECT_EQ(bytesOf(value), row.value);
  EXPECT_EQ(pos, row.posAfter);
  EXPECT_EQ(valueStart, row.valueStart);
  EXPECT_EQ(bytesOf(text), row.text);
}

constexpr AttributeCase kAttributes[] = {
    //     text                        pos name        value  after at
    {HERE, " href=\"x.html\" alt>"sv, 0, "href"sv, "x.html"sv, 13, 7},
    {HERE, " href=\"x.html\" alt>"sv, 13, "alt"sv, ""sv, 18, kOldStart},
    {HERE, " href=\"x.html\" alt>"sv, 18, kOldName, kOldAttributeValue, 19, kOldStart},
    {HERE, "HREF = 'a b' >"sv, 0, "HREF"sv, "a b"sv, 11, 8},  // as written, in upper case
    {HERE, "a=b>"sv, 0, "a"sv, "b"sv, 3, 2},
    {HERE, "a=b c=d>"sv, 3, "c"sv, "d"sv, 7, 6},
    {HERE, "a=>"sv, 0, "a"sv, ""sv, 2, 2},
    {HERE, "a= >"sv, 0, "a"sv, ""sv, 3, 3},
    {HERE, "data-x1=y>"sv, 0, "data-x1"sv, "y"sv, 9, 8},
    {HERE, "-=y>"sv, 0, "-"sv, "y"sv, 3, 2},
    {HERE, "1a=y>"sv, 0, "1a"sv, "y"sv, 4, 3},
    {HERE, "\"a\"=\"b\">"sv, 0, "a"sv, "b"sv, 6, 5},
    // Names without a value.
    {HERE, "alt>"sv, 0, "alt"sv, ""sv, 3, kOldStart},
    {HERE, "alt >"sv, 0, "alt"sv, ""sv, 3, kOldStart},
    {HERE, "alt b"sv, 0, "alt"sv, ""sv, 3, kOldStart},
    {HERE, "alt \t\r\nb=c>"sv, 0, "alt"sv, ""sv, 3, kOldStart},
    {HERE, "alt\"b"sv, 0, "alt"sv, ""sv, 3, kOldStart},
    {HERE, "alt -"sv, 0, "alt"sv, ""sv, 3, kOldStart},
    {HERE, "  alt  "sv, 0, "alt"sv, ""sv, 5, kOldStart},
    // A name that runs to the end of the text is not reported.
    {HERE, "alt"sv, 0, kOldName, kOldAttributeValue, 0, kOldStart},
    {HERE, "  alt"sv, 1, kOldName, kOldAttributeValue, 1, kOldStart},
    // Nothing there.
    {HERE, ""sv, 0, kOldName, kOldAttributeValue, 0, kOldStart},
    {HERE, "a=b>"sv, 4, kOldName, kOldAttributeValue, 4, kOldStart},
    {HERE, "a=b>"sv, 9, kOldName, kOldAttributeValue, 9, kOldStart},
    {HERE, "a=b>"sv, kMax, kOldName, kOldAttributeValue, kMax, kOldStart},
    {HERE, "  \" "sv, 0, kOldName, kOldAttributeValue, 0, kOldStart},
    {HERE, ">"sv, 0, kOldName, kOldAttributeValue, 1, kOldStart},
    {HERE, "  > a=b>"sv, 0, kOldName, kOldAttributeValue, 3, kOldStart},
    // "=" without a name.
    {HERE, "=x>"sv, 0, kOldName, kOldAttributeValue, 3, kOldStart},
    {HERE, "=x"sv, 0, kOldName, kOldAttributeValue, 0, kOldStart},
    {HERE, "=x a=b>"sv, 0, kOldName, kOldAttributeValue, 0, kOldStart},
    {HERE, "  =>a"sv, 0, kOldName, kOldAttributeValue, 4, kOldStart},
    // Unexpected bytes skip to the next white space or ">".
    {HERE, "/ a=b>"sv, 0, "a"sv, "b"sv, 5, 4},
    {HERE, "/a=b>"sv, 0, kOldName, kOldAttributeValue, 5, kOldStart},
    {HERE, "/>"sv, 0, kOldName, kOldAttributeValue, 2, kOldStart},
    {HERE, "/a=b"sv, 0, kOldName, kOldAttributeValue, 0, kOldStart},
    {HERE, "_x a=b>"sv, 0, "a"sv, "b"sv, 6, 5},
    {HERE, "'x' a=b>"sv, 0, "a"sv, "b"sv, 7, 6},
    {HERE, "\xE4x\ta=b>"sv, 0, "a"sv, "b"sv, 6, 5},
    {HERE, "\xC4\nb=c>"sv, 0, "b"sv, "c"sv, 5, 4},  // letters and digits are the ASCII ones
    {HERE, "\0\ra=b>"sv, 0, "a"sv, "b"sv, 5, 4},
    {HERE, "\fa\v=b c>"sv, 0, "c"sv, ""sv, 7, kOldStart},
    {HERE, "<a b>"sv, 0, "b"sv, ""sv, 4, kOldStart},
    // The started name is kept across a skipped run, and its end is set only by a separator.
    {HERE, "ab_cd =x>"sv, 0, "ab_cd "sv, "x"sv, 8, 7},
    {HERE, "ab_cd ef=x>"sv, 0, "ab_cd ef"sv, "x"sv, 10, 9},
    {HERE, "ab_cd>"sv, 0, kOldName, kOldAttributeValue, 6, kOldStart},
    {HERE, "ab _cd>"sv, 0, "ab"sv, ""sv, 2, kOldStart},
    {HERE, "ab _cd =x>"sv, 0, "ab"sv, "x"sv, 9, 8},
    {HERE, "ab _cd ef=x>"sv, 0, "ab"sv, ""sv, 2, kOldStart},
    {HERE, "ab _cd"sv, 0, kOldName, kOldAttributeValue, 0, kOldStart},
    {HERE, "ab _cd "sv, 0, "ab"sv, ""sv, 2, kOldStart},
    {HERE, "ab_ "sv, 0, kOldName, kOldAttributeValue, 0, kOldStart},
    {HERE, "ab_ >"sv, 0, "ab_ "sv, ""sv, 4, kOldStart},
    {HERE, "ab/>"sv, 0, kOldName, kOldAttributeValue, 4, kOldStart},
    {HERE, "ab />"sv, 0, "ab"sv, ""sv, 2, kOldStart},
    // Values that do not end leave the position; the name was read.
    {HERE, "a=\"b"sv, 0, "a"sv, "b"sv, 0, kOldStart},
    {HERE, "a='"sv, 0, "a"sv, ""sv, 0, kOldStart},
    {HERE, "a=b"sv, 0, "a"sv, "b"sv, 0, kOldStart},
    {HERE, "a="sv, 0, "a"sv, kOldAttributeValue, 0, kOldStart},
    {HERE, "a=  "sv, 0, "a"sv, kOldAttributeValue, 0, kOldStart},
    {HERE, " x a=\"b>"sv, 2, "a"sv, "b>"sv, 2, kOldStart},
    // After a single-quoted value its closing quote is an unexpected byte.
    {HERE, "a='b'c d=e>"sv, 0, "a"sv, "b"sv, 4, 3},
    {HERE, "a='b'c d=e>"sv, 4, "d"sv, "e"sv, 10, 9},
    {HERE, "a=\"b\"c=d>"sv, 4, "c"sv, "d"sv, 8, 7},
    {HERE, "a=\"b>c\" d>"sv, 0, "a"sv, "b>c"sv, 6, 3},
    {HERE, "a==b>"sv, 0, "a"sv, "=b"sv, 4, 2},
    {HERE, "a=\"x\0y\">"sv, 0, "a"sv, "x\0y"sv, 6, 3},
};

TEST(HtmlFindNextAttribute, ReadsTheNextNameAndValue) {
  forEachPlacement(kAttributes, expectAttribute);
}

// The loop a host runs: it ends on every text.
TEST(HtmlFindNextAttribute, EndsALoopThatWatchesNameAndPosition) {
  RWCString text("<img  src=a.gif alt='x y' ismap width=5/>text");
  RWCString found;
  unsigned long pos = 4;
  for (;;) {
    RWCString name;
    RWCString value;
    unsigned long valueStart = 0;
    const unsigned long before = pos;
    htmlFindNextAttribute_(text, name, value, pos, valueStart);
    if (name.length() == 0) break;
    found += name + "=" + value + ";";
    ASSERT_LT(before, pos);
  }
  EXPECT_EQ(bytesOf(found), "src=a.gif;alt=x y;ismap=;width=5/;");
}

// --- Large texts ------------------------------------------------------------------------------

constexpr std::size_t kLarge = 4U << 20;

TEST(HtmlFindNextAttribute, ReadsOnlyWhatItPasses) {
  // Reading each attribute to the end of the text would take hours.
  std::string page;
  while (page.size() < kLarge) page += "a=b ";
  RWCString text = stringOf(page);
  RWCString name;
  RWCString value;
  unsigned long pos = 0;
  unsigned long valueStart = 0;
  std::size_t count = 0;
  for (unsigned long before = kMax; pos != before; ++count) {
    before = pos;
    htmlFindNextAttribute_(text, name, value, pos, valueStart);
  }
  EXPECT_EQ(count, page.size() / 4 + 1);
}

TEST(HtmlGetStringValue, ReadsOneHugeValue) {
  const std::string content(kLarge, 'x');
  RWCString text = stringOf("='" + content + "'>");
  RWCString value;
  unsigned long valueStart = 0;
  unsigned long furthest = 0;
  EXPECT_TRUE(htmlGetStringValue(text, value, 0, valueStart, furthest, text.length()));
  EXPECT_EQ(bytesOf(value), content);
  EXPECT_EQ(furthest, kLarge + 2);
}

}  // namespace
}  // namespace pagescan::tests
