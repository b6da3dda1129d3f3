#include "rw/rwcstring.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "rw/rwbounds.h"
#include "rw/rwcregexp.h"
#include "support/allocation_count.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t npos = RWCString::npos;

// Texts around the lengths at which storage changes its kind.
struct TextCase {
  Here here;
  std::string_view text;
};
constexpr TextCase kTexts[] = {
    {HERE, ""sv},
    {HERE, "a"sv},
    {HERE, "\0"sv},
    {HERE, "a\0b"sv},
    {HERE, "fourteen bytes"sv},
    {HERE, "fifteen bytes.."sv},
    {HERE, "sixteen bytes..."sv},
    {HERE, "seventeen bytes.."sv},
    {HERE, "a text that is certainly too long to stand in the object\0with a NUL"sv},
    {HERE, "\x80\xff and other bytes that are negative as signed characters"sv},
};

constexpr std::string_view kLong = "a text that is certainly too long to stand in the object";

// --- Construction and reading -----------------------------------------------------------------

TEST(RWCString, IsBuiltFromPointerAndLength) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    const std::string_view source = place.bytes(row.text);
    const RWCString text(source.data(), source.size());
    EXPECT_EQ(bytesOf(text), row.text);
    EXPECT_EQ(text.length(), row.text.size());
    EXPECT_EQ(text.data()[text.length()], '\0');
  });
}

TEST(RWCString, IsBuiltFromBytesUpToTheClosingNul) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    EXPECT_EQ(bytesOf(RWCString(place.cString(row.text))), row.text.substr(0, row.text.find('\0')));
  });
}

TEST(RWCString, IsEmptyWhenBuiltFromNull) {
  EXPECT_EQ(RWCString(nullptr).length(), 0U);
  EXPECT_EQ(RWCString(nullptr, 0).length(), 0U);
  EXPECT_EQ(RWCString(nullptr, 7).length(), 0U);
  EXPECT_STREQ(RWCString(nullptr).data(), "");
  RWCString assigned("x");
  assigned = static_cast<const char*>(nullptr);
  EXPECT_EQ(assigned.length(), 0U);
}

TEST(RWCString, ReadsTheClosingNulAtItsLength) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    const RWCString& text = place.constString(row.text);
    EXPECT_EQ(text[text.length()], '\0');
    EXPECT_EQ(text(text.length()), '\0');
    for (std::size_t i = 0; i < row.text.size(); ++i) {
      EXPECT_EQ(text[i], row.text[i]);
      EXPECT_EQ(text(i), row.text[i]);
    }
  });
}

TEST(RWCString, TestsTheBoundsOfAReadThroughAConstString) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    const RWCString& text = place.constString(row.text);
    EXPECT_THROW(text[text.length() + 1], RWBoundsErr);
    EXPECT_THROW(text[npos], RWBoundsErr);
  });
}

TEST(RWCString, TestsTheBoundsOfAWritableReference) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    EXPECT_THROW(text[text.length()], RWBoundsErr);
    EXPECT_THROW(text[npos], RWBoundsErr);
    EXPECT_EQ(bytesOf(text), row.text);
  });
}

TEST(RWCString, ReportsBoundsAsOutOfRangeWithTheIndex) {
  const RWCString text("abc");
  try {
    text[17];
    FAIL() << "nothing was thrown";
  } catch (const std::out_of_range& error) {
    EXPECT_NE(std::string(error.what()).find("17"), std::string::npos) << error.what();
  }
}

TEST(RWCString, BoundsErrorsCanBeAssigned) {
  RWBoundsErr error(1, 0);
  const RWBoundsErr other(17, 2);
  error = other;
  EXPECT_STREQ(error.what(), other.what());
}

TEST(RWCString, WritesOneByte) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    std::string expected(row.text);
    for (std::size_t i = 0; i < expected.size(); ++i) {
      text[i] = 'x';
      expected[i] = 'x';
      EXPECT_EQ(bytesOf(text), expected);
      text(i) = '\0';
      expected[i] = '\0';
      EXPECT_EQ(bytesOf(text), expected);
    }
  });
}

// --- Copies and sharing -----------------------------------------------------------------------

TEST(RWCString, CopiesAreEqualAndIndependent) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    RWCString& original = place.string(row.text);
    RWCString copy(original);
    RWCString assigned("something else that is long enough for the heap");
    assigned = original;
    original.append("!");
    EXPECT_EQ(bytesOf(copy), row.text);
    EXPECT_EQ(bytesOf(assigned), row.text);
    copy.append("?");
    EXPECT_EQ(bytesOf(assigned), row.text);
    EXPECT_EQ(bytesOf(original), std::string(row.text) + "!");
  });
}

TEST(RWCString, MovesLeaveAValidString) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    RWCString& original = place.string(row.text);
    RWCString moved(std::move(original));
    EXPECT_EQ(bytesOf(moved), row.text);
    original = "again";
    EXPECT_EQ(bytesOf(original), "again");
    original = std::move(moved);
    EXPECT_EQ(bytesOf(original), row.text);
    moved.append("x");
    EXPECT_EQ(bytesOf(original), row.text);
  });
}

TEST(RWCString, EmptyStringsAndCopiesAllocateNothing) {
  const RWCString longText = stringOf(kLong);
  const RWCString shortText("short");
  EXPECT_EQ(allocationsOf([] { RWCString empty; }), 0U);
  EXPECT_EQ(allocationsOf([] { RWCString empty(""); }), 0U);
  EXPECT_EQ(allocationsOf([] { RWCString empty(nullptr, 0); }), 0U);
  EXPECT_EQ(allocationsOf([&] { RWCString copy(longText); }), 0U);
  EXPECT_EQ(allocationsOf([&] { RWCString copy(shortText); }), 0U);
  EXPECT_EQ(allocationsOf([&] {
              RWCString assigned;
              assigned = longText;
              RWCString moved(std::move(assigned));
            }),
            0U);
}

