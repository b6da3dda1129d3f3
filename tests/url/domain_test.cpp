// Domains beside their slow twin, character by character and at random.
#include "url/domain.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reference/url/percent.h"
#include "reference/url/url.h"
#include "support/generated_texts.h"
#include "url/host.h"
#include "url/punycode.h"
#include "url/unicode.h"

namespace pagescan::tests {
namespace {

using reference::CodePoints;

constexpr char32_t kEndOfUnicode = 0x110000;

bool isSurrogate(char32_t c) {
  return c >= 0xD800 && c < 0xE000;
}

std::optional<std::string> hostOf(const CodePoints& domain) {
  std::string out;
  if (!appendHost(out, reference::encodeUtf8(domain), true)) return std::nullopt;
  return out;
}

void expectSame(const CodePoints& domain) {
  const std::optional<CodePoints> wanted = reference::parseHost(domain, false);
  ASSERT_EQ(hostOf(domain), wanted ? std::optional(reference::encodeUtf8(*wanted)) : std::nullopt)
      << testing::PrintToString(reference::encodeUtf8(domain));
}

TEST(Domain, AgreesWithTheTwinOnEveryCharacter) {
  for (char32_t c = 0x80; c < kEndOfUnicode; c += static_cast<char32_t>(kSanitizedShare)) {
    if (isSurrogate(c)) continue;
    expectSame({U'a', c});
    if (idnaStatusOf(c) == IdnaStatus::disallowed && !isDeepRun()) continue;
    expectSame(CodePoints(1, c));
    expectSame({U'\u05D0', c});
  }
}

TEST(Domain, AgreesWithTheTwinOnRandomDomains) {
  RandomTexts random;
  const std::vector<std::string_view> pieces = {
      "a",          "A",      "1",      ".",      "-",      "xn--",   "xn--zca", "xn--4db",
      "xn--a",      "\u00DF", "\u05D0", "\u05D1", "\u0627", "\u0661", "\u0660",  "\u200C",
      "\u200D",     "\u094D", "\u0915", "\u0308", "\u0301", "\u0327", "e",       "\u3002",
      "\uFF0E",     "\u00AD", "\u1100", "\u1161", "\u11A8", "\uAC00", "\u0644",  "\u064E",
      "\U0001F600", "\u2260", "=",      "\u0338", "!",      "+",      "\uFFFD",  "%C3%9F",
      "%2E",        "\u1E9E", "\u0378", "\u0640", "\u06DD"};
  for (std::size_t i = randomRuns(50000, 3000000); i > 0; --i) {
    expectSame(reference::decodeUtf8(random.text(pieces, 9)));
  }
}

TEST(Domain, AgreesWithTheTwinOnRandomCharacters) {
  RandomTexts random;
  for (std::size_t i = randomRuns(20000, 2000000); i > 0; --i) {
    CodePoints domain;
    const std::size_t block = random.number(0x1100) * 0x100;
    for (std::size_t count = 1 + random.number(6); count > 0; --count) {
      const auto c =
          static_cast<char32_t>(block / (1 + random.number(2) * 16) + random.number(0x100));
      if (!isSurrogate(c)) domain += c;
    }
    if (!domain.empty()) expectSame(domain);
  }
}

TEST(Normalization, AgreesWithTheTwin) {
  // Planes beyond these hold no characters that decompose or combine.
  for (char32_t c = 0; c < (isDeepRun() ? kEndOfUnicode : 0x30000); ++c) {
    std::u32string text = {c, U'\u0301', U'\u0327', U'\u0308', c};
    const CodePoints wanted = reference::toNfc(text);
    normalize(text);
    ASSERT_EQ(text, wanted) << std::hex << static_cast<std::uint32_t>(c);
  }
}

TEST(Normalization, AgreesWithTheTwinOnRandomTexts) {
  RandomTexts random;
  const CodePoints pieces =
      U"aeou\u0300\u0301\u0302\u0304\u0307\u0308\u0323\u0327\u0328\u0338\u0345\u1100\u1161\u11A7"
      U"\u11A8\uAC00\uAC01\u0915\u093C\u0958\u09C7\u09BE\u1E69\u212B\u1F82\u0F71\u0F72";
  for (std::size_t i = randomRuns(50000, 3000000); i > 0; --i) {
    std::u32string text;
    for (std::size_t count = random.number(9); count > 0; --count) {
      text += pieces[random.number(pieces.size())];
    }
    const CodePoints wanted = reference::toNfc(text);
    normalize(text);
    ASSERT_EQ(text, wanted);
    std::u32string again = text;
    normalize(again);
    ASSERT_EQ(again, text);
  }
}

TEST(Punycode, ReadsWhatItWrites) {
  RandomTexts random;
  for (std::size_t i = randomRuns(20000, 1000000); i > 0; --i) {
    std::u32string label;
    const std::size_t spread = std::size_t{1} << (7 + random.number(14));
    for (std::size_t count = 1 + random.number(20); count > 0; --count) {
      label += static_cast<char32_t>(0x61 + random.number(spread) % (kEndOfUnicode - 0x61));
    }
    std::string out;
    ASSERT_TRUE(appendPunycode(out, label));
    ASSERT_EQ(out, reference::encodeUtf8(*reference::encodePunycode(label)));
    ASSERT_EQ(decodedPunycode(reference::decodeUtf8(out)), label);
  }
}

TEST(Punycode, ReadsWhatTheTwinReads) {
  RandomTexts random;
  const std::vector<std::string_view> pieces = {"a", "b", "z",     "0",     "9",
                                                "-", "k", "99999", "\u00DF"};
  for (std::size_t i = randomRuns(50000, 3000000); i > 0; --i) {
    const CodePoints text = reference::decodeUtf8(random.text(pieces, 8));
    ASSERT_EQ(decodedPunycode(text), reference::decodePunycode(text));
  }
}

// Browsers' limits: 1,000 units of UTF-16 to write, 2,000 bytes to read.
TEST(Punycode, RefusesLongLabels) {
  std::string out;
  EXPECT_TRUE(appendPunycode(out, std::u32string(1000, U'\u00DF')));
  EXPECT_FALSE(appendPunycode(out, std::u32string(1001, U'\u00DF')));
  EXPECT_TRUE(appendPunycode(out, std::u32string(500, U'\U0001F600')));
  EXPECT_FALSE(appendPunycode(out, std::u32string(501, U'\U0001F600')));
  EXPECT_TRUE(decodedPunycode(std::u32string(1998, U'a') + U"-a"));
  EXPECT_FALSE(decodedPunycode(std::u32string(1999, U'a') + U"-a"));
}

TEST(Domain, TakesTheVersionOfUnicodeThatItsTablesHave) {
  EXPECT_EQ(unicodeVersion(), "17.0.0");
}

}  // namespace
}  // namespace pagescan::tests
