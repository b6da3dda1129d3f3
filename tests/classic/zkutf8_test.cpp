#include "zkutf8.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hostroutines.h"
#include "reference/classic/zkutf8.h"
#include "support/generated_texts.h"
#include "support/placement.h"
#include "support/texts.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

// --- Detection --------------------------------------------------------------------------------

struct DetectCase {
  Here here;
  std::string text;
  bool isUtf8;
};
const DetectCase kDetect[] = {
    // Too short to hold a pair.
    {HERE, "", false},
    {HERE, "a", false},
    {HERE, "\xc3", false},
    {HERE, "\xa9", false},
    {HERE, "\xff", false},
    // ASCII alone is not taken for UTF-8.
    {HERE, "abc", false},
    {HERE, std::string("\0\0\0", 3), false},
    {HERE, "\xc3\xa9", true},
    {HERE, "a\xe9z", false},
    {HERE, "A\x80", false},
    {HERE,
     "\x80"
     "A",
     false},
    {HERE, "\x80\x80", false},
    {HERE, "\xc3\xc3", false},
    {HERE, "\xc3\xc3\xa9", true},
    // A continuation byte after another one counts neither way.
    {HERE, "\xe2\x82\xac", true},
    {HERE, "\xf0\x9f\x98\x80\x80\x80\x80", true},
    // The first byte is never judged, nor is a lead byte at the end.
    {HERE, "\x80\xc3\xa9", true},
    {HERE, "\xc3\xa9\xc3", true},
    // No more misplaced bytes than good pairs.
    {HERE, "\xc3\xa9 \xe9z", true},
    {HERE, "\xc3\xa9 \xe9z\xe9z", false},
    {HERE, "\xc3\xa9\xc3\xa9 \xe9z\xe9z", true},
    {HERE, "\xc3\xa9 \x80", true},
    {HERE, "\xc3\xa9 \x80 \x80", false},
    // At most nine in all.
    {HERE, repeated("\xc3\xa9", 9) + repeated("\xe9z", 9), true},
    {HERE, repeated("\xc3\xa9", 10) + repeated("\xe9z", 9), true},
    {HERE, repeated("\xc3\xa9", 10) + repeated("\xe9z", 10), false},
    {HERE, repeated("\xc3\xa9", 100) + repeated("\xe9z", 9), true},
    {HERE, repeated("\xc3\xa9", 100) + repeated("\xe9z", 10), false},
    {HERE, repeated("\xc3\xa9", 100) + repeated("\xe9z", 11), false},
    {HERE, repeated("\xe9z", 11) + repeated("\xc3\xa9", 100), false},
    {HERE, repeated("\xc3\xa9", 100) + repeated(" \x80", 9), true},
    {HERE, repeated("\xc3\xa9", 100) + repeated(" \x80", 10), false},
    {HERE, repeated("\xc3\xa9", 100) + repeated(" \x80", 11), false},
    {HERE, repeated("\xe9z", 10), false},
};

TEST(IsUtf8, CountsPairsOfNeighbours) {
  forEachKernelLevel([] {
    forEachPlacement(kDetect, [](const DetectCase& row, Placement& place) {
      const std::string_view text = place.bytes(row.text);
      EXPECT_EQ(isUtf8(text.data(), static_cast<int>(text.size())), row.isUtf8);
    });
  });
}

TEST(IsUtf8, RejectsEveryLengthBelowTwo) {
  for (const int length : {1, 0, -1, -2, std::numeric_limits<int>::min()}) {
    EXPECT_FALSE(isUtf8("\xc3\xa9", length)) << length;
    EXPECT_FALSE(isUtf8(nullptr, std::min(length, 0))) << length;
  }
}

TEST(IsUtf8, ReadsNothingBeyondTheLength) {
  forEachKernelLevel([] {
    for (std::size_t length = 0; length < 600; ++length) {
      for (const Placement::Kind kind : Placement::kKinds) {
        Placement place(kind);
        const std::string_view text = place.bytes(std::string(length, 'a'));
        EXPECT_FALSE(isUtf8(text.data(), static_cast<int>(length)));
      }
    }
  });
}

