// Decoded pieces of a page and their maps.
#include "page/decoded_text.h"

#include <gtest/gtest.h>

#include <string>

#include "encoding/decoder.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using internal::appendPiece;
using internal::appendTextOf;
using internal::decodeAttributeValue;
using internal::DecodedText;
using internal::decodeText;
using internal::Encoding;
using internal::TextForm;

// The bytes of the characters that a part of the text is made of.
std::string_view rawOf(const DecodedText& text, std::string_view raw, std::string_view part) {
  const std::size_t begin = text.text().find(part);
  if (begin == std::string_view::npos) return "(none)";
  const Span span = text.rawSpan(
      {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(begin + part.size())});
  return raw.substr(span.begin, span.end - span.begin);
}

struct Row {
  Here here;
  Encoding encoding;
  TextForm form;
  std::string_view raw;
  std::string_view text;
  std::string_view part = "";  // a part of it
  std::string_view rawPart = "";
};

constexpr auto kUtf8 = Encoding::utf8;
constexpr auto kLatin = Encoding::windows1252;
constexpr auto kValue = TextForm::attributeValue;

constexpr Row kRows[] = {
    {HERE, kUtf8, kValue, "", ""},
    {HERE, kUtf8, kValue, "a/b?c", "a/b?c", "b?", "b?"},
    {HERE, kUtf8, kValue, "caf\xC3\xA9.png", "caf\xC3\xA9.png", ".png", ".png"},
    {HERE, kUtf8, kValue, "a&amp;b", "a&b", "&b", "&amp;b"},
    {HERE, kUtf8, kValue, "a&amp;b", "a&b", "a&", "a&amp;"},
    {HERE, kUtf8, kValue, "&amp;&#38;&amp=x&x", "&&&amp=x&x", "&&&", "&amp;&#38;&"},
    {HERE, kUtf8, kValue, "&fjlig;1", "fj1", "1", "1"},
    {HERE, kUtf8, kValue, "x\r\ny\rz\nw", "x\ny\nz\nw", "\ny", "\r\ny"},
    {HERE, kUtf8, kValue, "x&#13;\n", "x\r\n", "\r", "&#13;"},
    {HERE,
     kUtf8,
     kValue,
     {"a\0b", 3},
     "a\xEF\xBF\xBD"
     "b",
     "\xEF\xBF\xBD",
     {"\0", 1}},
    {HERE, kUtf8, kValue,
     "a\xFF"
     "b",
     "a\xEF\xBF\xBD"
     "b",
     "\xEF\xBF\xBD", "\xFF"},
    {HERE, kUtf8, kValue, "\xC3", "\xEF\xBF\xBD", "\xEF\xBF\xBD", "\xC3"},
    {HERE, kUtf8, kValue, "\xE2\x82\xAC\xFF\xC3\xA9/", "\xE2\x82\xAC\xEF\xBF\xBD\xC3\xA9/",
     "\xC3\xA9/", "\xC3\xA9/"},
    {HERE, kLatin, kValue, "\xE9\x80&amp;\xE9.", "\xC3\xA9\xE2\x82\xAC&\xC3\xA9.", "&\xC3\xA9",
     "&amp;\xE9"},
    {HERE, kLatin, kValue, "\xE9\x80x", "\xC3\xA9\xE2\x82\xACx", "\xE2\x82\xACx", "\x80x"},
    {HERE, Encoding::shiftJis, kValue, "\x83{/\x95\\a",
     "\xE3\x83\x9C/\xE8\xA1\xA8"
     "a",
     "\xE8\xA1\xA8", "\x95\\"},
    {HERE, Encoding::shiftJis, kValue, "\x95\\a\x95\\b&lt",
     "\xE8\xA1\xA8"
     "a\xE8\xA1\xA8"
     "b<",
     "a\xE8\xA1\xA8", "a\x95\\"},
    {HERE, Encoding::gb18030, kValue,
     "\x81"
     "0\x81"
     "0=",
     "\xC2\x80=", "\xC2\x80",
     "\x81"
     "0\x81"
     "0"},
    // At the end of a page all of an unfinished character is one.
    {HERE, Encoding::gb18030, TextForm::rawText,
     "x\x81"
     "0\x81",
     "x\xEF\xBF\xBD", "\xEF\xBF\xBD",
     "\x81"
     "0\x81"},
    {HERE, kUtf8, TextForm::rawText, "a&amp;\r\n", "a&amp;\n", "&amp;", "&amp;"},
    {HERE, kUtf8, TextForm::text, "&ampx", "&x", "&x", "&ampx"},
};

