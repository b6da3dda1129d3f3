// pagescan resolve, run as a user would.
#include "tool/tool.h"

namespace pagescan::tests {
namespace {

TEST(Resolve, WritesALineForEachUrl) {
  EXPECT_EQ(
      outputOf(
          {"resolve", "--base", "https://h.test/a/b", "../c", "?d e", "//O/", "#\xE2\x82\xAC"}),
      "https://h.test/c\nhttps://h.test/a/b?d%20e\nhttps://o/\nhttps://h.test/a/b#%E2%82%AC\n");
  EXPECT_EQ(outputOf({"resolve", "HTTP://EXAMPLE.com:80/./a"}), "http://example.com/a\n");
}

TEST(Resolve, ReadsLinesOfStandardInput) {
  EXPECT_EQ(outputOf({"resolve", "--base=http://h/"}, "a\r\nb\n"), "http://h/a\nhttp://h/b\n");
  EXPECT_EQ(outputOf({"resolve", "--base=http://h/", "c", "-", "d"}, "a"),
            "http://h/c\nhttp://h/a\nhttp://h/d\n");
}

TEST(Resolve, JsonLinesHoldTheComponents) {
  EXPECT_EQ(outputOf({"resolve", "--format", "jsonl", "http://u:p@h.test:8080/a?b#c", "mailto:x"}),
            R"({"input":"http://u:p@h.test:8080/a?b#c","url":"http://u:p@h.test:8080/a?b#c",)"
            R"("scheme":"http","username":"u","password":"p","host":"h.test","port":"8080",)"
            R"("path":"/a","query":"b","fragment":"c"})"
            "\n"
            R"({"input":"mailto:x","url":"mailto:x","scheme":"mailto","path":"x"})"
            "\n");
}

TEST(Resolve, QueriesAreWrittenInTheEncoding) {
  EXPECT_EQ(outputOf({"resolve", "--encoding", "windows-1252", "http://h/?\xC3\xA9"}),
            "http://h/?%E9\n");
}

TEST(Resolve, WhatIsNoUrlIsToldAndTheOthersAreWritten) {
  const ProgramResult result =
      pagescanTool({"resolve", "http://a/", "b\x1b", "http://[", "http://c/"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "http://a/\nhttp://c/\n");
  EXPECT_EQ(result.err,
            "pagescan: \"b\\x1b\": no absolute URL\n"
            "pagescan: \"http://[\": no absolute URL\n");
}

TEST(Resolve, ABaseIsAnAbsoluteUrl) {
  const ProgramResult result = pagescanTool({"resolve", "--base", "x", "y"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err.substr(0, result.err.find('\n')),
            "pagescan: --base: \"x\" is no absolute URL");
}

}  // namespace
}  // namespace pagescan::tests
