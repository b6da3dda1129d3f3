// Character references against the suite of the HTML parsers' tests and tables of our own.
#include "page/character_references.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/placement.h"
#include "support/suite_cases.h"

namespace pagescan::tests {
namespace {

using internal::CharacterReference;
using internal::ClassifiedText;
using internal::classifyText;
using internal::isWhiteSpaceText;
using internal::readCharacterReference;
using internal::ReferenceContext;
using internal::TextClass;

CharacterReference read(std::string_view text, ReferenceContext context) {
  return readCharacterReference(text.data(), text.data() + text.size(), context);
}

struct Row {
  Here here;
  std::string_view text;
  std::size_t inText;  // bytes of the reference
  std::size_t inAttribute;
  char32_t first;
  char32_t second = 0;
};

constexpr Row kNames[] = {
    {HERE, "&", 0, 0, 0},
    {HERE, "&;", 0, 0, 0},
    {HERE, "&amp;", 5, 5, '&'},
    {HERE, "&amp", 4, 4, '&'},
    {HERE, "&amp=", 4, 0, '&'},
    {HERE, "&amp1", 4, 0, '&'},
    {HERE, "&ampx", 4, 0, '&'},
    {HERE, "&amp ", 4, 4, '&'},
    {HERE, "&amp;=", 5, 5, '&'},
    {HERE, "&AMP", 4, 4, '&'},
    {HERE, "&Amp;", 0, 0, 0},
    {HERE, "&notit;", 4, 0, 0xAC},
    {HERE, "&notin;", 7, 7, 0x2209},
    {HERE, "&notin", 4, 0, 0xAC},
    {HERE, "&lang", 0, 0, 0},
    {HERE, "&nGg;", 5, 5, 0x22D9, 0x338},
    {HERE, "&fjlig;", 7, 7, 'f', 'j'},
    {HERE, "&CounterClockwiseContourIntegral;", 33, 33, 0x2233},
    {HERE, "&CounterClockwiseContourIntegralx;", 0, 0, 0},
    {HERE, "&gtCounterClockwiseContourIntegralx;", 3, 0, '>'},
    {HERE, "&zzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzz;", 0, 0, 0},
};

constexpr Row kNumbers[] = {
    {HERE, "&#", 0, 0, 0},
    {HERE, "&#;", 0, 0, 0},
    {HERE, "&#x", 0, 0, 0},
    {HERE, "&#x;", 0, 0, 0},
    {HERE, "&#xg", 0, 0, 0},
    {HERE, "&#38;", 5, 5, '&'},
    {HERE, "&#38", 4, 4, '&'},
    {HERE, "&#38=", 4, 4, '&'},
    {HERE, "&#38a", 4, 4, '&'},
    {HERE, "&#x26;", 6, 6, '&'},
    {HERE, "&#X26g", 5, 5, '&'},
    {HERE, "&#0;", 4, 4, 0xFFFD},
    {HERE, "&#13;", 5, 5, 13},
    {HERE, "&#x80;", 6, 6, 0x20AC},
    {HERE, "&#x81;", 6, 6, 0x81},
    {HERE, "&#159;", 6, 6, 0x178},
    {HERE, "&#160;", 6, 6, 0xA0},
    {HERE, "&#xD7FF;", 8, 8, 0xD7FF},
    {HERE, "&#xD800;", 8, 8, 0xFFFD},
    {HERE, "&#xDFFF;", 8, 8, 0xFFFD},
    {HERE, "&#xE000;", 8, 8, 0xE000},
    {HERE, "&#xFFFE;", 8, 8, 0xFFFE},
    {HERE, "&#x10FFFF;", 10, 10, 0x10FFFF},
    {HERE, "&#x110000;", 10, 10, 0xFFFD},
    {HERE, "&#4294967334;", 13, 13, 0xFFFD},  // 38 in the low 32 bits
    {HERE, "&#99999999999999999999999999;", 29, 29, 0xFFFD},
    {HERE, "&#000000000000000000000000038;", 30, 30, '&'},
};

void checkRow(const Row& row, Placement& placement) {
  const std::string_view text = placement.bytes(row.text);
  const CharacterReference inText = read(text, ReferenceContext::text);
  EXPECT_EQ(inText.length, row.inText);
  if (row.inText != 0) {
    EXPECT_EQ(inText.first, row.first);
    EXPECT_EQ(inText.second, row.second);
  }
  const CharacterReference inAttribute = read(text, ReferenceContext::attribute);
  EXPECT_EQ(inAttribute.length, row.inAttribute);
  if (row.inAttribute != 0) {
    EXPECT_EQ(inAttribute.first, row.first);
    EXPECT_EQ(inAttribute.second, row.second);
  }
}

TEST(CharacterReference, NamesFollowTheStandard) {
  forEachPlacement(kNames, checkRow);
}

TEST(CharacterReference, NumbersFollowTheStandard) {
  forEachPlacement(kNumbers, checkRow);
}

std::u32string codePoints(const std::string& utf8) {
  std::u32string result;
  for (std::size_t at = 0; at < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[at++]);
    char32_t c = lead < 0x80   ? lead
                 : lead < 0xE0 ? lead & 0x1FU
                 : lead < 0xF0 ? lead & 15U
                               : lead & 7U;
    for (; at < utf8.size() && (static_cast<unsigned char>(utf8[at]) & 0xC0U) == 0x80; ++at) {
      c = c << 6 | (static_cast<unsigned char>(utf8[at]) & 0x3FU);
    }
    result += c;
  }
  return result;
}

// A text as it is decoded, references alone.
std::u32string decoded(const std::string& text, ReferenceContext context) {
  std::u32string result;
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at != end;) {
    const CharacterReference reference =
        *at == '&' ? readCharacterReference(at, end, context) : CharacterReference{};
    if (reference.length == 0) {
      result += static_cast<unsigned char>(*at++);
      continue;
    }
    result += reference.first;
    if (reference.second != 0) result += reference.second;
    at += reference.length;
  }
  return result;
}

