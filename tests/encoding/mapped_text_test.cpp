#include "encoding/mapped_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "encoding/decoder.h"
#include "encodings.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

struct MapCase {
  Here here;
  Encoding encoding;
  std::string_view bytes;
  std::string_view piece;     // of the text
  std::string_view expected;  // its bytes
};
constexpr MapCase kMaps[] = {
    {HERE, Encoding::utf16Le, "<\0a\0>\0"sv, "a", "a\0"sv},
    {HERE, Encoding::utf16Be, "\0<\xD8\x3D\xDC\xA9\0>"sv, "\U0001F4A9", "\xD8\x3D\xDC\xA9"},
    {HERE, Encoding::utf16Be, "\0<\xD8\x3D\xDC\xA9\0>"sv, "\U0001F4A9>", "\xD8\x3D\xDC\xA9\0>"sv},
    {HERE, Encoding::utf16Le, "a\0b"sv, "\uFFFD", "b"},
    // An escape sequence belongs to the character after it.
    {HERE, Encoding::iso2022Jp, "<\x1B$BF|K\\\x1B(B>", "日", "\x1B$BF|"},
    {HERE, Encoding::iso2022Jp, "<\x1B$BF|K\\\x1B(B>", "本", "K\\"},
    {HERE, Encoding::iso2022Jp, "<\x1B$BF|K\\\x1B(B>", "日本", "\x1B$BF|K\\"},
    {HERE, Encoding::iso2022Jp, "<\x1B$BF|K\\\x1B(B>", "本>", "K\\\x1B(B>"},
    {HERE, Encoding::iso2022Jp, "<\x1B$BF|K\\\x1B(B>", "<", "<"},
    {HERE, Encoding::iso2022Jp, "a\x1B(B\x1B(Jb", "\uFFFD", "\x1B(B\x1B(J"},
    {HERE, Encoding::iso2022Jp, "a\x1B(B", "a", "a"},  // the last one to none
    {HERE, Encoding::shiftJis, "\x93\xFA<\xB1", "\uFF71", "\xB1"},
    {HERE, Encoding::big5, "a\x88\x62z", "\u00CA\u0304", "\x88\x62"},
    {HERE, Encoding::gb18030, "\x81\x30\x81\x30z", "z", "z"},
    {HERE, Encoding::replacement, "abc", "\uFFFD", "abc"},
    {HERE, Encoding::windows1252, "caf\xE9 ", "\u00E9", "\xE9"},
};

TEST(MappedText, LeadsBackToTheBytesOfACharacter) {
  forEachPlacement(kMaps, [](const MapCase& row, Placement& place) {
    const std::string_view bytes = place.bytes(row.bytes);
    const MappedText mapped(bytes, row.encoding);
    const std::size_t at = mapped.text().find(row.piece);
    ASSERT_NE(at, std::string_view::npos);
    const MappedText::Range raw = mapped.rawRange(at, at + row.piece.size());
    EXPECT_EQ(bytes.substr(raw.begin, raw.end - raw.begin), row.expected);
  });
}

TEST(MappedText, GivesAnEmptyRangeAfterTheCharacterBefore) {
  const MappedText mapped("a\x1B$BF|\x1B(B", Encoding::iso2022Jp);
  const MappedText::Range raw = mapped.rawRange(1, 1);
  EXPECT_EQ(raw.begin, 1U);
  EXPECT_EQ(raw.end, 1U);
}

TEST(MappedText, LeavesOutAByteOrderMark) {
  const MappedText mapped("\xFF\xFE<\0"sv, Encoding::utf16Le, 2);
  EXPECT_EQ(mapped.text(), "<");
  EXPECT_EQ(mapped.rawEnd(0), 2U);
  EXPECT_EQ(mapped.rawBegin(0), 2U);
  EXPECT_EQ(mapped.rawBegin(1), 4U);
}

TEST(MappedText, IsEmptyForNoBytes) {
  for (const Encoding encoding : kAllEncodings) {
    const MappedText mapped("", encoding, 3);
    EXPECT_EQ(mapped.text(), "");
    EXPECT_EQ(mapped.rawBegin(0), 0U);
    EXPECT_EQ(mapped.rawEnd(0), 0U);
  }
}

class MappedTextOf : public testing::TestWithParam<Encoding> {};

// The end of a text in the middle of four bytes is one error, wherever it is; elsewhere these may
// be several. A line end keeps them apart.
std::string decodedUpTo(std::size_t end, std::string_view bytes, Encoding encoding) {
  const bool mayBeFour = encoding == Encoding::gbk || encoding == Encoding::gb18030;
  const bool isWithin = mayBeFour && end < bytes.size();
  std::string text;
  appendDecoded(text, std::string(bytes.substr(0, end)) + (isWithin ? "\n" : ""), encoding);
  if (isWithin) text.pop_back();
  return text;
}

// The bytes up to the end of a character decode to the text up to there, and characters follow each
// other without a gap: that says where each one stands.
void expectRightMap(const std::string& bytes, Encoding encoding) {
  const MappedText mapped(bytes, encoding);
  std::string whole;
  appendDecoded(whole, bytes, encoding);
  ASSERT_EQ(mapped.text(), whole);
  std::size_t characterEnd = 0;  // in the text
  std::size_t rawEnd = 0;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    const std::size_t begin = mapped.rawBegin(at);
    if (begin == rawEnd) {  // a new character
      characterEnd = at;
      ASSERT_EQ(mapped.textAt(begin), at);
      rawEnd = mapped.rawEnd(at + 1);
      ASSERT_GT(rawEnd, begin);
    }
    ASSERT_EQ(mapped.rawEnd(at + 1), rawEnd) << at;
    if (mapped.rawBegin(at + 1) == begin) continue;
    ASSERT_EQ(decodedUpTo(rawEnd, bytes, encoding), whole.substr(0, at + 1))
        << testing::PrintToString(bytes);
    ASSERT_LE(characterEnd, at);
  }
  ASSERT_EQ(mapped.textAt(bytes.size()), whole.size());
}

const std::vector<std::string_view> kPieces = {"a",
                                               "<b>",
                                               " ",
                                               "\n",
                                               "\x1B",
                                               "\x1B(B",
                                               "\x1B(J",
                                               "\x1B(I",
                                               "F|",
                                               "\x1B$B",
                                               "\x80",
                                               "\x81\x30",
                                               "\x8F",
                                               "\xB0\xA1",
                                               "\xFF",
                                               "\x88\x62",
                                               "\xD8\x3D",
                                               "\xDC\xA9",
                                               "\x3D\xD8\xA9\xDC",
                                               "\x95\x39\xEF\x34",
                                               "\xE3\x81\x82"};

TEST_P(MappedTextOf, HoldsOnEveryShortText) {
  forEachText(kPieces, 3, [](const std::string& text) {
    if (!HasFatalFailure()) expectRightMap(text, GetParam());
  });
}

TEST_P(MappedTextOf, HoldsOnRandomTexts) {
  RandomTexts random;
  for (std::size_t i = randomRuns(20, 2000); i > 0 && !HasFatalFailure(); --i) {
    expectRightMap(random.textOfRuns(kPieces, 60), GetParam());
  }
}

INSTANTIATE_TEST_SUITE_P(, MappedTextOf, testing::ValuesIn(kAllEncodings), testNameOf);

}  // namespace
}  // namespace pagescan::tests