// A pair at every place among the vectors of either width.
TEST(IsUtf8, FindsAPairAtEveryPlace) {
  forEachKernelLevel([] {
    for (std::size_t length = 2; length < 400; ++length) {
      for (std::size_t at = 0; at + 2 <= length; ++at) {
        std::string text(length, 'a');
        text.replace(at, 2, "\xc3\xa9");
        ASSERT_TRUE(isUtf8(text.data(), static_cast<int>(length))) << at << " of " << length;
        text.replace(at, 2, "\xc3z");
        ASSERT_FALSE(isUtf8(text.data(), static_cast<int>(length))) << at << " of " << length;
      }
    }
  });
}

// More pairs than a counter of one byte holds.
TEST(IsUtf8, CountsManyPairs) {
  forEachKernelLevel([] {
    for (const std::size_t count : {255U, 256U, 300U, 65536U, 1000000U}) {
      const std::string good = repeated("\xc3\xa9", count);
      EXPECT_TRUE(isUtf8(good.data(), static_cast<int>(good.size())));
      const std::string spoilt = good + repeated(" \x80", 10);
      EXPECT_FALSE(isUtf8(spoilt.data(), static_cast<int>(spoilt.size())));
    }
    const std::string bad = repeated(" \x80", 1000000);
    EXPECT_FALSE(isUtf8(bad.data(), static_cast<int>(bad.size())));
  });
}

void expectSameDetection(const std::string& text) {
  const int length = static_cast<int>(text.size());
  ASSERT_EQ(isUtf8(text.data(), length), reference::isUtf8(text.data(), length))
      << testing::PrintToString(text);
}

TEST(IsUtf8, GivesWhatItsTwinGivesForSmallTexts) {
  forEachText({"a", "\x80", "\xbf", "\xc0", "\xff", "\x7f"}, 7, expectSameDetection);
}

TEST(IsUtf8, GivesWhatItsTwinGivesForRandomTexts) {
  RandomTexts random;
  const std::vector<std::string_view> pieces = {"a",    "some text", "\xc3\xa9", "\xe2\x82\xac",
                                                "\x80", "\xc3",      "\xff",     "\0"sv};
  forEachKernelLevel([&] {
    for (int i = 0; i < 20000; ++i) {
      expectSameDetection(random.bytes(40));
      expectSameDetection(random.textOfRuns(pieces, 30));
      // Mostly good pairs, so that the few misplaced bytes decide.
      expectSameDetection(repeated("\xc3\xa9", random.number(40)) + random.text(pieces, 40));
    }
  });
}

// --- The stand-alone routines -----------------------------------------------------------------

using Routine = int (*)(int, const char*, int, char*, int);

