#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

#include "rw/rwcregexp.h"
#include "rw/rwcstring.h"
#include "support/placement.h"
#include "support/texts.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t npos = RWCString::npos;

constexpr std::string_view kLong = "a text that is certainly too long to stand in the object";

struct SearchCase {
  Here here;
  std::string_view text;
  std::string_view pattern;
  std::size_t start;
  std::size_t exact;
  std::size_t ignoringCase;
};
constexpr SearchCase kSearches[] = {
    //     text                pattern     start  exact  ignoring case
    {HERE, ""sv, ""sv, 0, 0, 0},
    {HERE, ""sv, ""sv, 1, npos, npos},
    {HERE, ""sv, "a"sv, 0, npos, npos},
    {HERE, "abc"sv, ""sv, 0, 0, 0},
    {HERE, "abc"sv, ""sv, 2, 2, 2},
    {HERE, "abc"sv, ""sv, 3, 3, 3},
    {HERE, "abc"sv, ""sv, 4, npos, npos},
    {HERE, "abc"sv, ""sv, npos, npos, npos},
    {HERE, "abc"sv, "abc"sv, 0, 0, 0},
    {HERE, "abc"sv, "abc"sv, 1, npos, npos},
    {HERE, "abc"sv, "abcd"sv, 0, npos, npos},
    {HERE, "abc"sv, "c"sv, 2, 2, 2},
    {HERE, "abc"sv, "c"sv, 3, npos, npos},
    {HERE, "abc"sv, "c"sv, 99, npos, npos},
    {HERE, "abc"sv, "c"sv, npos, npos, npos},
    {HERE, "abcabc"sv, "bc"sv, 0, 1, 1},
    {HERE, "abcabc"sv, "bc"sv, 2, 4, 4},
    {HERE, "abcabc"sv, "bca"sv, 2, npos, npos},
    {HERE, "aab"sv, "ab"sv, 0, 1, 1},
    {HERE, "aaab"sv, "aab"sv, 0, 1, 1},
    {HERE, "<ScRiPt>"sv, "<SCRIPT"sv, 0, npos, 0},
    {HERE, "xABy"sv, "aB"sv, 0, npos, 1},
    {HERE, "xABy"sv, "AB"sv, 0, 1, 1},
    // Only the letters fold: the neighbours of their ranges and the upper half do not.
    {HERE, "@[`{"sv, "`"sv, 0, 2, 2},
    {HERE, "@"sv, "`"sv, 0, npos, npos},
    {HERE, "["sv, "{"sv, 0, npos, npos},
    {HERE, "\xC4"sv, "\xE4"sv, 0, npos, npos},
    {HERE, "\xE4"sv, "\xE4"sv, 0, 0, 0},
    {HERE, "zZ"sv, "ZZ"sv, 0, npos, 0},
    // NUL bytes are ordinary bytes.
    {HERE, "a\0b"sv, "b"sv, 0, 2, 2},
    {HERE, "a\0b\0B"sv, "\0B"sv, 0, 3, 1},
    {HERE, "a\0b"sv, "\0"sv, 0, 1, 1},
    {HERE, "a\0b"sv, "\0"sv, 2, npos, npos},
    {HERE, "0123456789012345678901234567890123456789-->x"sv, "-->"sv, 0, 40, 40},
    {HERE, "0123456789012345678901234567890123456789--X"sv, "--x"sv, 0, npos, 40},
    {HERE, "0123456789012345678901234567890123456789--"sv, "-->"sv, 0, npos, npos},
};

