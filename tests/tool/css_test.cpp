// pagescan css, run as a user would.
#include "tool/tool.h"

namespace pagescan::tests {
namespace {

using namespace std::string_literals;

constexpr char kBase[] = "http://w1/d/style.css";

TEST(Css, WritesTheUrlsAsSourcesOfImages) {
  EXPECT_EQ(outputOf({"css", "--base", kBase}, "p{a:url(../b.gif)} @import \"a.css\";"),
            R"({"file":"-","tag":"IMG","attribute":"src","offset":8,"original":"../b.gif",)"
            R"("resolved":"http://w1/b.gif"})"
            "\n"
            R"({"file":"-","tag":"IMG","attribute":"src","offset":28,"original":"a.css",)"
            R"("resolved":"http://w1/d/a.css"})"
            "\n");
}

TEST(Css, AnEmptyTextGivesNoLines) {
  EXPECT_EQ(outputOf({"css"}, ""), "");
}

TEST(Css, DeclarationsAtTheBeginEndTheReadingAfterWhatWasFound) {
  const ProgramResult bare = pagescanTool({"css"}, "background:url(a.gif)");
  EXPECT_EQ(bare.status, 1);
  EXPECT_EQ(bare.out, "");
  EXPECT_EQ(bare.err,
            "pagescan: standard input: the text begins with a property's name: not read from its "
            "first url(...) on (try --declarations)\n");
  const ProgramResult found = pagescanTool({"css"}, "\"x\"url(a)y:url(z)");
  EXPECT_EQ(found.status, 1);
  EXPECT_EQ(recordsOf(found.out).size(), 1U) << found.out;
}

TEST(Css, OneFailureDoesNotStopTheNextFile) {
  TemporaryFolder folder;
  const std::string bad = folder.file("bad.css", "x:url(1)");
  const std::string good = folder.file("good.css", "p{x:url(2)}");
  const ProgramResult result = pagescanTool({"css", bad, good});
  EXPECT_EQ(result.status, 1);
  ASSERT_EQ(recordsOf(result.out).size(), 1U);
  EXPECT_EQ(recordsOf(result.out)[0].at("original"), "2");
}

TEST(Css, DeclarationsAreReadOnRequestWithTheirOwnOffsets) {
  const std::string text = "background:url(a.gif);list:url('b.gif')";
  const auto records = recordsOf(outputOf({"css", "--declarations", "--base", kBase}, text));
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].at("offset"), 15);
  EXPECT_EQ(records[1].at("original"), "b.gif");
  expectOffsetsMatch(records, text);
}

TEST(Css, WhatIsNotReadIsTold) {
  const struct {
    const char* text;
    std::vector<int> offsets;
  } rows[] = {
      {"p{a:url(x)} /* url(y) @import z; */", {}},
      {"@import \"a.css\"; p{a:url(x)}", {0}},
      {"@import 'a.css';", {0}},
      {"p{a:url(x)} @import url(\"a;b\"); q{a:url(y)}", {12}},
      {"@import url(a)", {0}},
      {"p{a:url(x", {4}},
      {"p{a:url(#x) url() url( '' ) url('x')}", {}},
  };
  for (const auto& row : rows) {
    std::string expected;
    for (const int offset : row.offsets) {
      expected += "pagescan: standard input: offset " + std::to_string(offset) +
                  ": this url( or @import is not read\n";
    }
    const ProgramResult result = pagescanTool({"css"}, row.text);
    EXPECT_EQ(result.status, 0) << row.text;
    EXPECT_EQ(result.err, expected) << row.text;
  }
  EXPECT_EQ(pagescanTool({"css", "--declarations"}, "a:url(x").err,
            "pagescan: standard input: offset 2: this url( or @import is not read\n");
}

TEST(Css, DeclarationsMayBeAnUrlAlone) {
  const auto records = recordsOf(outputOf({"css", "--declarations"}, "\"\xE9\""));
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].at("offset"), 1);
  EXPECT_EQ(bytesOfMember(records[0], "original"), "\xE9");
}

TEST(Css, OriginalsHoldTheNulBytesAfterDoubledQuotes) {
  const ProgramResult result = pagescanTool({"css", "--base", kBase}, "p{x:url(\"\"a\0b\"\")}"s);
  const auto records = recordsOf(result.out);
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].at("original").get<std::string>(), "a\0b"s);
}

TEST(Css, NulBytesAreReadAsBlanksWithOneWarning) {
  const std::string text = "p{x:url(a\0b)}\0"s;
  const ProgramResult result = pagescanTool({"css", "--base", kBase}, text);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "pagescan: standard input: 2 NUL bytes taken for blanks, from offset 9 on\n");
  const auto records = recordsOf(result.out);
  ASSERT_EQ(records.size(), 1U);
  expectOffsetsMatch(records, text);
  EXPECT_EQ(records[0].at("original").get<std::string>(), "a\0b"s);
  EXPECT_EQ(records[0].at("resolved"), "http://w1/d/a%20b");
}

TEST(Css, QuotesThatAreDoubledAreTakenOff) {
  const auto records = recordsOf(outputOf({"css"}, "p{x:url(''a'')}"));
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].at("original"), "a");
  EXPECT_EQ(records[0].at("offset"), 9);
}

TEST(Css, TheTableHasTheSameForm) {
  EXPECT_EQ(
      outputOf({"css", "--format", "table", "--base", kBase}, "p{x:url(a)}"),
      "  OFFSET  TAG       ATTRIBUTE       AS WRITTEN                                RESOLVED\n"
      "       8  IMG       src             a                                         "
      "http://w1/d/a\n");
}

}  // namespace
}  // namespace pagescan::tests