struct ConvertCase {
  Here here;
  Routine routine;
  std::string_view source;
  std::string_view result;
};
const ConvertCase kConversions[] = {
    {HERE, ANSIToUTF8, "", ""},
    {HERE, ANSIToUTF8, "abc", "abc"},
    {HERE, ANSIToUTF8, "\xe9", "\xc3\xa9"},
    {HERE, ANSIToUTF8, "\x80\xa0\xbf\xc0\xff", "\xc2\x80\xc2\xa0\xc2\xbf\xc3\x80\xc3\xbf"},
    {HERE, ANSIToUTF8, "d\xe9j\xe0 vu, d\xe9j\xe0 vu",
     "d\xc3\xa9j\xc3\xa0 vu, d\xc3\xa9j\xc3\xa0 vu"},
    {HERE, UTF8ToANSI, "", ""},
    {HERE, UTF8ToANSI, "abc", "abc"},
    {HERE, UTF8ToANSI, "\xc3\xa9", "\xe9"},
    {HERE, UTF8ToANSI, "\xc2\x80\xc2\xbf\xc3\x80\xc3\xbf", "\x80\xbf\xc0\xff"},
    // Characters that do not fit.
    {HERE, UTF8ToANSI, "\xc4\x80", "?"},
    {HERE, UTF8ToANSI, "\xdf\xbf", "?"},
    {HERE, UTF8ToANSI, "\xe2\x82\xac", "?"},
    {HERE, UTF8ToANSI, "a\xf0\x9f\x98\x80z", "a?z"},
    {HERE, UTF8ToANSI, "\xed\x9f\xbf\xee\x80\x80\xf4\x8f\xbf\xbf", "???"},
    // Malformed: no lead byte, or one of no character.
    {HERE, UTF8ToANSI, "\x80", "?"},
    {HERE, UTF8ToANSI, "\x80\xbf", "??"},
    {HERE, UTF8ToANSI, "\xc0\x80", "??"},
    {HERE, UTF8ToANSI, "\xc1\xbf", "??"},
    {HERE, UTF8ToANSI, "\xf5\x80\x80\x80", "????"},
    {HERE, UTF8ToANSI, "\xff\xfe", "??"},
    // Cut off: as far as it could have been a character.
    {HERE, UTF8ToANSI, "\xc3", "?"},
    {HERE, UTF8ToANSI,
     "\xc3"
     "a",
     "?a"},
    {HERE, UTF8ToANSI, "\xe2\x82", "?"},
    {HERE, UTF8ToANSI, "\xe2\x82z", "?z"},
    {HERE, UTF8ToANSI, "\xf0\x9f\x98", "?"},
    {HERE, UTF8ToANSI, "\xf0\x9f\x98\xc3\xa9", "?\xe9"},
    {HERE, UTF8ToANSI, "\xf0\x9f\xc3\xa9", "?\xe9"},
    {HERE, UTF8ToANSI, "\xc3\xc3\xa9", "?\xe9"},
    // Overlong forms, surrogates, beyond the last character.
    {HERE, UTF8ToANSI, "\xe0\x9f\xbf", "???"},
    {HERE, UTF8ToANSI, "\xe0\xa0\x80", "?"},
    {HERE, UTF8ToANSI, "\xf0\x8f\xbf\xbf", "????"},
    {HERE, UTF8ToANSI, "\xed\xa0\x80", "???"},
    {HERE, UTF8ToANSI, "\xf4\x90\x80\x80", "????"},
};

// Converts into a block of just that size, with bytes after the result that are none of ours.
std::string converted(Routine routine, std::string_view source, int sourceLength, int size,
                      Placement& place) {
  const std::string_view block = place.bytes(std::string(static_cast<std::size_t>(size), '\x7f'));
  char* destination = const_cast<char*>(block.data());
  const int length = routine(0, source.data(), sourceLength, destination, size);
  EXPECT_LT(length, size);
  EXPECT_EQ(destination[length], '\0');
  return std::string(destination, static_cast<std::size_t>(length));
}

constexpr int kAmple = 100;

TEST(StandAloneRoutines, ConvertBetweenUtf8AndLatin1) {
  forEachKernelLevel([] {
    forEachPlacement(kConversions, [](const ConvertCase& row, Placement& place) {
      const int length = static_cast<int>(row.source.size());
      const std::string_view bytes = place.bytes(row.source);
      EXPECT_EQ(converted(row.routine, bytes, length, kAmple, place), row.result);
      const std::string_view terminated = place.cString(row.source);
      EXPECT_EQ(converted(row.routine, terminated, -1, kAmple, place), row.result);
    });
  });
}

TEST(StandAloneRoutines, TakeANulForAByteWhenALengthIsGiven) {
  forEachKernelLevel([] {
    Placement place(Placement::kExactBlock);
    EXPECT_EQ(converted(ANSIToUTF8, "a\0\xe9"sv, 3, kAmple, place), "a\0\xc3\xa9"sv);
    EXPECT_EQ(converted(ANSIToUTF8, "a\0\xe9"sv, -1, kAmple, place), "a");
    EXPECT_EQ(converted(UTF8ToANSI, "a\0\xc3\xa9"sv, 4, kAmple, place), "a\0\xe9"sv);
    EXPECT_EQ(converted(UTF8ToANSI, "\xc3\0\xa9"sv, 3, kAmple, place), "?\0?"sv);
    EXPECT_EQ(converted(UTF8ToANSI, "a\0\xc3\xa9"sv, -1, kAmple, place), "a");
  });
}