TEST(RWCStringIndex, FindsTheFirstOccurrenceAtOrAfterTheStart) {
  forEachPlacement(kSearches, [](const SearchCase& row, Placement& place) {
    const RWCString& text = place.constString(row.text);
    const RWCString& pattern = place.constString(row.pattern);
    EXPECT_EQ(text.index(pattern, row.start), row.exact);
    EXPECT_EQ(text.index(pattern, row.start, RWCString::exact), row.exact);
    EXPECT_EQ(text.index(pattern, row.start, RWCString::ignoreCase), row.ignoringCase);
    if (row.pattern.size() == 1) {
      EXPECT_EQ(text.index(row.pattern[0], row.start), row.exact);
    }
    if (row.pattern.find('\0') != std::string_view::npos) return;
    EXPECT_EQ(text.index(place.cString(row.pattern), row.start), row.exact);
    EXPECT_EQ(text.index(place.cString(row.pattern), row.start, RWCString::ignoreCase),
              row.ignoringCase);
  });
}

TEST(RWCStringIndex, StartsAtZeroUnlessTold) {
  const RWCString text("abcabc");
  EXPECT_EQ(text.index("c"), 2U);
  EXPECT_EQ(text.index('c'), 2U);
  EXPECT_EQ(text.index(RWCString("ca")), 2U);
  EXPECT_EQ(text.index(RWCRegexp("[c]")), 2U);
}

TEST(RWCStringIndex, TakesANullPatternForAnEmptyOne) {
  const RWCString text("abc");
  EXPECT_EQ(text.index(static_cast<const char*>(nullptr), 2), 2U);
  EXPECT_EQ(text.index(static_cast<const char*>(nullptr), 4), npos);
}

