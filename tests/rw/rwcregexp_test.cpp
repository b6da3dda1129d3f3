#include "rw/rwcregexp.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "rw/rwcstring.h"
#include "support/allocation_count.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t npos = RWCString::npos;

struct MatchCase {
  Here here;
  std::string_view pattern;
  std::string_view text;
  std::size_t start;
  std::size_t position;
  std::size_t length;
};

void expectMatch(const MatchCase& row, Placement& place) {
  constexpr std::size_t kUntouched = 4711;
  const RWCRegexp pattern(place.cString(row.pattern));
  const RWCString& text = place.constString(row.text);
  std::size_t length = kUntouched;
  EXPECT_EQ(text.index(pattern, &length, row.start), row.position);
  EXPECT_EQ(length, row.position == npos ? kUntouched : row.length);
  EXPECT_EQ(text.index(pattern, row.start), row.position);
  EXPECT_EQ(text.index(pattern, nullptr, row.start), row.position);
  if (row.start != 0) return;
  const std::string_view matched =
      row.position == npos ? ""sv : row.text.substr(row.position, row.length);
  EXPECT_EQ(bytesOf(text(pattern)), matched);
}

constexpr MatchCase kLiterals[] = {
    //     pattern  text  start  position  length
    {HERE, "a", "a"sv, 0, 0, 1},        {HERE, "a", ""sv, 0, npos, 0},
    {HERE, "a", "ba"sv, 0, 1, 1},       {HERE, "a", "ba"sv, 2, npos, 0},
    {HERE, "a", "ba"sv, 3, npos, 0},    {HERE, "a", "ba"sv, npos, npos, 0},
    {HERE, "ab", "aab"sv, 0, 1, 2},     {HERE, "aab", "aaab"sv, 0, 1, 3},
    {HERE, "abc", "ab"sv, 0, npos, 0},  {HERE, "abcabd", "abcabcabd"sv, 0, 3, 6},
    {HERE, "a", "A"sv, 0, npos, 0},     {HERE, ".", "a."sv, 0, 1, 1},
    {HERE, "$", "a$"sv, 0, 1, 1},       {HERE, "(a|b)", "x(a|b)"sv, 0, 1, 5},
    {HERE, "\xC4", "x\xC4"sv, 0, 1, 1}, {HERE, "b", "a\0b"sv, 0, 2, 1},
    {HERE, "a^b", "a^b"sv, 0, 0, 3},    {HERE, "\\*", "a*"sv, 0, 1, 1},
    {HERE, "\\\\", "a\\"sv, 0, 1, 1},   {HERE, "\\t\\r\\n", "x\t\r\n"sv, 0, 1, 3},
    {HERE, "*a", "b*a"sv, 0, 1, 2},     {HERE, "", ""sv, 0, 0, 0},
    {HERE, "", "ab"sv, 1, 1, 0},        {HERE, "", "ab"sv, 2, 2, 0},
    {HERE, "", "ab"sv, 3, npos, 0},     {HERE, "\\t", "]e\\t=]"sv, 0, npos, 0},
    {HERE, "a\\", "xa\\"sv, 0, 1, 2},
};

TEST(RWCRegexp, MatchesLiteralBytes) {
  forEachPlacement(kLiterals, expectMatch);
}

constexpr MatchCase kClasses[] = {
    {HERE, "[a-c]", "xyb"sv, 0, 2, 1},
    {HERE, "[a-c]", "d`"sv, 0, npos, 0},
    {HERE, "[abc]", "xc"sv, 0, 1, 1},
    {HERE, "[a-cx-z]", "dwy"sv, 0, 2, 1},
    {HERE, "[a-zA-Z0-9]", "@[`{/:"sv, 0, npos, 0},
    {HERE, "[a-zA-Z0-9]", "@Z"sv, 0, 1, 1},
    {HERE, "[a-zA-Z0-9]", "\xC4\xFF\x80q"sv, 0, 3, 1},
    {HERE, "[\x80-\xFF]", "a\xC4"sv, 0, 1, 1},
    {HERE, "[-a]", "x-"sv, 0, 1, 1},
    {HERE, "[a-]", "x-"sv, 0, 1, 1},
    {HERE, "[*+?]", "a?"sv, 0, 1, 1},
    // The escapes of a class mean the control characters, as the characters themselves do.
    {HERE, "[\\t\\r\\n]", "trn\\\n"sv, 0, 4, 1},
    {HERE, "[\t\r\n]", "trn\\\n"sv, 0, 4, 1},
    {HERE, "[\\t]", "\t"sv, 0, 0, 1},
    {HERE, "[\\r]", "\r"sv, 0, 0, 1},
    {HERE, "[\\n]", "\n"sv, 0, 0, 1},
    {HERE, "a[bc]d", "abdacd"sv, 1, 3, 3},
    {HERE, "a[bc]d", "abd"sv, 0, 0, 3},
    // One that is not closed ends with the pattern.
    {HERE, "[ab", "xb"sv, 0, 1, 1},
    {HERE, "x[ab", "axb"sv, 0, 1, 2},
};

