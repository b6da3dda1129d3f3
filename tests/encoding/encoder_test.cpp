// Encoders: single rules in a table, and everything beside the slow twin.
#include "encoding/encoder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "encodings.h"
#include "reference/encoding/encode.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

// With references for what the encoding does not have, as the twin writes them.
std::string encoded(std::u32string_view text, Encoding encoding) {
  std::string out;
  QueryEncoder encoder(encoding);
  for (const char32_t c : text) {
    if (encoder.append(c, out)) continue;
    out += "&#" + std::to_string(static_cast<unsigned>(encoder.refused(c))) + ";";
  }
  encoder.finish(out);
  return out;
}

struct EncodingCase {
  Here here;
  Encoding encoding;
  std::u32string_view text;
  std::string_view expected;
};
constexpr EncodingCase kEncodings[] = {
    {HERE, Encoding::utf8, U"a\u00E9\u20AC\U0001F4A9", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xA9"},
    {HERE, Encoding::utf16Le, U"\u00E9", "\xC3\xA9"},
    {HERE, Encoding::replacement, U"\u00E9", "\xC3\xA9"},
    {HERE, Encoding::windows1252, U"\u20AC\u0081\u0100", "\x80\x81&#256;"},
    {HERE, Encoding::windows874, U"\uFFFD\U00010080", "&#65533;&#65664;"},
    {HERE, Encoding::xUserDefined, U"\uF780\uF7FF\u00E9", "\x80\xFF&#233;"},
    {HERE, Encoding::gbk, U"\u20AC\u4F60\u0080", "\x80\xC4\xE3&#128;"},
    {HERE, Encoding::gb18030, U"\u20AC\u0080\U0010FFFF",
     "\xA2\xE3\x81\x30\x81\x30\xE3\x32\x9A\x35"},
    {HERE, Encoding::gb18030, U"\uE5E5\uE7C7\uE78D\uFE10",
     "&#58853;\x81\x35\xF4\x37\xA6\xD9\xA6\xD9"},
    {HERE, Encoding::gbk, U"\uE864\uE5E5\uE7C7", "\xFE\xA0&#58853;&#59335;"},
    // Of two pointers the first, except for six characters the last; no Hong Kong extensions.
    {HERE, Encoding::big5, U"\u5140\u2550\u5345\u43F0", "\xA4\x61\xF9\xF9\xA4\xCA&#17392;"},
    {HERE, Encoding::eucJp, U"\u00A5\u203E\uFF71\u2212\u4E02", "\\~\x8E\xB1\xA1\xDD&#19970;"},
    {HERE, Encoding::shiftJis, U"\u0080\u00A5\u203E\uFF71\u2212", "\x80\\~\xB1\x81\x7C"},
    {HERE, Encoding::shiftJis, U"\u7E8A\u2252\uE000", "\xFA\x5C\x81\xE0&#57344;"},
    {HERE, Encoding::eucKr, U"\uAC00\uAC02\u00E9", "\xB0\xA1\x81\x41&#233;"},
    {HERE, Encoding::iso2022Jp, U"a\u65E5\u672C<", "a\x1B$BF|K\\\x1B(B<"},
    {HERE, Encoding::iso2022Jp, U"\u00A5a\\\u203E", "\x1B(J\\a\x1B(B\\\x1B(J~\x1B(B"},
    {HERE, Encoding::iso2022Jp, U"\uFF71\u2212", "\x1B$B%\"!]\x1B(B"},
    {HERE, Encoding::iso2022Jp, U"\u65E5\u00E9", "\x1B$BF|\x1B(B&#233;"},
    {HERE, Encoding::iso2022Jp, U"\u00A5\u00E9", "\x1B(J\\&#233;\x1B(B"},
    {HERE, Encoding::iso2022Jp, U"\u000E\u65E5\u001B", "&#65533;\x1B$BF|\x1B(B&#65533;"},
};

TEST(QueryEncoder, FollowsTheRules) {
  forEachRow(kEncodings, [](const EncodingCase& row) {
    EXPECT_EQ(encoded(row.text, row.encoding), row.expected);
  });
}

constexpr std::size_t kBeyondUnicode = 0x110000;

bool isSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDFFF;
}

class EncoderTwin : public testing::TestWithParam<Encoding> {};

// The twin searches its indexes from end to end: planes that are all alike are thinned out.
TEST_P(EncoderTwin, AgreesOnEveryCharacter) {
  const std::size_t step = inShortOrDeepRun(97, 1);
  for (std::size_t at = 0; at < kBeyondUnicode; at += at < 0x30000 ? kSanitizedShare : step) {
    const auto c = static_cast<char32_t>(at);
    if (isSurrogate(c)) continue;
    const std::u32string text(1, c);
    ASSERT_EQ(encoded(text, GetParam()), reference::encode(text, GetParam()))
        << nameOf(GetParam()) << " U+" << std::hex << static_cast<unsigned>(c);
  }
}

TEST_P(EncoderTwin, AgreesOnRandomTexts) {
  constexpr std::u32string_view kPieces =
      U"a\\~\u000E\u000F\u001B\u0080\u00A5\u00E9\u203E\u2212\u3042\u4E00\u65E5\uAC00\uFF71\uFFFD"
      U"\U0001F4A9\U00027B06";
  RandomTexts random;
  for (std::size_t i = randomRuns(300, 30000); i > 0; --i) {
    std::u32string text;
    for (std::size_t n = random.number(12); n > 0; --n)
      text += kPieces[random.number(kPieces.size())];
    ASSERT_EQ(encoded(text, GetParam()), reference::encode(text, GetParam()));
  }
}

INSTANTIATE_TEST_SUITE_P(, EncoderTwin, testing::ValuesIn(kAllEncodings), testNameOf);

}  // namespace
}  // namespace pagescan::tests