TEST(DecodedText, KnowsTheBytesOfItsCharacters) {
  forEachPlacement(kRows, [](const Row& row, Placement& placement) {
    const std::string_view raw = placement.bytes(row.raw);
    DecodedText text;
    decodeText(raw, row.form, row.encoding, text);
    ASSERT_EQ(text.text(), row.text);
    std::string plain;
    appendTextOf(plain, raw, 0, raw.size(), row.form, row.encoding);
    ASSERT_EQ(plain, row.text);
    if (!row.part.empty()) {
      EXPECT_EQ(rawOf(text, raw, row.part), row.rawPart);
    }
    EXPECT_EQ(text.rawBegin(text.text().size()), raw.size());
    EXPECT_EQ(text.rawEnd(text.text().size()), raw.size());
    EXPECT_EQ(text.rawBegin(0), 0U);
    EXPECT_EQ(text.rawEnd(0), 0U);
  });
}

TEST(DecodedText, IsAViewWhereTheValueIsItsOwnDecoding) {
  DecodedText text;
  for (const std::string_view raw : {"https://example.com/a?b=c#d", "caf\xC3\xA9"}) {
    decodeAttributeValue(raw, Encoding::utf8, text);
    EXPECT_EQ(text.text().data(), raw.data());
    EXPECT_EQ(text.text(), raw);
  }
}

TEST(DecodedText, IsStartedAgain) {
  DecodedText text;
  decodeAttributeValue("a&amp;b", Encoding::utf8, text);
  decodeAttributeValue("xy", Encoding::utf8, text);
  EXPECT_EQ(text.text(), "xy");
  EXPECT_EQ(text.rawBegin(1), 1U);
  decodeAttributeValue("", Encoding::utf8, text);
  EXPECT_EQ(text.text(), "");
  EXPECT_EQ(text.rawSpan({0, 0}).end, 0U);
}

TEST(DecodedText, JoinsPiecesOfAPage) {
  constexpr std::string_view kPage = "ab<!-- -->c&lt;d<![CDATA[&lt;]]>e";
  DecodedText text;
  text.start(kPage);
  appendPiece(text, kPage, 0, 2, TextForm::text, Encoding::utf8);
  appendPiece(text, kPage, 10, 16, TextForm::text, Encoding::utf8);
  appendPiece(text, kPage, 25, 29, TextForm::rawText, Encoding::utf8);
  appendPiece(text, kPage, 32, 33, TextForm::text, Encoding::utf8);
  ASSERT_EQ(text.text(), "abc<d&lt;e");
  EXPECT_EQ(rawOf(text, kPage, "bc"), "b<!-- -->c");
  EXPECT_EQ(rawOf(text, kPage, "ab"), "ab");
  EXPECT_EQ(rawOf(text, kPage, "<d&"), "&lt;d<![CDATA[&");
  EXPECT_EQ(rawOf(text, kPage, "e"), "e");
}

// The same bytes in the middle of a page and at its end.
TEST(DecodedText, EndsAnUnfinishedCharacterWhereThePageEnds) {
  constexpr std::string_view kPage =
      "x\x81"
      "0<x\x81"
      "0";
  DecodedText text;
  text.start(kPage);
  appendPiece(text, kPage, 0, 3, TextForm::rawText, Encoding::gb18030);
  appendPiece(text, kPage, 4, 7, TextForm::rawText, Encoding::gb18030);
  EXPECT_EQ(text.text(),
            "x\xEF\xBF\xBD"
            "0x\xEF\xBF\xBD");
  EXPECT_EQ(text.rawBegin(4), 2U);
  EXPECT_EQ(text.rawBegin(6), 5U);
  std::string plain;
  appendTextOf(plain, kPage, 0, 3, TextForm::rawText, Encoding::gb18030);
  appendTextOf(plain, kPage, 4, 7, TextForm::rawText, Encoding::gb18030);
  EXPECT_EQ(plain, text.text());
}

// Each character of every encoding, and what stands around it, keeps its place.
TEST(DecodedText, DecodesEveryEncodingAsItsDecoderDoes) {
  for (int index = 0; index < internal::kEncodingCount; ++index) {
    const auto encoding = static_cast<Encoding>(index);
    if (internal::needsConversion(encoding) || encoding == Encoding::replacement) continue;
    for (int lead = 0x80; lead < 0x100; ++lead) {
      for (int trail = 0x21; trail < 0x100; ++trail) {
        if (trail == '&') continue;
        const std::string raw = {'(', static_cast<char>(lead), static_cast<char>(trail), ')'};
        std::string expected;
        internal::appendDecoded(expected, raw, encoding);
        DecodedText text;
        decodeAttributeValue(raw, encoding, text);
        ASSERT_EQ(text.text(), expected) << nameOf(encoding) << ' ' << lead << ' ' << trail;
        const auto size = static_cast<std::uint32_t>(expected.size());
        ASSERT_EQ(text.rawBegin(size - 1), 3U);
        ASSERT_EQ(text.rawSpan({1, size - 1}).begin, 1U);
        ASSERT_EQ(text.rawSpan({1, size - 1}).end, 3U);
      }
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