TEST(RWCRegexp, MatchesClasses) {
  forEachPlacement(kClasses, expectMatch);
}

constexpr MatchCase kRepetitions[] = {
    {HERE, "a*", "aaa"sv, 0, 0, 3},
    {HERE, "a*", "baa"sv, 0, 0, 0},
    {HERE, "a*", ""sv, 0, 0, 0},
    {HERE, "a*", "b"sv, 1, 1, 0},
    {HERE, "a+", "baab"sv, 0, 1, 2},
    {HERE, "a+", "b"sv, 0, npos, 0},
    {HERE, "a?", "aa"sv, 0, 0, 1},
    {HERE, "a?", "ba"sv, 0, 0, 0},
    {HERE, "ba*", "abaaab"sv, 0, 1, 4},
    {HERE, "a*b", "aaab"sv, 0, 0, 4},
    {HERE, "a*a", "aaa"sv, 0, 0, 3},
    {HERE, "a+a", "aaa"sv, 0, 0, 3},
    {HERE, "a?a", "aa"sv, 0, 0, 2},
    {HERE, "a?a", "a"sv, 0, 0, 1},
    {HERE, "a*ab", "aaab"sv, 0, 0, 4},
    {HERE, "a?b?c", "xbc"sv, 0, 1, 2},
    {HERE, "[ab]*a", "ababb"sv, 0, 0, 3},
    {HERE, "[ab]*c", "ababab"sv, 0, npos, 0},
    {HERE, "a*b*c*", "aabbcc"sv, 0, 0, 6},
    // The leftmost match counts, not the longest of all.
    {HERE, "a+", "abaaa"sv, 0, 0, 1},
    {HERE, "x?a+", "a xaaa"sv, 0, 0, 1},
};

TEST(RWCRegexp, RepeatsTheLongestRun) {
  forEachPlacement(kRepetitions, expectMatch);
}

constexpr MatchCase kAnchors[] = {
    {HERE, "^a", "ab"sv, 0, 0, 1},
    {HERE, "^a", "ba"sv, 0, npos, 0},
    {HERE, "^", ""sv, 0, 0, 0},
    {HERE, "^a*", "baa"sv, 0, 0, 0},
    {HERE, "^a*b", "aab"sv, 0, 0, 3},
    {HERE, "\\^a", "b^a"sv, 0, 1, 2},
    {HERE, "^a", "aa"sv, 1, npos, 0},
    {HERE, "^", "a"sv, 1, npos, 0},
    // What may be left out looks like what follows it.
    {HERE, "^a*ab", "aaab"sv, 0, 0, 4},
    {HERE, "^a*ab", "baab"sv, 0, npos, 0},
    {HERE, "^a*ab", "acab"sv, 0, npos, 0},
    {HERE, "^a*a", "aab"sv, 0, 0, 2},
    {HERE, "^ba*ab", "baaab"sv, 0, 0, 5},
    {HERE, "^a?ab", "aab"sv, 0, 0, 3},
    {HERE, "^a*ab", "aab"sv, 1, npos, 0},
};

TEST(RWCRegexp, HoldsAnAnchorToTheStart) {
  forEachPlacement(kAnchors, expectMatch);
}

// The library's own patterns.
constexpr const char* kStop = "[>\t\r\n ]";
constexpr const char* kOnload = "[oO][nN][lL][oO][aA][dD][\n\r\t ]*=";
constexpr const char* kScheme = "^[a-zA-Z]+:";
constexpr const char* kReference = "&#?[a-zA-Z0-9]+;";

