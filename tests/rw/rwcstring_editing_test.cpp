#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include "rw/rwcstring.h"
#include "support/allocation_count.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t npos = RWCString::npos;

constexpr std::string_view kLong = "a text that is certainly too long to stand in the object";

struct AppendCase {
  Here here;
  std::string_view text;
  std::string_view more;
  std::string_view expected;
};
constexpr AppendCase kAppends[] = {
    {HERE, ""sv, ""sv, ""sv},
    {HERE, "a"sv, ""sv, "a"sv},
    {HERE, ""sv, "b"sv, "b"sv},
    {HERE, "a\0"sv, "\0b"sv, "a\0\0b"sv},
    {HERE, "fourteen bytes"sv, "1"sv, "fourteen bytes1"sv},
    {HERE, "fifteen bytes.."sv, "1"sv, "fifteen bytes..1"sv},
    {HERE, "sixteen bytes..."sv, "17"sv, "sixteen bytes...17"sv},
};

TEST(RWCStringAppend, AddsBytesAtTheEnd) {
  forEachPlacement(kAppends, [](const AppendCase& row, Placement& place) {
    const std::string_view more = place.bytes(row.more);
    EXPECT_EQ(bytesOf(place.string(row.text).append(more.data(), more.size())), row.expected);
    EXPECT_EQ(bytesOf(place.string(row.text).append(place.string(row.more))), row.expected);
    EXPECT_EQ(bytesOf(place.string(row.text) += place.string(row.more)), row.expected);
    EXPECT_EQ(bytesOf(place.string(row.text) + place.string(row.more)), row.expected);
    if (row.more.size() == 1) {
      EXPECT_EQ(bytesOf(place.string(row.text).append(row.more[0])), row.expected);
      EXPECT_EQ(bytesOf(place.string(row.text) += row.more[0]), row.expected);
    }
    if (row.more.find('\0') != std::string_view::npos) return;
    EXPECT_EQ(bytesOf(place.string(row.text).append(place.cString(row.more))), row.expected);
    EXPECT_EQ(bytesOf(place.string(row.text) += place.cString(row.more)), row.expected);
    EXPECT_EQ(bytesOf(place.string(row.text) + place.cString(row.more)), row.expected);
  });
}

TEST(RWCStringAppend, OfNothingKeepsBytesShared) {
  RWCString text = stringOf(kLong);
  const RWCString sharer(text);
  text.append("").append(nullptr, 0).append(RWCString());
  EXPECT_EQ(text.data(), sharer.data());
}

TEST(RWCStringAppend, TakesNullForNothing) {
  RWCString text("a");
  text.append(static_cast<const char*>(nullptr)).append(nullptr, 0);
  text += static_cast<const char*>(nullptr);
  text.insert(0, static_cast<const char*>(nullptr)).insert(1, nullptr, 0);
  EXPECT_EQ(bytesOf(text), "a");
}

TEST(RWCStringConcatenation, KeepsTheOrderOfItsOperands) {
  const RWCString text("ab");
  EXPECT_EQ(bytesOf(text + "cd"), "abcd");
  EXPECT_EQ(bytesOf("cd" + text), "cdab");
  EXPECT_EQ(bytesOf(text + text), "abab");
}

TEST(RWCStringConcatenation, CopiesWhenAnOperandIsEmpty) {
  const RWCString text = stringOf(kLong);
  RWCString first;
  RWCString second;
  RWCString third;
  EXPECT_EQ(allocationsOf([&] {
              first = text + "";
              second = "" + text;
              third = text + RWCString();
            }),
            0U);
  EXPECT_EQ(first.data(), text.data());
  EXPECT_EQ(second.data(), text.data());
  EXPECT_EQ(third.data(), text.data());
  EXPECT_EQ(bytesOf(RWCString() + "x"), "x");
  EXPECT_EQ(bytesOf("x" + RWCString()), "x");
  EXPECT_EQ(bytesOf(RWCString() + ""), "");
}

TEST(RWCStringConcatenation, AllocatesOnce) {
  const RWCString text = stringOf(kLong);
  EXPECT_EQ(allocationsOf([&] { RWCString made(text + "tail"); }), 1U);
  EXPECT_EQ(allocationsOf([&] { RWCString made("head" + text); }), 1U);
  EXPECT_EQ(allocationsOf([&] { RWCString made(text + text); }), 1U);
}

struct InsertCase {
  Here here;
  std::string_view text;
  std::size_t position;
  std::string_view more;
  std::string_view expected;
};
constexpr InsertCase kInserts[] = {
    {HERE, ""sv, 0, ""sv, ""sv},
    {HERE, ""sv, 0, "ab"sv, "ab"sv},
    {HERE, "xy"sv, 0, "ab"sv, "abxy"sv},
    {HERE, "xy"sv, 1, "ab"sv, "xaby"sv},
    {HERE, "xy"sv, 2, "ab"sv, "xyab"sv},
    {HERE, "x\0y"sv, 1, "\0"sv, "x\0\0y"sv},
    {HERE, "fourteen bytes"sv, 8, "_"sv, "fourteen_ bytes"sv},
    {HERE, "fifteen bytes.."sv, 7, "_"sv, "fifteen_ bytes.."sv},
    {HERE, "sixteen bytes..."sv, 16, "and more"sv, "sixteen bytes...and more"sv},
};

