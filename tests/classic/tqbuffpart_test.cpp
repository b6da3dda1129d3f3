#include "tqbuffpart.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>

#include "reference/classic/tqbuffpart.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

int signOf(int number) {
  return (number > 0) - (number < 0);
}

std::string_view heldBy(CTQBuffPart& part) {
  const char* text = nullptr;
  int length = -1;
  part.getPart(&text, &length);
  return {text, static_cast<std::size_t>(length)};
}

// --- Comparing --------------------------------------------------------------------------------

struct CompareCase {
  Here here;
  std::string_view part;
  std::string_view text;
  int exact;  // the sign of the result
  int folded;
};
constexpr CompareCase kCompare[] = {
    {HERE, "abc", "abcd", -1, -1},
    {HERE, "abc", "ab", 1, 1},
    {HERE, "abc", "abc", 0, 0},
    {HERE, "abc", "ABC", 1, 0},
    {HERE, "ABC", "abc", -1, 0},
    {HERE, "abc", "ABCD", 1, -1},
    {HERE, "abd", "abcd", 1, 1},
    {HERE, "abb", "abcd", -1, -1},
    {HERE, "", "", 0, 0},
    {HERE, "", "a", -1, -1},
    {HERE, "a", "", 1, 1},
    // Folding is to lower case: "_" sorts before the letters.
    {HERE, "_", "b", -1, -1},
    {HERE, "_", "B", 1, -1},
    // Bytes are unsigned; only the ASCII letters are folded.
    {HERE, "\xe9", "a", 1, 1},
    {HERE, "\xe9", "\xc9", 1, 1},
    {HERE, "I", "i", -1, 0},
    // Nothing after a NUL is compared, but the length counts.
    {HERE, "a\0b"sv, "a", 1, 1},
    {HERE, "a\0b"sv, "a\0c"sv, 0, 0},
    {HERE, "a\0b"sv, "a\0cd"sv, -1, -1},
    {HERE, "a", "a\0b"sv, -1, -1},
};

TEST(CTQBuffPart, ComparesItsSlice) {
  forEachPlacement(kCompare, [](const CompareCase& row, Placement& place) {
    const std::string_view bytes = place.bytes(row.part);
    const std::string_view text = place.bytes(row.text);
    const int length = static_cast<int>(text.size());
    CTQBuffPart part;
    part.setPart(bytes.data(), 0, static_cast<int>(bytes.size()));
    EXPECT_EQ(signOf(part.compare(text.data(), length, false)), row.exact);
    EXPECT_EQ(signOf(part.compare(text.data(), length, true)), row.folded);
    EXPECT_EQ(signOf(part.compare(place.string(row.text), false)), row.exact);
    EXPECT_EQ(signOf(part.compare(place.string(row.text), true)), row.folded);
    CTQBuffPart other;
    other.setPart(text.data(), 0, length);
    EXPECT_EQ(signOf(part.compare(other, false)), row.exact);
    EXPECT_EQ(signOf(part.compare(other, true)), row.folded);
  });
}

TEST(CTQBuffPart, ComparesWithATextUpToItsNul) {
  forEachPlacement(kCompare, [](const CompareCase& row, Placement& place) {
    if (row.text.find('\0') != row.text.npos) return;
    CTQBuffPart part;
    part.setPart(place.bytes(row.part).data(), 0, static_cast<int>(row.part.size()));
    EXPECT_EQ(signOf(part.compare(place.cString(row.text), false)), row.exact);
    EXPECT_EQ(signOf(part.compare(place.cString(row.text), true)), row.folded);
  });
}

TEST(CTQBuffPart, GivesMinusOneAndOneForPrefixes) {
  CTQBuffPart part;
  part.setPart("abc", 0, 3);
  EXPECT_EQ(part.compare("abcd", false), -1);
  EXPECT_EQ(part.compare("ab", false), 1);
}

TEST(CTQBuffPart, ComparesWithItself) {
  CTQBuffPart part;
  EXPECT_EQ(part.compare(part, false), 0);
  part.setPart("abc", 1, 2);
  EXPECT_EQ(part.compare(part, true), 0);
}

TEST(CTQBuffPart, ComparesAsItsTwinDoesForSmallTexts) {
  forEachText({"a", "B", "b", "_", "\0"sv}, 3, [](const std::string& held) {
    forEachText({"a", "A", "b", "_", "\0"sv}, 3, [&](const std::string& text) {
      CTQBuffPart part;
      part.setPart(held.data(), 0, static_cast<int>(held.size()));
      for (const bool ignoreCase : {false, true}) {
        ASSERT_EQ(signOf(part.compare(text.data(), static_cast<int>(text.size()), ignoreCase)),
                  signOf(reference::comparePart(held, text, ignoreCase)))
            << testing::PrintToString(held) << " " << testing::PrintToString(text);
      }
    });
  });
}