constexpr MatchCase kOwnPatterns[] = {
    {HERE, kStop, "ab>"sv, 0, 2, 1},
    {HERE, kStop, "ab\tc"sv, 0, 2, 1},
    {HERE, kStop, "ab\rc"sv, 0, 2, 1},
    {HERE, kStop, "ab\nc"sv, 0, 2, 1},
    {HERE, kStop, "ab c>"sv, 3, 4, 1},
    {HERE, kStop, "ab\f\v<\0"sv, 0, npos, 0},
    {HERE, kOnload, "<body onload=x>"sv, 0, 6, 7},
    {HERE, kOnload, "ONload \t\r\n = x"sv, 0, 0, 12},
    {HERE, kOnload, "onloadx onLOAD="sv, 0, 8, 7},
    {HERE, kOnload, "oonload="sv, 0, 1, 7},
    {HERE, kOnload, "ononload="sv, 0, 2, 7},
    {HERE, kOnload, "onload\v="sv, 0, npos, 0},
    {HERE, kOnload, "onload    "sv, 0, npos, 0},
    {HERE, kScheme, "http://h"sv, 0, 0, 5},
    {HERE, kScheme, "HtTpS:"sv, 0, 0, 6},
    {HERE, kScheme, "1abc:x"sv, 0, npos, 0},
    {HERE, kScheme, "svn+ssh://h"sv, 0, npos, 0},
    {HERE, kScheme, ":x"sv, 0, npos, 0},
    {HERE, kScheme, "page.html"sv, 0, npos, 0},
    {HERE, kScheme, "\xE4:x"sv, 0, npos, 0},
    {HERE, kReference, "AT&amp;T"sv, 0, 2, 5},
    {HERE, kReference, "&#65;"sv, 0, 0, 5},
    {HERE, kReference, "&amp &lt;"sv, 0, 5, 4},
    {HERE, kReference, "&&lt;"sv, 0, 1, 4},
    {HERE, kReference, "&#;"sv, 0, npos, 0},
    {HERE, kReference, "&;"sv, 0, npos, 0},
    {HERE, kReference, "&##1;"sv, 0, npos, 0},
    {HERE, kReference, "&#&#1;"sv, 0, 2, 4},
    {HERE, kReference, "&a\0;"sv, 0, npos, 0},
    {HERE, kReference, "&lt;&gt;"sv, 1, 4, 4},
};

TEST(RWCRegexp, ServesTheLibrarysPatterns) {
  forEachPlacement(kOwnPatterns, expectMatch);
}

TEST(RWCRegexp, TakesANullPatternForAnEmptyOne) {
  std::size_t length = 1;
  EXPECT_EQ(RWCString("ab").index(RWCRegexp(nullptr), &length, 1), 1U);
  EXPECT_EQ(length, 0U);
}

TEST(RWCRegexp, CopiesMatchAlike) {
  const RWCString text("xaab");
  RWCRegexp original("a+");
  const RWCRegexp copy(original);
  RWCRegexp moved(std::move(original));
  RWCRegexp assigned("b");
  assigned = copy;
  EXPECT_EQ(bytesOf(text(copy)), "aa");
  EXPECT_EQ(bytesOf(text(moved)), "aa");
  EXPECT_EQ(bytesOf(text(assigned)), "aa");
  moved = RWCRegexp("b");
  EXPECT_EQ(bytesOf(text(moved)), "b");
  EXPECT_EQ(bytesOf(text(assigned)), "aa");
}

// Texts on which trying every start anew would take hours.
TEST(RWCRegexp, EndsOnLongHostileTexts) {
  constexpr std::size_t kLength = 2U << 20;
  const auto expectNone = [](const char* pattern, const std::string& text) {
    EXPECT_EQ(stringOf(text).index(RWCRegexp(pattern)), npos) << pattern;
  };
  expectNone(kReference, "&" + std::string(kLength, 'a'));
  expectNone(kReference, std::string(kLength, '&'));
  expectNone("a*b", std::string(kLength, 'a'));
  expectNone("[ab]*a*b*c", std::string(kLength, 'a'));
  expectNone("a+a+a+b", std::string(kLength, 'a'));
  expectNone(kScheme, std::string(kLength, 'a'));
  std::string blanks;
  while (blanks.size() < kLength) blanks += "onload" + std::string(1000, ' ');
  expectNone(kOnload, blanks);
  expectNone(kOnload, "onload" + std::string(kLength, ' '));
}

TEST(RWCRegexp, FindsOneMatchFarOut) {
  std::string ampersands(1U << 20, '&');
  const RWCString text = stringOf(ampersands.append("&lt;"));
  std::size_t length = 0;
  EXPECT_EQ(text.index(RWCRegexp(kReference), &length, 0), 1U << 20);
  EXPECT_EQ(length, 4U);
}

}  // namespace
}  // namespace pagescan::tests