// The longest start of `whole` that ends between characters and leaves room for the closing NUL.
std::string_view cutTo(std::string_view whole, int size, bool isUtf8Text) {
  auto length = std::min(whole.size(), static_cast<std::size_t>(size) - 1);
  while (isUtf8Text && length < whole.size() && (whole[length] & '\xc0') == '\x80') --length;
  return whole.substr(0, length);
}

TEST(StandAloneRoutines, CutTheResultBetweenCharacters) {
  forEachKernelLevel([] {
    forEachPlacement(kConversions, [](const ConvertCase& row, Placement& place) {
      const bool toUtf8 = row.routine == &ANSIToUTF8;
      for (int size = 1; size <= static_cast<int>(row.result.size()) + 2; ++size) {
        EXPECT_EQ(converted(row.routine, place.cString(row.source), -1, size, place),
                  cutTo(row.result, size, toUtf8))
            << "size " << size;
      }
    });
    for (int size = 1; size < 150; ++size) {
      Placement place(Placement::kBeforeGuardPage);
      const std::string latin1 = std::string(69, 'a') + repeated("\xe9", 30);
      const std::string utf8 = std::string(69, 'a') + repeated("\xc3\xa9", 30);
      EXPECT_EQ(converted(ANSIToUTF8, latin1, -1, size, place), cutTo(utf8, size, true));
      EXPECT_EQ(converted(UTF8ToANSI, utf8, -1, size, place), cutTo(latin1, size, false));
    }
  });
}

TEST(StandAloneRoutines, WriteNothingIntoNothing) {
  for (const Routine routine : {&ANSIToUTF8, &UTF8ToANSI}) {
    for (const int size : {0, -1, std::numeric_limits<int>::min()}) {
      char untouched = 'x';
      EXPECT_EQ(routine(0, "abc", -1, &untouched, size), 0);
      EXPECT_EQ(untouched, 'x');
      EXPECT_EQ(routine(0, "abc", 3, nullptr, size), 0);
    }
  }
}

void expectSameConversions(const std::string& text) {
  const int size = static_cast<int>(3 * text.size() + 1);
  std::vector<char> destination(static_cast<std::size_t>(size));
  const int utf8Length = ANSIToUTF8(0, text.c_str(), -1, destination.data(), size);
  ASSERT_EQ(std::string(destination.data(), static_cast<std::size_t>(utf8Length)),
            reference::latin1ToUtf8(text))
      << testing::PrintToString(text);
  const int latin1Length = UTF8ToANSI(0, text.c_str(), -1, destination.data(), size);
  ASSERT_EQ(std::string(destination.data(), static_cast<std::size_t>(latin1Length)),
            reference::utf8ToLatin1(text))
      << testing::PrintToString(text);
}

TEST(StandAloneRoutines, GiveWhatTheirTwinsGiveForSmallTexts) {
  const std::vector<std::string_view> alphabet = {"a",    "\x80", "\x8f", "\x90", "\x9f", "\xa0",
                                                  "\xbf", "\xc1", "\xc2", "\xc3", "\xdf", "\xe0",
                                                  "\xe1", "\xed", "\xf0", "\xf1", "\xf4", "\xf5"};
  forEachText(alphabet, 4, expectSameConversions);
}