// Every pair of bytes: equal when they are the same letter, else only when they are the same.
TEST(RWCStringIndex, FoldsTheAsciiLettersAlone) {
  const auto folded = [](int c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
  for (int a = 0; a < 256; ++a) {
    const char byte = static_cast<char>(a);
    const RWCString text(&byte, 1);
    for (int b = 0; b < 256; ++b) {
      const char other = static_cast<char>(b);
      const RWCString pattern(&other, 1);
      const bool same = folded(a) == folded(b);
      ASSERT_EQ(text.index(pattern, 0, RWCString::ignoreCase) == 0, same) << a << " " << b;
      ASSERT_EQ(text.compareTo(pattern, RWCString::ignoreCase) == 0, same) << a << " " << b;
    }
  }
}

TEST(RWCStringIndex, FindsPatternsOfEveryLengthAtEveryPlace) {
  for (std::size_t textLength = 0; textLength <= 70; ++textLength) {
    for (std::size_t at = 0; at <= textLength; ++at) {
      for (const std::size_t length : {1U, 2U, 3U, 7U, 9U, 17U}) {
        if (at + length > textLength) continue;
        Placement place(Placement::kBeforeGuardPage);
        std::string bytes(textLength, 'a');
        bytes.replace(at, length, std::string(length - 1, 'a') + "B");
        const std::string pattern = std::string(length - 1, 'a') + "b";
        const RWCString& text = place.constString(bytes);
        ASSERT_EQ(text.index(pattern.c_str(), 0, RWCString::ignoreCase), at);
        ASSERT_EQ(text.index(pattern.c_str()), npos);
        ASSERT_EQ(text.index(pattern.c_str(), at + 1, RWCString::ignoreCase), npos);
      }
    }
  }
}

std::string inUpperCase(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  return text;
}

// Letters in lower case alone, so that the standard library's search tells the answers.
void expectSearches(const std::string& bytes, const std::string& pattern) {
  Placement place(Placement::kBeforeGuardPage);
  const RWCString& text = place.constString(bytes);
  const RWCString& searched = place.constString(pattern);
  const RWCString& upper = place.constString(inUpperCase(pattern));
  for (std::size_t start = 0; start <= bytes.size(); start += 7) {
    const std::size_t expected = bytes.find(pattern, start);
    ASSERT_EQ(text.index(searched, start), expected) << bytes;
    ASSERT_EQ(text.index(upper, start, RWCString::ignoreCase), expected) << bytes;
  }
}

// Patterns with and without a period, and texts that hold every beginning and end of them.
TEST(RWCStringIndex, FindsLongPatterns) {
  const std::string patterns[] = {
      std::string(40, 'a'),
      std::string(39, 'a') + "b",
      "b" + std::string(39, 'a'),
      repeated("ab", 20),
      repeated("ba", 20) + "c",
      repeated("aab", 14) + "a",
      "a" + repeated("aba", 13),
      repeated("abc", 7) + "x" + repeated("abc", 7),
      repeated("abcdefghij", 5),
      repeated("cba", 12),
      "the needle in this haystack is a long one",
  };
  for (const std::string& pattern : patterns) {
    for (std::size_t cut = 0; cut <= pattern.size(); ++cut) {
      const std::string head = pattern.substr(0, cut);
      const std::string tail = pattern.substr(cut);
      expectSearches(head + "-" + tail, pattern);
      expectSearches(head + "-" + tail + pattern, pattern);
      expectSearches(tail + pattern + head, pattern);
      expectSearches(head + pattern, pattern);
      expectSearches(tail + head, pattern);
    }
  }
}

// --- Comparing --------------------------------------------------------------------------------

struct OrderCase {
  Here here;
  std::string_view a;
  std::string_view b;
  int exact;
  int ignoringCase;
};
constexpr OrderCase kOrders[] = {
    {HERE, ""sv, ""sv, 0, 0},           {HERE, ""sv, "a"sv, -1, -1},
    {HERE, "a"sv, "ab"sv, -1, -1},      {HERE, "a"sv, "b"sv, -1, -1},
    {HERE, "A"sv, "a"sv, -1, 0},        {HERE, "B"sv, "a"sv, -1, 1},
    {HERE, "abC"sv, "aBc"sv, 1, 0},     {HERE, "_"sv, "B"sv, 1, -1},  // folding is to lower case
    {HERE, "a"sv, "\xE4"sv, -1, -1},    {HERE, "\xC4"sv, "\xE4"sv, -1, -1},
    {HERE, "a\0b"sv, "a\0c"sv, -1, -1}, {HERE, "a\0"sv, "a"sv, 1, 1},
};

int sign(int value) {
  return (value > 0) - (value < 0);
}

TEST(RWCStringCompareTo, SortsByUnsignedBytes) {
  forEachPlacement(kOrders, [](const OrderCase& row, Placement& place) {
    const RWCString& a = place.constString(row.a);
    const RWCString& b = place.constString(row.b);
    EXPECT_EQ(sign(a.compareTo(b)), row.exact);
    EXPECT_EQ(sign(b.compareTo(a)), -row.exact);
    EXPECT_EQ(sign(a.compareTo(b, RWCString::ignoreCase)), row.ignoringCase);
    EXPECT_EQ(sign(b.compareTo(a, RWCString::ignoreCase)), -row.ignoringCase);
    EXPECT_EQ(a == b, row.exact == 0);
    EXPECT_EQ(a != b, row.exact != 0);
    EXPECT_EQ(a < b, row.exact < 0);
    if (a == b) {
      EXPECT_EQ(a.hash(), b.hash());
    }
    if (row.b.find('\0') != std::string_view::npos) return;
    EXPECT_EQ(sign(a.compareTo(place.cString(row.b))), row.exact);
    EXPECT_EQ(sign(a.compareTo(place.cString(row.b), RWCString::ignoreCase)), row.ignoringCase);
    EXPECT_EQ(a == place.cString(row.b), row.exact == 0);
    EXPECT_EQ(place.cString(row.b) != a, row.exact != 0);
  });
}

TEST(RWCStringCompareTo, HashesEqualTextsOfDifferentStorageAlike) {
  RWCString cut = stringOf(std::string(kLong) + "tail");
  cut.remove(kLong.size());
  EXPECT_EQ(cut.hash(), stringOf(kLong).hash());
  cut.remove(3);
  EXPECT_EQ(cut.hash(), RWCString("a t").hash());
}

}  // namespace
}  // namespace pagescan::tests