TEST(RWCString, CopiesShareALongTextUntilOneIsWritten) {
  RWCString original = stringOf(kLong);
  RWCString copy(original);
  EXPECT_EQ(copy.data(), original.data());
  copy[0] = 'A';
  EXPECT_NE(copy.data(), original.data());
  EXPECT_EQ(bytesOf(original), kLong);
  EXPECT_EQ(original.data()[0], 'a');
}

TEST(RWCString, ReadingNeverEndsSharing) {
  RWCString original = stringOf(kLong);
  RWCString copy(original);
  const RWCString& readOnly = copy;
  const RWCRegexp pattern("[x-z]");
  EXPECT_EQ(allocationsOf([&] {
              volatile char seen = copy.data()[3];
              seen = readOnly[3];
              seen = readOnly(3);
              static_cast<void>(seen);
              static_cast<void>(copy.length());
              static_cast<void>(copy.index("certainly"));
              static_cast<void>(copy.index("CERTAINLY", 2, RWCString::ignoreCase));
              static_cast<void>(copy.index('z'));
              static_cast<void>(copy.index(pattern));
              static_cast<void>(copy.compareTo(original));
              static_cast<void>(copy.hash());
              static_cast<void>(copy == original);
            }),
            0U);
  EXPECT_EQ(copy.data(), original.data());
}

TEST(RWCString, TheLastOwnerWritesInPlace) {
  RWCString original = stringOf(kLong);
  const char* const place = original.data();
  { const RWCString copy(original); }
  EXPECT_EQ(allocationsOf([&] { original.remove(0, 3); }), 0U);
  EXPECT_EQ(original.data(), place);
}

// A reference handed out earlier must never change a copy made later.
TEST(RWCString, AWritableReferenceEndsSharingForGood) {
  RWCString original = stringOf(kLong);
  char& reference = original[2];
  const RWCString copy(original);
  RWCString assigned;
  assigned = original;
  EXPECT_NE(copy.data(), original.data());
  EXPECT_NE(assigned.data(), original.data());
  reference = 'X';
  EXPECT_EQ(original.data()[2], 'X');
  EXPECT_EQ(bytesOf(copy), kLong);
  EXPECT_EQ(bytesOf(assigned), kLong);
}

TEST(RWCString, AnUntestedWritableReferenceEndsSharingForGood) {
  RWCString original = stringOf(kLong);
  char& reference = original(2);
  const RWCString copy(original);
  reference = 'X';
  EXPECT_EQ(bytesOf(copy), kLong);
}

TEST(RWCString, AWritableReferenceIntoASharedTextLeavesTheOthersShared) {
  RWCString first = stringOf(kLong);
  const RWCString second(first);
  const RWCString third(first);
  char& reference = first[0];
  reference = 'X';
  EXPECT_EQ(second.data(), third.data());
  EXPECT_EQ(bytesOf(second), kLong);
  const RWCString fourth(second);
  EXPECT_EQ(fourth.data(), second.data());
}

TEST(RWCString, AReferenceStaysGoodThroughSwapAndMove) {
  RWCString original = stringOf(kLong);
  char& reference = original[2];
  RWCString other;
  other.swap(original);
  RWCString moved(std::move(other));
  const RWCString copy(moved);
  reference = 'X';
  EXPECT_EQ(moved.data()[2], 'X');
  EXPECT_EQ(bytesOf(copy), kLong);
}

TEST(RWCString, SwapsTextsOfEveryStorage) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    for (const TextCase& otherRow : kTexts) {
      RWCString& text = place.string(row.text);
      RWCString& other = place.string(otherRow.text);
      text.swap(other);
      EXPECT_EQ(bytesOf(text), otherRow.text);
      EXPECT_EQ(bytesOf(other), row.text);
    }
  });
}

TEST(RWCString, AssigningToItselfChangesNothing) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const RWCString& alias = text;
    text = alias;
    EXPECT_EQ(bytesOf(text), row.text);
    RWCString& target = text;
    text = std::move(target);
    EXPECT_EQ(bytesOf(text), row.text);
    text.swap(target);
    EXPECT_EQ(bytesOf(text), row.text);
  });
}

TEST(RWCString, TakesItsOwnBytes) {
  forEachPlacement(kTexts, [](const TextCase& row, Placement& place) {
    const std::string expected(row.text);
    const auto fresh = [&]() -> RWCString& { return place.string(row.text); };
    for (const bool shared : {false, true}) {
      RWCString keeper;
      const auto text = [&]() -> RWCString& {
        RWCString& made = fresh();
        if (shared) keeper = made;
        return made;
      };
      RWCString& doubled = text();
      EXPECT_EQ(bytesOf(doubled.append(doubled)), expected + expected);
      RWCString& tail = text();
      const std::size_t half = expected.size() / 2;
      tail.append(tail.data() + half, expected.size() - half);
      EXPECT_EQ(bytesOf(tail), expected + expected.substr(half));
      RWCString& inside = text();
      inside.insert(half, inside);
      EXPECT_EQ(bytesOf(inside), std::string(expected).insert(half, expected));
      RWCString& part = text();
      part.insert(0, part.data() + half, expected.size() - half);
      EXPECT_EQ(bytesOf(part), expected.substr(half) + expected);
      RWCString& cut = text();
      cut = cut.data() + half;
      EXPECT_EQ(bytesOf(cut), expected.substr(half).substr(0, expected.substr(half).find('\0')));
      if (shared && expected.size() > 0) {
        EXPECT_EQ(bytesOf(keeper), expected);
      }
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
