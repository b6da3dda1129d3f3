// The library's encoding, decoding and checks beside their slow twins.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reference/classic/zkurlencoding.h"
#include "support/generated_texts.h"
#include "support/placement.h"
#include "zkurlencoding.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using Alphabet = std::vector<std::string_view>;
using Type = UrlEncoding::EncodingType;

using namespace std::string_view_literals;

Type typeOf(int number) {
  return static_cast<Type>(number);
}

void expectSameDecoding(const std::string& text, int type) {
  std::string expected = text;
  const bool expectedResult = reference::DecodeString(expected, type);
  RWCString decoded = stringOf(text);
  ASSERT_EQ(UrlEncoding::DecodeString(decoded, typeOf(type)), expectedResult)
      << testing::PrintToString(text) << " flavour " << type;
  ASSERT_EQ(bytesOf(decoded), expected) << testing::PrintToString(text) << " flavour " << type;
}

void expectSameEncoding(const std::string& text, int type) {
  std::string expected = "x";
  const bool expectedResult = reference::EncodeString(text, expected, type);
  RWCString source = stringOf(text);
  RWCString encoded("x");
  ASSERT_EQ(UrlEncoding::EncodeString(source, encoded, typeOf(type)), expectedResult)
      << testing::PrintToString(text) << " flavour " << type;
  ASSERT_EQ(bytesOf(encoded), expected) << testing::PrintToString(text) << " flavour " << type;
}

void expectSameChecks(const std::string& text) {
  const RWCString checked = stringOf(text);
  int first = 0;
  for (int type = 8; type >= 0; --type) {
    const bool expected = reference::CheckUrlDecoding(text, type);
    ASSERT_EQ(UrlEncoding::CheckUrlDecoding(checked, typeOf(type)), expected)
        << testing::PrintToString(text) << " flavour " << type;
    if (expected && type > 0) first = type;
  }
  ASSERT_EQ(UrlEncoding::CheckUrlDecoding(checked), first) << testing::PrintToString(text);
}

void expectSameUnreadables(const std::string& text) {
  std::string expected;
  reference::EncodeStringUnreadables(text.data(), text.size(), expected);
  RWCString shown;
  ASSERT_TRUE(UrlEncoding::EncodeStringUnreadables(text.data(), text.size(), shown));
  ASSERT_EQ(bytesOf(shown), expected) << testing::PrintToString(text);
}

// --- All small texts --------------------------------------------------------------------------

TEST(DecodeString, GivesWhatItsTwinGivesForSmallTexts) {
  const Alphabet alphabet = {"%", "4", "1", "+", "z", "\0"sv, " "};
  forEachText(alphabet, 6, [](const std::string& text) {
    for (const int type : {1, 7}) expectSameDecoding(text, type);
  });
}

TEST(EncodeString, GivesWhatItsTwinGivesForSmallTexts) {
  const Alphabet alphabet = {"&#25;", "&", "#", "2", "5", ";", " "};
  forEachText(alphabet, 5, [](const std::string& text) {
    for (const int type : {1, 3}) expectSameEncoding(text, type);
  });
}

TEST(EncodeStringUnreadables, GivesWhatItsTwinGivesForAllPairsOfBytes) {
  for (unsigned pair = 0; pair < 65536; ++pair) {
    expectSameUnreadables({static_cast<char>(pair >> 8), static_cast<char>(pair & 255)});
  }
}

TEST(CheckUrlDecoding, GivesWhatItsTwinGivesForAllBytes) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string raw(1, static_cast<char>(byte));
    for (const char* digits : {"0123456789ABCDEF", "0123456789abcdef"}) {
      expectSameChecks(raw + "%" + digits[byte / 16] + digits[byte % 16]);
      expectSameChecks(std::string("%") + digits[byte / 16] + digits[byte % 16]);
    }
    expectSameChecks(raw);
    expectSameChecks("a=" + raw);
    expectSameChecks("%" + raw + "A");
    expectSameChecks("%4" + raw);
  }
}

TEST(CheckUrlDecoding, GivesWhatItsTwinGivesForSmallTexts) {
  forEachText({"%", "2", "5", "+", "=", "&", "z"}, 6, expectSameChecks);
}

// What decodes to the placeholder, or nearly so, in every spelling.
TEST(CheckUrlDecoding, GivesWhatItsTwinGivesAroundThePlaceholder) {
  forEachText({"%26", "%23", "#", "25", "%32", "%3B", ";", "+"}, 4, expectSameChecks);
  forEachText({"%26%2325%3B", "%26#25;", "26", "%23", "#", "25", "%3B", "%25", "%"}, 4,
              expectSameChecks);
  forEachText({"%25", "2", "5", "%32", "%35", "\"", "%22", "%"}, 4, expectSameChecks);
}