void checkSuite(const std::string& file, std::size_t least) {
  const nlohmann::json suite = suiteCases(PAGESCAN_SHARED_DIR, "html5lib/tokenizer/" + file);
  if (suite.is_null()) GTEST_SKIP() << "the suites are not beside the project";
  std::size_t count = 0;
  for (const nlohmann::json& one : suite["tests"]) {
    const std::string input = one["input"];
    std::string output;
    for (const nlohmann::json& token : one["output"]) {
      if (token[0] == "Character") output += token[1].get<std::string>();
    }
    EXPECT_EQ(decoded(input, ReferenceContext::text), codePoints(output)) << input;
    ++count;
  }
  EXPECT_GE(count, least);
}

TEST(CharacterReference, NamesAgreeWithTheSuite) {
  checkSuite("namedEntities.test", 4210);
}

TEST(CharacterReference, NumbersAgreeWithTheSuite) {
  checkSuite("numericEntities.test", 336);
}

struct ClassRow {
  Here here;
  std::string_view text;
  TextClass kind;
  std::size_t length;
};

constexpr ClassRow kClasses[] = {
    {HERE, " ", TextClass::whiteSpace, 1},
    {HERE, " \t\n\f\rx", TextClass::whiteSpace, 5},
    {HERE, "&#32;&Tab;&NewLine;&#x9&#13;&nbsp;", TextClass::whiteSpace, 28},
    {HERE, "&#11;", TextClass::other, 5},
    {HERE, "&#0;", TextClass::other, 4},
    {HERE, {"\0\0 ", 3}, TextClass::nul, 2},
    {HERE, {" \0", 2}, TextClass::whiteSpace, 1},
    {HERE, {"xy\0", 3}, TextClass::other, 2},
    {HERE, "& ", TextClass::other, 1},
    {HERE, "\xC2\xA0", TextClass::other, 2},
};

TEST(ClassifyText, TellsWhiteSpaceAndNulFromOtherText) {
  forEachPlacement(kClasses, [](const ClassRow& row, Placement& placement) {
    const ClassifiedText found = classifyText(placement.bytes(row.text));
    EXPECT_EQ(found.kind, row.kind);
    EXPECT_EQ(found.length, row.length);
  });
}

TEST(ClassifyText, KnowsTextOfWhiteSpaceAlone) {
  EXPECT_TRUE(isWhiteSpaceText(""));
  EXPECT_TRUE(isWhiteSpaceText(" &#32; \n"));
  EXPECT_FALSE(isWhiteSpaceText(" x"));
  EXPECT_FALSE(isWhiteSpaceText("x "));
  EXPECT_FALSE(isWhiteSpaceText(std::string_view("\0", 1)));
}

}  // namespace
}  // namespace pagescan::tests