TEST(StandAloneRoutines, GiveWhatTheirTwinsGiveForRandomTexts) {
  RandomTexts random;
  const std::vector<std::string_view> pieces = {
      "a",    "some text", "\xc3\xa9", "\xe2\x82\xac", "\xf0\x9f\x98\x80",
      "\x80", "\xc3",      "\xff",     "\xe2\x82",     "\0"sv};
  forEachKernelLevel([&] {
    for (int i = 0; i < 20000; ++i) {
      expectSameConversions(random.bytes(40));
      expectSameConversions(random.textOfRuns(pieces, 20));
    }
  });
}

TEST(StandAloneRoutines, WriteAnErrorAsALine) {
  testing::internal::CaptureStderr();
  pagescanLogError("something is wrong");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "something is wrong\n");
}

// --- Conversion in place ----------------------------------------------------------------------

struct InPlaceCase {
  Here here;
  std::string_view text;
  std::string_view toAnsi;
  std::string_view toUtf8;
};
constexpr InPlaceCase kInPlace[] = {
    {HERE, "", "", ""},
    {HERE, "a", "a", "a"},
    {HERE, "plain", "plain", "plain"},
    {HERE, "\xc3\xa9", "\xe9", "\xc3\xa9"},
    {HERE, "\xe9", "\xe9", "\xc3\xa9"},
    {HERE, "\xe9t\xe9", "\xe9t\xe9", "\xc3\xa9t\xc3\xa9"},
    {HERE, "\xe2\x82\xac", "?", "\xe2\x82\xac"},
    // A conversion ends the text at its first NUL, and only a conversion does.
    {HERE, "a\0b"sv, "a\0b"sv, "a"},
    {HERE, "\xc3\xa9\0b"sv, "\xe9", "\xc3\xa9\0b"sv},
    {HERE, "\0"sv, "\0"sv, ""},
    // Longer than what stands in the object.
    {HERE, "un \xc3\xa9t\xc3\xa9 \xc3\xa0 la campagne, tr\xc3\xa8s loin",
     "un \xe9t\xe9 \xe0 la campagne, tr\xe8s loin",
     "un \xc3\xa9t\xc3\xa9 \xc3\xa0 la campagne, tr\xc3\xa8s loin"},
};

TEST(ConvertUtf8toAnsi, ConvertsWhatIsUtf8) {
  forEachPlacement(kInPlace, [](const InPlaceCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const char* data = ConvertUtf8toAnsi(text);
    EXPECT_EQ(bytesOf(text), row.toAnsi);
    EXPECT_EQ(data, text.data());
  });
}

TEST(ConvertAnsitoUtf8, ConvertsWhatIsNotUtf8) {
  forEachPlacement(kInPlace, [](const InPlaceCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const char* data = ConvertAnsitoUtf8(text);
    EXPECT_EQ(bytesOf(text), row.toUtf8);
    EXPECT_EQ(data, text.data());
  });
}

TEST(ConvertAnsitoUtf8, LeavesCopiesAlone) {
  RWCString text("a text that is too long to stand in the object: \xe9");
  const RWCString copy = text;
  ConvertAnsitoUtf8(text);
  EXPECT_EQ(bytesOf(text), "a text that is too long to stand in the object: \xc3\xa9");
  EXPECT_EQ(bytesOf(copy), "a text that is too long to stand in the object: \xe9");
}

TEST(ConvertUtf8toAnsi, GivesWhatItsTwinGivesForRandomTexts) {
  RandomTexts random;
  const std::vector<std::string_view> pieces = {"a", "\xc3\xa9", "\xe2\x82\xac", "\xe9", "\0"sv};
  for (int i = 0; i < 20000; ++i) {
    const std::string text = random.text(pieces, 12);
    std::string expected = text;
    RWCString ours = stringOf(text);
    reference::ConvertUtf8toAnsi(expected);
    ConvertUtf8toAnsi(ours);
    EXPECT_EQ(bytesOf(ours), expected) << testing::PrintToString(text);
    expected = text;
    ours = stringOf(text);
    reference::ConvertAnsitoUtf8(expected);
    ConvertAnsitoUtf8(ours);
    EXPECT_EQ(bytesOf(ours), expected) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace pagescan::tests