// --- Random texts -----------------------------------------------------------------------------

const Alphabet kPieces = {"%",   "%4",  "%41", "%e9", "%E9", "%0A", "%zz",   "+",    " ",
                          "a",   "Z",   "09",  "&",   "=",   "&a=", "&#25;", "&#25", "%26%2325%3B",
                          "%2B", "%20", "-",   "~",   "@",   ",",   "\0"sv,  "\xff", "\x80\n"};

TEST(UrlEncoding, GivesWhatItsTwinsGiveForRandomTexts) {
  RandomTexts random;
  forEachKernelLevel([&] {
    for (std::size_t i = randomRuns(20000, 1000000); i > 0; --i) {
      const std::string text =
          random.number(4) == 0 ? random.bytes(60) : random.textOfRuns(kPieces, 12);
      const int type = static_cast<int>(random.number(11)) - 1;
      expectSameDecoding(text, type);
      expectSameEncoding(text, type);
      expectSameUnreadables(text);
      expectSameChecks(text);
    }
  });
}

// Longer than what is built at once.
TEST(UrlEncoding, GivesWhatItsTwinsGiveForLongTexts) {
  RandomTexts random;
  forEachKernelLevel([&] {
    for (int i = 0; i < 60; ++i) {
      const std::string text = random.textOfRuns(kPieces, 1000);
      const int type = static_cast<int>(random.number(11)) - 1;
      expectSameDecoding(text, type);
      expectSameEncoding(text, type);
      expectSameUnreadables(text);
    }
  });
}

// Lengths around those of words and vectors.
TEST(DecodeString, SeesWhatIsToBeDecodedAtEveryPlaceOfAShortText) {
  forEachKernelLevel([] {
    for (std::size_t length = 1; length < 70; ++length) {
      for (std::size_t at = 0; at < length; ++at) {
        std::string text(length, '\xA5');  // a "%" with its top bit set
        text[at] = '+';
        for (const int type : {1, 7}) expectSameDecoding(text, type);
        text[at] = '%';
        expectSameDecoding(text, 1);
        expectSameDecoding(text.replace(at + 1, 2, "41"), 7);
      }
    }
  });
}

// Each length near that of a piece, so that an escape lies across its end.
TEST(DecodeString, DecodesEscapesAtEveryPlaceOfALongText) {
  for (std::size_t length = 4000; length < 4200; ++length) {
    for (const std::string_view escape : {"%41", "%zz", "%4", "%"}) {
      const std::string text = std::string(length, '+').append(escape);
      expectSameDecoding(text, 1);
      expectSameDecoding(text + "bc", 1);
      expectSameEncoding(text + "&#25;", 2);
    }
  }
}

TEST(UrlEncoding, GivesWhatItsTwinsGiveForOtherPlaceholders) {
  RandomTexts random;
  const char* const before = persentEscape;
  const int lengthBefore = persentEscapeLength;
  for (const std::string placeholder :
       {"##", "a", "aba", "%", "%25", "abcdefghijklmnopqrstuvwxyz"}) {
    persentEscape = placeholder.c_str();
    persentEscapeLength = static_cast<int>(placeholder.length());
    const Alphabet pieces = {placeholder, "#", "a", "b", "%", "%25", "%61", "+", "&", "="};
    for (int i = 0; i < 3000; ++i) {
      const std::string text = random.text(pieces, 8);
      const int type = static_cast<int>(random.number(9));
      std::string expected = text;
      const bool expectedResult = reference::DecodeString(expected, type, placeholder);
      RWCString decoded = stringOf(text);
      EXPECT_EQ(UrlEncoding::DecodeString(decoded, typeOf(type)), expectedResult);
      EXPECT_EQ(bytesOf(decoded), expected) << testing::PrintToString(text);
      expected.clear();
      reference::EncodeString(text, expected, type, placeholder);
      RWCString source = stringOf(text);
      RWCString encoded;
      UrlEncoding::EncodeString(source, encoded, typeOf(type));
      EXPECT_EQ(bytesOf(encoded), expected) << testing::PrintToString(text);
      EXPECT_EQ(UrlEncoding::CheckUrlDecoding(source, typeOf(type)),
                reference::CheckUrlDecoding(text, type, placeholder));
    }
  }
  persentEscape = before;
  persentEscapeLength = lengthBefore;
}

}  // namespace
}  // namespace pagescan::tests
