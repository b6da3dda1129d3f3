// pagescan entities and utf8, run as a user would.
#include <random>

#include "tool/tool.h"

namespace pagescan::tests {
namespace {

using namespace std::string_literals;

TEST(Entities, DecodesToBytes) {
  EXPECT_EQ(outputOf({"entities"}, "AT&amp;T &eacute;&nbsp;&#160;&#08;&euro;\n"),
            "AT&T \xE9 \xA0\0&euro;\n"s);
  EXPECT_EQ(outputOf({"entities"}, ""), "");
}

TEST(Entities, WritesFilesOneAfterTheOther) {
  TemporaryFolder folder;
  EXPECT_EQ(outputOf({"entities", folder.file("a", "&lt;"), "-", folder.file("b", "&gt;")}, "\0"s),
            "<\0>"s);
}

TEST(Entities, FitIntoAPipe) {
  const ProgramResult result = runProgram(
      {"bash", "-c", "\"$0\" entities | \"$0\" utf8", PAGESCAN_TOOL_PATH}, "caf&eacute;");
  EXPECT_EQ(result.out, "caf\xC3\xA9");
}

TEST(Entities, BecomeUtf8InAPageOfUtf8) {
  EXPECT_EQ(
      outputOf({"entities", "--utf8"}, "\xC3\xA9\xFF &eacute;&lt;&#233;&#xE9;&#300;&none;&;&"),
      "\xC3\xA9\xFF \xC3\xA9<\xC3\xA9\xC3\xA9&#300;&none;&;&");
}

TEST(Entities, Utf8OfTextOfAsciiIsThatOfTheBytes) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const char* const kPieces[] = {"&", "#", "x", "9", "300;", "65;", "abc;", "amp;", "eacute;", ";"};
  std::string page;
  for (int i = 0; i < 20'000; ++i) page += kPieces[random() % std::size(kPieces)];
  std::string expected;
  for (const char byte : outputOf({"entities"}, page)) {
    const auto code = static_cast<unsigned char>(byte);
    if (code >= 0x80) expected.push_back(static_cast<char>(0xC0 | code >> 6));
    expected.push_back(static_cast<char>(code < 0x80 ? code : 0x80 | (code & 0x3F)));
  }
  EXPECT_EQ(outputOf({"entities", "--utf8"}, page), expected);
}

TEST(Utf8, ConvertsOnlyWhatNeedsIt) {
  EXPECT_EQ(outputOf({"utf8"}, "caf\xE9\n"), "caf\xC3\xA9\n");
  EXPECT_EQ(outputOf({"utf8"}, "caf\xC3\xA9\n"), "caf\xC3\xA9\n");
  EXPECT_EQ(outputOf({"utf8"}, ""), "");
  EXPECT_EQ(outputOf({"utf8", "--to", "ansi"}, "caf\xC3\xA9\n"), "caf\xE9\n");
  EXPECT_EQ(outputOf({"utf8", "--to", "ansi"}, "caf\xE9\n"), "caf\xE9\n");
  EXPECT_EQ(outputOf({"utf8", "--to", "utf8"}, "plain"), "plain");
}

TEST(Utf8, CheckTellsAndConvertsNothing) {
  TemporaryFolder folder;
  const struct {
    std::string bytes;
    const char* verdict;
  } rows[] = {
      {"", "ASCII"},
      {"plain", "ASCII"},
      {"caf\xC3\xA9", "UTF-8"},
      {"caf\xE9", "not UTF-8"},
      {"\xC3\xA9\xC3\xA9\xE9", "not UTF-8, taken for UTF-8"},
      {"\xC3\xA9\0\xE9"s, "not UTF-8"},
      {"\xF0\x9F\x98\x80", "UTF-8"},
  };
  for (const auto& row : rows) {
    const std::string file = folder.file("file", row.bytes);
    EXPECT_EQ(outputOf({"utf8", "--check", file}), file + ": " + row.verdict + "\n");
    EXPECT_EQ(outputOf({"utf8", "--check"}, row.bytes),
              std::string("standard input: ") + row.verdict + "\n");
  }
}

TEST(Utf8, EveryByteOfIso88591HasItsCharacter) {
  std::string bytes;
  std::string expected;
  for (int byte = 1; byte < 256; ++byte) {
    bytes.push_back(static_cast<char>(byte));
    if (byte < 0x80) {
      expected.push_back(static_cast<char>(byte));
    } else {
      expected.push_back(static_cast<char>(0xC0 | byte >> 6));
      expected.push_back(static_cast<char>(0x80 | (byte & 0x3F)));
    }
  }
  EXPECT_EQ(outputOf({"utf8"}, bytes), expected);
  EXPECT_EQ(outputOf({"utf8", "--to", "ansi"}, expected), bytes);
}

TEST(Utf8, AnyCodePageOfTheSystemWorks) {
  const std::string russian = "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82";  // Привет
  const std::string japanese = "\xE6\x97\xA5\xE6\x9C\xAC a \xE8\xAA\x9E";          // 日本 a 語
  const std::string kana = "\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86";                 // あいう
  const struct {
    const char* page;
    std::string text;
    std::string bytes;
  } rows[] = {
      {"WINDOWS-1251", russian, "\xCF\xF0\xE8\xE2\xE5\xF2"},
      {"KOI8-R", russian, "\xF0\xD2\xC9\xD7\xC5\xD4"},
      {"WINDOWS-1252", "\xE2\x82\xAC", "\x80"},
      {"SHIFT_JIS", kana, "\x82\xA0\x82\xA2\x82\xA4"},
      {"ISO-2022-JP", japanese, "\x1B$BF|K\\\x1B(B a \x1B$B8l\x1B(B"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.page);
    EXPECT_EQ(outputOf({"utf8", "--to", "ansi", "--code-page", row.page}, row.text), row.bytes);
    EXPECT_EQ(outputOf({"utf8", "--code-page", row.page}, row.bytes), row.text);
  }
}

TEST(Utf8, WhatDoesNotFitBecomesAQuestionMark) {
  const auto toAnsi = [](const std::string& text) {
    return outputOf({"utf8", "--to", "ansi"}, text);
  };
  const std::string good = "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9";
  const std::string four = "\xE9\xE9\xE9\xE9";
  EXPECT_EQ(toAnsi(good + "\xE2\x82\xAC!"), four + "?!");
  EXPECT_EQ(toAnsi(good + "\xF0\x9F\x98\x80!"), four + "?!");
  EXPECT_EQ(toAnsi(good + "\xE2\x82!"), four + "?!");  // cut short
  EXPECT_EQ(toAnsi(good + "a\x80!"), four + "a?!");    // a stray continuation byte
  EXPECT_EQ(toAnsi(good + "\xC3"), four + "?");
  EXPECT_EQ(outputOf({"utf8", "--to", "ansi", "--code-page", "ISO-2022-JP"},
                     "\xE6\x97\xA5\xC3\xA9\xC3\xA9\xE6\x97\xA5"),
            "\x1B$BF|\x1B(B??\x1B$BF|\x1B(B");
  // 0x81 is no character of this page, and a lead byte without a second one is none of that.
  EXPECT_EQ(outputOf({"utf8", "--code-page", "WINDOWS-1252"}, "a\x81z"), "a?z");
  EXPECT_EQ(outputOf({"utf8", "--code-page", "SHIFT_JIS"}, "a\x93"), "a?");
}

TEST(Utf8, NulBytesSeparateTexts) {
  EXPECT_EQ(outputOf({"utf8"}, "\0\xE9\0\xC3\xA9\0\0"s), "\0\xC3\xA9\0\xC3\xA9\0\0"s);
}

TEST(Utf8, LongTextsAreConvertedWhole) {
  std::string latin;
  std::string utf8;
  for (int i = 0; i < 300'000; ++i) {
    latin += "\xE9 ";
    utf8 += "\xC3\xA9 ";
  }
  EXPECT_TRUE(outputOf({"utf8"}, latin) == utf8);
  EXPECT_TRUE(outputOf({"utf8", "--to", "ansi"}, utf8) == latin);
}

}  // namespace
}  // namespace pagescan::tests