TEST(RWCStringInsert, PutsBytesAtAPosition) {
  forEachPlacement(kInserts, [](const InsertCase& row, Placement& place) {
    const std::string_view more = place.bytes(row.more);
    RWCString& text = place.string(row.text);
    EXPECT_EQ(bytesOf(text.insert(row.position, more.data(), more.size())), row.expected);
    EXPECT_EQ(bytesOf(place.string(row.text).insert(row.position, place.string(row.more))),
              row.expected);
    if (row.more.find('\0') != std::string_view::npos) return;
    EXPECT_EQ(bytesOf(place.string(row.text).insert(row.position, place.cString(row.more))),
              row.expected);
  });
}

struct RemoveCase {
  Here here;
  std::string_view text;
  std::size_t position;
  std::size_t count;
  std::string_view expected;
};
constexpr RemoveCase kRemovals[] = {
    {HERE, ""sv, 0, 0, ""sv},
    {HERE, ""sv, 0, 5, ""sv},
    {HERE, "abc"sv, 0, 0, "abc"sv},
    {HERE, "abc"sv, 0, 1, "bc"sv},
    {HERE, "abc"sv, 1, 1, "ac"sv},
    {HERE, "abc"sv, 2, 1, "ab"sv},
    {HERE, "abc"sv, 0, 3, ""sv},
    // The count is cut to what is left, however large it is.
    {HERE, "abc"sv, 1, 3, "a"sv},
    {HERE, "abc"sv, 1, npos, "a"sv},
    {HERE, "abc"sv, 1, npos - 1, "a"sv},
    {HERE, "abc"sv, 3, 0, "abc"sv},
    {HERE, "abc"sv, 3, npos, "abc"sv},
    {HERE, "a\0b\0"sv, 1, 1, "ab\0"sv},
    {HERE, "seventeen bytes.."sv, 3, 6, "sev bytes.."sv},
    {HERE, "a text that is certainly too long"sv, 6, 5, "a text is certainly too long"sv},
};

TEST(RWCStringRemove, CutsTheCountToWhatIsLeft) {
  forEachPlacement(kRemovals, [](const RemoveCase& row, Placement& place) {
    EXPECT_EQ(bytesOf(place.string(row.text).remove(row.position, row.count)), row.expected);
    RWCString& shared = place.string(row.text);
    const RWCString keeper(shared);
    EXPECT_EQ(bytesOf(shared.remove(row.position, row.count)), row.expected);
    EXPECT_EQ(bytesOf(keeper), row.text);
  });
}

TEST(RWCStringRemove, GoesToTheEndUnlessTold) {
  RWCString text("abc");
  EXPECT_EQ(bytesOf(text.remove(1)), "a");
}

struct BeyondCase {
  Here here;
  std::string_view text;
  std::size_t position;
};
constexpr BeyondCase kBeyond[] = {
    {HERE, ""sv, 1},
    {HERE, ""sv, npos},
    {HERE, "abc"sv, 4},
    {HERE, "abc"sv, npos},
    {HERE, "a text that is certainly too long"sv, 34},
    {HERE, "a text that is certainly too long"sv, npos - 1},
};

TEST(RWCStringEditing, ThrowsOutOfRangeBeyondTheLengthAndChangesNothing) {
  forEachPlacement(kBeyond, [](const BeyondCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    EXPECT_THROW(text.insert(row.position, "x"), std::out_of_range);
    EXPECT_THROW(text.insert(row.position, ""), std::out_of_range);
    EXPECT_THROW(text.insert(row.position, "x", 1), std::out_of_range);
    EXPECT_THROW(text.insert(row.position, RWCString("x")), std::out_of_range);
    EXPECT_THROW(text.insert(row.position, text), std::out_of_range);
    EXPECT_THROW(text.remove(row.position), std::out_of_range);
    EXPECT_THROW(text.remove(row.position, 0), std::out_of_range);
    EXPECT_EQ(bytesOf(text), row.text);
  });
}

TEST(RWCStringEditing, RefusesLengthsThatNoMemoryHolds) {
  // Volatile, as compilers warn of copies that they know to be this long.
  const volatile std::size_t huge = std::numeric_limits<std::size_t>::max();
  for (const std::string_view bytes : {"abc"sv, kLong}) {
    RWCString text = stringOf(bytes);
    EXPECT_THROW(text.resize(huge), std::bad_alloc);
    EXPECT_THROW(text.resize(huge / 2), std::bad_alloc);
    EXPECT_THROW(text.append("no byte is read", huge), std::bad_alloc);
    EXPECT_THROW(text.insert(1, "no byte is read", huge / 2), std::bad_alloc);
    EXPECT_EQ(bytesOf(text), bytes);
  }
}

