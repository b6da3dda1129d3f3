// Decoders: single rules in a table, and everything beside the slow twin.
#include "encoding/decoder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "encodings.h"
#include "reference/encoding/decode.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

std::string decoded(std::string_view bytes, Encoding encoding) {
  std::string out;
  appendDecoded(out, bytes, encoding);
  return out;
}

struct DecodingCase {
  Here here;
  Encoding encoding;
  std::string_view bytes;
  std::string_view expected;
};
constexpr DecodingCase kDecodings[] = {
    {HERE, Encoding::utf8, "", ""},
    {HERE, Encoding::utf8, "a\0b"sv, "a\0b"sv},
    {HERE, Encoding::utf8, "\xEF\xBB\xBFx", "\uFEFFx"},  // a mark is a character here
    // One U+FFFD for what could have been the start of a character, one for each other byte.
    {HERE, Encoding::utf8, "\xF0\x9F\x92", "\uFFFD"},
    {HERE, Encoding::utf8, "\xF0\x9F\x92<", "\uFFFD<"},
    {HERE, Encoding::utf8, "\xE0\x80\x80", "\uFFFD\uFFFD\uFFFD"},
    {HERE, Encoding::utf8, "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
    {HERE, Encoding::utf8, "\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
    {HERE, Encoding::utf8, "\xC0\xAF\xFF", "\uFFFD\uFFFD\uFFFD"},
    {HERE, Encoding::windows1252, "\x80 \x81 \xE9", "\u20AC \u0081 \u00E9"},
    {HERE, Encoding::windows1251, "\xCF\xF0\xE8\xE2\xE5\xF2, <b>", "Привет, <b>"},
    {HERE, Encoding::windows874, "\xDB\xA1", "\uFFFD\u0E01"},
    {HERE, Encoding::iso8859_8I, "\xE0\xFD", "\u05D0\u200E"},
    {HERE, Encoding::xUserDefined, "a\x80\xFF", "a\uF780\uF7FF"},
    {HERE, Encoding::gbk, "\x80\xC4\xE3\xBA\xC3", "\u20AC你好"},
    {HERE, Encoding::gbk, "\xA6\xD9\xFE\x59", "\uFE10\u9FB4"},  // as GB 18030-2022 has it
    {HERE, Encoding::gb18030, "\x81\x30\x81\x30\x95\x39\xEF\x34", "\u0080\U000226B4"},
    {HERE, Encoding::gb18030, "\x81\x35\xF4\x37\xA8\xBC", "\uE7C7\u1E3F"},
    {HERE, Encoding::gb18030, "\xA3\xA0", "\u3000"},
    {HERE, Encoding::gb18030, "\xE3\x32\x9A\x35\xE3\x32\x9A\x36", "\U0010FFFF\uFFFD"},
    // A wrong byte masks no ASCII.
    {HERE, Encoding::gb18030, "\x81\x30\x81<", "\uFFFD0\uFFFD<"},
    {HERE, Encoding::gb18030, "\x81\x30<", "\uFFFD0<"},
    {HERE, Encoding::gb18030, "\x81<\x81\x7F\x81\xFF", "\uFFFD<\uFFFD\x7F\uFFFD"},
    {HERE, Encoding::gb18030, "\x81", "\uFFFD"},
    {HERE, Encoding::gb18030, "\x81\x30", "\uFFFD"},
    {HERE, Encoding::gb18030, "\x81\x30\x81", "\uFFFD"},
    {HERE, Encoding::big5, "\xA7\x41\xA6\x6E", "你好"},
    {HERE, Encoding::big5, "\x88\x62\x88\x64\x88\xA3\x88\xA5",
     "\u00CA\u0304\u00CA\u030C\u00EA\u0304\u00EA\u030C"},
    {HERE, Encoding::big5, "\x87\x40\xFE\xFE", "\u43F0\u79D4"},
    {HERE, Encoding::big5, "\x94\x52", "\U0002431A"},
    {HERE, Encoding::big5, "\x81<\x81\x40\xA1", "\uFFFD<\uFFFD@\uFFFD"},
    {HERE, Encoding::eucJp, "\xC6\xFC\xCB\xDC\x8E\xB1\x8F\xB0\xA1", "日本\uFF71\u4E02"},
    {HERE, Encoding::eucJp, "\x8E<\x8F<\x8F\xA1<\x8F\xA1", "\uFFFD<\uFFFD<\uFFFD<\uFFFD"},
    {HERE, Encoding::eucJp, "\x8E\xE0\x80\xA0\xFF", "\uFFFD\uFFFD\uFFFD\uFFFD"},
    {HERE, Encoding::shiftJis, "\x93\xFA\x96\x7B\xB1\\~\x80", "日本\uFF71\\~\u0080"},
    {HERE, Encoding::shiftJis, "\xF0\x40\xF9\xFC", "\uE000\uE757"},
    {HERE, Encoding::shiftJis, "\x82\"\xA0\xFD\x81", "\uFFFD\"\uFFFD\uFFFD\uFFFD"},
    {HERE, Encoding::eucKr, "\xB0\xA1\x81\x41\x81<\x81\xFF", "가갂\uFFFD<\uFFFD"},
    {HERE, Encoding::iso2022Jp, "a\x1B$BF|K\\\x1B(B<", "a日本<"},
    {HERE, Encoding::iso2022Jp, "\x1B(J\\~a\x1B(I1\x1B(B\\", "\u00A5\u203Ea\uFF71\\"},
    {HERE, Encoding::iso2022Jp, "\x1B(B\x1B(Ba", "\uFFFDa"},  // nothing between two escapes
    {HERE, Encoding::iso2022Jp, "\x1B$@F\x1B(Ba", "\uFFFDa"},
    {HERE, Encoding::iso2022Jp, "\x1B$BF\na", "\uFFFD\uFFFD"},  // the line end is a trail byte
    {HERE, Encoding::iso2022Jp, "\x1B", "\uFFFD"},
    {HERE, Encoding::iso2022Jp, "\x1B(", "\uFFFD("},
    {HERE, Encoding::iso2022Jp, "\x1B$x\x0E\x0F\x80", "\uFFFD$x\uFFFD\uFFFD\uFFFD"},
    {HERE, Encoding::utf16Le, "<\0\xE9\0\x3D\xD8\xA9\xDC"sv, "<\u00E9\U0001F4A9"},
    {HERE, Encoding::utf16Be, "\0<\0\xE9\xD8\x3D\xDC\xA9"sv, "<\u00E9\U0001F4A9"},
    {HERE, Encoding::utf16Be, "\xD8\x3D\0<\xDC\xA9\0"sv, "\uFFFD<\uFFFD\uFFFD"},
    {HERE, Encoding::utf16Be, "\xD8\x3D", "\uFFFD"},
    {HERE, Encoding::utf16Be, "\xD8\x3D\xDC", "\uFFFD"},
    {HERE, Encoding::replacement, "", ""},
    {HERE, Encoding::replacement, "abc\xFF", "\uFFFD"},
};

TEST(AppendDecoded, FollowsTheRules) {
  forEachPlacement(kDecodings, [](const DecodingCase& row, Placement& place) {
    EXPECT_EQ(decoded(place.bytes(row.bytes), row.encoding), row.expected);
  });
}

TEST(AppendDecoded, KeepsWhatIsThere) {
  std::string out = "before ";
  appendDecoded(out, "\xE9", Encoding::windows1252);
  EXPECT_EQ(out, "before \u00E9");
}

class DecoderTwin : public testing::TestWithParam<Encoding> {
 protected:
  static void expectSame(std::string_view bytes) {
    ASSERT_EQ(decoded(bytes, GetParam()), reference::decode(bytes, GetParam()))
        << nameOf(GetParam()) << " " << testing::PrintToString(bytes);
  }
};

// A character after it shows what is left of a malformed pair, and a longer text takes the paths
// that read eight bytes.
TEST_P(DecoderTwin, AgreesOnEveryPairOfBytes) {
  for (int first = 0; first < 256; ++first) {
    const std::string one(1, static_cast<char>(first));
    expectSame(one);
    expectSame("1234567" + one + "89abcdefgh");
    for (int second = 0; second < 256; ++second) {
      const std::string two = one + static_cast<char>(second);
      expectSame(two);
      expectSame("(" + two + ")\xB0\xA1 and more");
      if (HasFatalFailure()) return;
    }
  }
}

const std::vector<std::string_view> kPieces = {"a",
                                               "<b>",
                                               " ",
                                               "\n",
                                               "\\",
                                               "0",
                                               "9",
                                               "\x1B",
                                               "\x1B(B",
                                               "\x1B(J",
                                               "\x1B(I",
                                               "\x1B$B",
                                               "\x1B$@",
                                               "\x1B$",
                                               "F|",
                                               "\x80",
                                               "\x81",
                                               "\x8E",
                                               "\x8F",
                                               "\xA1",
                                               "\xDF",
                                               "\xE0",
                                               "\xFE",
                                               "\xFF",
                                               "\x81\x30",
                                               "\x95\x39\xEF\x34",
                                               "\xB0\xA1",
                                               "\x88\x62",
                                               "\xE3\x81\x82",
                                               "\xF0\x9F\x92\xA9",
                                               "\xD8\x3D\xDC\xA9",
                                               "\xCF\xF0\xE8"};

TEST_P(DecoderTwin, AgreesOnEveryShortText) {
  forEachText(kPieces, 3, [](const std::string& text) {
    if (!HasFatalFailure()) expectSame(text);
  });
}

TEST_P(DecoderTwin, AgreesOnRandomTexts) {
  RandomTexts random;
  for (std::size_t i = randomRuns(300, 100000); i > 0 && !HasFatalFailure(); --i) {
    std::string text = random.textOfRuns(kPieces, 200);
    for (std::size_t n = random.number(20); n > 0; --n) {
      text += static_cast<char>(random.number(256));
    }
    expectSame(random.mutated(text, 10));
  }
}

// What a character needs beyond a slice of the input is there.
TEST_P(DecoderTwin, AgreesWhereverASliceEnds) {
  for (const std::string_view piece : kPieces) {
    for (std::size_t before = 1018; before <= 1026; ++before) {
      expectSame(std::string(before, 'x') + std::string(piece) + std::string(piece) + "yz");
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, DecoderTwin, testing::ValuesIn(kAllEncodings), testNameOf);

// All four bytes of gb18030, the third and the last one thinned out.
TEST(Gb18030Decoder, AgreesWithItsTwinOnFourBytes) {
  for (int first = 0x81; first <= 0xFE; ++first) {
    for (int second = 0x30; second <= 0x39; ++second) {
      std::string text;
      for (int third = 0x80; third <= 0xFF; ++third) {
        for (const int fourth : {0x2F, 0x30, 0x37, 0x39, 0x3A}) {
          for (const int byte : {first, second, third, fourth}) text += static_cast<char>(byte);
        }
      }
      ASSERT_EQ(decoded(text, Encoding::gb18030), reference::decode(text, Encoding::gb18030));
    }
  }
}

TEST(EucJpDecoder, AgreesWithItsTwinOnThreeBytes) {
  for (int second = 0x80; second <= 0xFF; ++second) {
    std::string text;
    for (int third = 0x00; third <= 0xFF; ++third) {
      for (const int byte : {0x8F, second, third}) text += static_cast<char>(byte);
    }
    ASSERT_EQ(decoded(text, Encoding::eucJp), reference::decode(text, Encoding::eucJp));
  }
}

}  // namespace
}  // namespace pagescan::tests