struct FoldedCase {
  Here here;
  std::string_view a;
  std::string_view b;
  std::size_t count;
  int sign;
};
constexpr FoldedCase kFolded[] = {
    {HERE, "abc", "ABD", 2, 0},  {HERE, "abc", "ABD", 3, -1}, {HERE, "abc", "ABC", 100, 0},
    {HERE, "abc", "AB", 100, 1}, {HERE, "", "", 0, 0},        {HERE, "x", "y", 0, 0},
    {HERE, "\xff", "a", 1, 1},   {HERE, "[", "a", 1, -1},     {HERE, "[", "A", 1, -1},
};

TEST(StrnicmpOfTheSlices, ComparesAsTheStandardOneDoes) {
  forEachPlacement(kFolded, [](const FoldedCase& row, Placement& place) {
    const char* a = place.cString(row.a);
    const char* b = place.cString(row.b);
    EXPECT_EQ(signOf(nTarn::g_strnicmp(a, b, row.count)), row.sign);
    EXPECT_EQ(signOf(nTarn::g_strnicmp(b, a, row.count)), -row.sign);
    EXPECT_EQ(signOf(nTarn::g_strnicmp(a, b, row.count)), signOf(strncasecmp(a, b, row.count)));
  });
}

// --- What a part holds ------------------------------------------------------------------------

TEST(CTQBuffPart, BeginsEmpty) {
  CTQBuffPart part;
  EXPECT_EQ(heldBy(part), "");
  EXPECT_EQ(heldBy(part).data(), nullptr);
  EXPECT_EQ(part.compare("", false), 0);
  EXPECT_EQ(part.compare("a", false), -1);
  EXPECT_STREQ(part.getPart(), "");
}

TEST(CTQBuffPart, BorrowsASlice) {
  const char* text = "0123456789";
  CTQBuffPart part;
  part.setPart(text, 3, 4);
  EXPECT_EQ(heldBy(part), "3456");
  EXPECT_EQ(heldBy(part).data(), text + 3);
}

TEST(CTQBuffPart, MakesOneCopyWithAClosingNul) {
  const char* text = "0123456789";
  CTQBuffPart part;
  part.setPart(text, 3, 4);
  char* copy = part.getPart();
  EXPECT_STREQ(copy, "3456");
  EXPECT_EQ(part.getPart(), copy);
  EXPECT_EQ(heldBy(part).data(), copy);
  EXPECT_EQ(heldBy(part), "3456");
  // The copy is what counts from then on.
  copy[0] = 'x';
  EXPECT_EQ(part.compare("x456", false), 0);
  part.setPart(text, 0, 2);
  EXPECT_EQ(heldBy(part), "01");
  EXPECT_EQ(heldBy(part).data(), text);
}

struct CopyCase {
  Here here;
  std::string_view text;
};
constexpr CopyCase kCopies[] = {
    {HERE, ""}, {HERE, "a"}, {HERE, "a\0b"sv}, {HERE, "\0\0a"sv}, {HERE, "abc\0\xff"sv}};

TEST(CTQBuffPart, FillsItsCopyWithZerosFromTheFirstNul) {
  forEachPlacement(kCopies, [](const CopyCase& row, Placement& place) {
    const std::string_view bytes = place.bytes(row.text);
    CTQBuffPart part;
    part.setPart(bytes.data(), 0, static_cast<int>(bytes.size()));
    const std::string_view copy(part.getPart(), bytes.size() + 1);
    EXPECT_EQ(copy, reference::copyOfPart(std::string(row.text)) + '\0');
    EXPECT_EQ(heldBy(part).size(), row.text.size());
  });
}

TEST(CTQBuffPart, TakesACopyOfAText) {
  CTQBuffPart part;
  part.setPart("something else", 5, 3);
  std::string text = "xy";
  part.updatePart(text.c_str());
  text = "ab";
  EXPECT_EQ(heldBy(part), "xy");
  EXPECT_STREQ(part.getPart(), "xy");
  part.updatePart("");
  EXPECT_EQ(heldBy(part), "");
}

TEST(CTQBuffPart, TakesACopyOfItsOwnText) {
  CTQBuffPart part;
  part.updatePart("abc");
  part.updatePart(part.getPart() + 1);
  EXPECT_EQ(heldBy(part), "bc");
}

TEST(CTQBuffPart, IsEmptyAfterReset) {
  CTQBuffPart part;
  part.updatePart("xy");
  part.resetPart();
  EXPECT_EQ(heldBy(part), "");
  EXPECT_EQ(heldBy(part).data(), nullptr);
  part.setPart("xy", 0, 2);
  part.resetPart();
  EXPECT_EQ(heldBy(part).data(), nullptr);
}

TEST(CTQBuffPart, IsACollectableThatEqualsItselfAlone) {
  CTQBuffPart part;
  const CTQBuffPart other;
  EXPECT_TRUE(part.isEqual(&part));
  EXPECT_FALSE(part.isEqual(&other));
  EXPECT_EQ(part.isA(), 0);
}

}  // namespace
}  // namespace pagescan::tests