struct ResizeCase {
  Here here;
  std::string_view text;
  std::size_t length;
  char fill;
  std::string_view expected;
};
constexpr ResizeCase kResizes[] = {
    {HERE, ""sv, 0, 'x', ""sv},
    {HERE, ""sv, 3, 'x', "xxx"sv},
    {HERE, "abc"sv, 0, 'x', ""sv},
    {HERE, "abc"sv, 2, 'x', "ab"sv},
    {HERE, "abc"sv, 3, 'x', "abc"sv},
    {HERE, "abc"sv, 5, ' ', "abc  "sv},
    {HERE, "abc"sv, 5, '\0', "abc\0\0"sv},
    {HERE, "fourteen bytes"sv, 16, '.', "fourteen bytes.."sv},
    {HERE, "sixteen bytes..."sv, 15, '.', "sixteen bytes.."sv},
    {HERE, "sixteen bytes..."sv, 20, '.', "sixteen bytes......."sv},
};

TEST(RWCStringResize, CutsOrFills) {
  forEachPlacement(kResizes, [](const ResizeCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const RWCString keeper(text);
    text.resize(row.length, row.fill);
    EXPECT_EQ(bytesOf(text), row.expected);
    EXPECT_EQ(text.data()[text.length()], '\0');
    EXPECT_EQ(bytesOf(keeper), row.text);
  });
}

TEST(RWCStringResize, FillsWithNulUnlessTold) {
  RWCString text("a");
  text.resize(3);
  EXPECT_EQ(bytesOf(text), "a\0\0"sv);
}

TEST(RWCStringSwap, AllocatesNothing) {
  RWCString text = stringOf(kLong);
  RWCString other("short");
  EXPECT_EQ(allocationsOf([&] { text.swap(other); }), 0U);
}

struct LowerCase {
  Here here;
  std::string_view text;
  std::string_view expected;
};
constexpr LowerCase kLowerings[] = {
    {HERE, ""sv, ""sv},
    {HERE, "abc"sv, "abc"sv},
    {HERE, "AbC"sv, "abc"sv},
    {HERE, "@AZ[`az{09"sv, "@az[`az{09"sv},
    {HERE, "\xC0\xDE\xFF\x80I\0I"sv, "\xC0\xDE\xFF\x80i\0i"sv},
    {HERE, "A TEXT THAT IS CERTAINLY TOO LONG"sv, "a text that is certainly too long"sv},
};

TEST(RWCStringToLower, LowersTheAsciiLettersAlone) {
  forEachPlacement(kLowerings, [](const LowerCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const RWCString keeper(text);
    text.toLower();
    EXPECT_EQ(bytesOf(text), row.expected);
    EXPECT_EQ(bytesOf(keeper), row.text);
  });
}

struct StripCase {
  Here here;
  std::string_view text;
  char byte;
  std::string_view leading;
  std::string_view trailing;
  std::string_view both;
};
constexpr StripCase kStrips[] = {
    //     text          byte  leading       trailing      both
    {HERE, ""sv, '"', ""sv, ""sv, ""sv},
    {HERE, "abc"sv, '"', "abc"sv, "abc"sv, "abc"sv},
    {HERE, "\"abc\""sv, '"', "abc\""sv, "\"abc"sv, "abc"sv},
    {HERE, "''a'b'''"sv, '\'', "a'b'''"sv, "''a'b"sv, "a'b"sv},
    {HERE, "\"\"\"\""sv, '"', ""sv, ""sv, ""sv},
    {HERE, "\""sv, '"', ""sv, ""sv, ""sv},
    {HERE, "'\"'"sv, '"', "'\"'"sv, "'\"'"sv, "'\"'"sv},
    {HERE, "\0a\0"sv, '\0', "a\0"sv, "\0a"sv, "a"sv},
    {HERE, "  a text that is certainly too long "sv, ' ', "a text that is certainly too long "sv,
     "  a text that is certainly too long"sv, "a text that is certainly too long"sv},
};

TEST(RWCStringStrip, TakesRunsOfOneByteFromTheEnds) {
  forEachPlacement(kStrips, [](const StripCase& row, Placement& place) {
    const RWCString& text = place.constString(row.text);
    EXPECT_EQ(bytesOf(text.strip(RWCString::leading, row.byte)), row.leading);
    EXPECT_EQ(bytesOf(text.strip(RWCString::trailing, row.byte)), row.trailing);
    EXPECT_EQ(bytesOf(text.strip(RWCString::both, row.byte)), row.both);
    EXPECT_EQ(bytesOf(text), row.text);
  });
}

TEST(RWCStringStrip, NumbersItsTypes) {
  EXPECT_EQ(RWCString::leading, 1);
  EXPECT_EQ(RWCString::trailing, 2);
  EXPECT_EQ(RWCString::both, 3);
  EXPECT_EQ(RWCString::exact, 0);
  EXPECT_EQ(RWCString::ignoreCase, 1);
  EXPECT_EQ(RWCString::npos, std::numeric_limits<std::size_t>::max());
}

}  // namespace
}  // namespace pagescan::tests
