// pagescan encode, decode and flavour, run as a user would.
#include "tool/tool.h"

namespace pagescan::tests {
namespace {

using namespace std::string_literals;

std::string everyByte() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  return bytes;
}

TEST(Encode, WritesEachFlavour) {
  const std::string text = "a b@~,%A\n";
  const struct {
    const char* flavour;
    const char* expected;
  } rows[] = {
      {"none", "a b@~,%A\n"},
      {"browser", "a+b@%7E%2C%25A%0A"},
      {"escape", "a%20b@%7E%2C%25A%0A"},
      {"uri", "a%20b@~%2C%25A%0A"},
      {"uri-component", "a%20b%40~%2C%25A%0A"},
      {"browser-sign", "a+b%40%7E%2C%25A%0A"},
      {"chrome", "a+b%40~%2C%25A%0A"},
      {"chrome94", "a%20b@~,%A%0A"},
      {"siebel", "a%20b%40%7e,%25A%0a"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(outputOf({"encode", "--flavour", row.flavour}, text), row.expected) << row.flavour;
  }
}

TEST(Encode, TextsOnTheCommandLineGiveOneLineEach) {
  EXPECT_EQ(outputOf({"encode", "--flavour", "browser", "a b", "", "\xE9", "&#25;0A"}, "unread"),
            "a+b\n\n%E9\n%0A\n");
}

TEST(Encode, TakesOptionsAfterTheTexts) {
  EXPECT_EQ(outputOf({"encode", "a b", "--flavour=escape", "c d"}), "a%20b\nc%20d\n");
}

TEST(Encode, StandardInputIsOneTextByteByByte) {
  EXPECT_EQ(outputOf({"encode", "--flavour", "uri"}, ""), "");
  EXPECT_EQ(outputOf({"encode", "--flavour", "none"}, everyByte()), everyByte());
  EXPECT_EQ(outputOf({"encode", "--flavour", "siebel"}, "\0\n\n"s), "%00%0a%0a");
}

TEST(Encode, DecodingAndEncodingUndoEachOther) {
  // Where "+" stays as it is, decoding takes it for a blank.
  for (const char* flavour : {"browser", "uri-component", "browser-sign", "chrome", "siebel"}) {
    const std::string encoded = outputOf({"encode", "--flavour", flavour}, everyByte());
    const std::string decoded = outputOf({"decode", "--flavour", flavour}, encoded);
    EXPECT_EQ(outputOf({"encode", "--flavour", flavour}, decoded), encoded) << flavour;
  }
}

TEST(Encode, LinesGiveALineEach) {
  EXPECT_EQ(outputOf({"encode", "--flavour", "browser", "--lines"}, "a b\n\nc&d\r\n\xE9"),
            "a+b\n\nc%26d\n%E9\n");
  EXPECT_EQ(outputOf({"decode", "--flavour", "browser", "--lines"}, "a+b\n%26\n"), "a b\n&\n");
  EXPECT_EQ(outputOf({"encode", "--flavour", "browser", "--lines"}, ""), "");
}

TEST(Decode, LeavesThePlaceholderWhereAControlByteWouldCome) {
  EXPECT_EQ(outputOf({"decode", "--flavour", "browser", "a+b%41", "%0A", "%zz", "abc%4", "%2541"}),
            "a bA\n&#25;0A\n&#25;zz\nabc%4\n%41\n");
  EXPECT_EQ(outputOf({"decode", "--flavour", "siebel", "a+b%41"}), "a+bA\n");
  EXPECT_EQ(outputOf({"decode", "--flavour", "none", "a+b"}), "a b\n");
}

TEST(Decode, StandardInputIsOneTextByteByByte) {
  EXPECT_EQ(outputOf({"decode", "--flavour", "uri"}, "%E9\n\0%41\r\n"s), "\xE9\n\0A\r\n"s);
}

TEST(Flavour, NamesTheFirstAndAllOfThem) {
  const struct {
    const char* text;
    const char* expected;
  } rows[] = {
      {"",
       "first: browser\nall: browser escape uri uri-component browser-sign chrome chrome94 "
       "siebel\n"},
      {"a=b%20c&d=e", "first: escape\nall: escape uri uri-component chrome94 siebel\n"},
      {"a=b+c&d=%40", "first: browser-sign\nall: browser-sign chrome siebel\n"},
      {"a=b c", "first: none\nall:\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(outputOf({"flavour", row.text}), row.expected);
}

TEST(Flavour, LinesGiveALineEach) {
  EXPECT_EQ(outputOf({"flavour", "--lines"}, "a=b%20c\r\na=b c\n"),
            "escape\tescape uri uri-component chrome94 siebel\nnone\t\n");
}

TEST(Flavour, JsonLinesHoldTheTextAndItsFlavours) {
  EXPECT_EQ(outputOf({"flavour", "--format", "jsonl", "a=b+\xE9\""}),
            "{\"text\":\"a=b+\xC3\xA9\\\"\",\"first\":\"none\",\"all\":[],\"bytes\":[\"text\"]}\n");
  EXPECT_EQ(outputOf({"flavour", "--format", "jsonl", "--lines"}, "a=b%2Fc\na=b+c\n"),
            "{\"text\":\"a=b%2Fc\",\"first\":\"browser\",\"all\":[\"browser\",\"uri-component\","
            "\"browser-sign\",\"chrome\"]}\n"
            "{\"text\":\"a=b+c\",\"first\":\"browser\",\"all\":[\"browser\",\"browser-sign\","
            "\"chrome\",\"chrome94\",\"siebel\"]}\n");
}

TEST(Flavour, OneLineEndAtTheEndOfStandardInputIsNotPartOfTheText) {
  const std::string plain = outputOf({"flavour", "a=b%20c"});
  for (const char* input : {"a=b%20c", "a=b%20c\n", "a=b%20c\r\n"}) {
    EXPECT_EQ(outputOf({"flavour"}, input), plain);
  }
  for (const char* input : {"a=b%20c\n\n", "a=b%20c\r", "a=b%20c\r\r\n"}) {
    EXPECT_EQ(outputOf({"flavour"}, input), "first: none\nall:\n");
  }
}

}  // namespace
}  // namespace pagescan::tests
