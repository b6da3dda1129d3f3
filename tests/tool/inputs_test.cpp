// The inputs of the commands: their names, and what happens to those that cannot be read.
#include <filesystem>

#include "tool/tool.h"

namespace pagescan::tests {
namespace {

using namespace std::string_literals;

// The commands that read pages or other text.
const std::vector<std::vector<std::string>> kTextCommands = {
    {"links"}, {"css"}, {"entities"}, {"utf8"}, {"utf8", "--check"}, {"scrub", "--comments"}};

std::vector<std::string> with(std::vector<std::string> arguments,
                              const std::vector<std::string>& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

TEST(Inputs, NamesMayComeFromAFile) {
  TemporaryFolder folder;
  const std::string first = folder.file("first", "<b>1");
  const std::string last = folder.file("la\nst", "<b>2");
  const std::string lines = folder.file("lines", "\n" + first + "\n" + first);
  const std::string nuls = folder.file("nuls", first + "\0"s + last + "\0"s);
  EXPECT_EQ(outputOf({"entities", "--files-from", lines, last}), "<b>2<b>1<b>1");
  EXPECT_EQ(outputOf({"entities", "--files-from", nuls, "-0"}), "<b>1<b>2");
  EXPECT_EQ(outputOf({"entities", "--files-from", "-", "--null"}, last + "\0"s), "<b>2");
  EXPECT_EQ(outputOf({"entities", "--files-from", folder.file("none", "")}, "unread"), "");
}

TEST(Inputs, EveryCommandThatReadsFilesTakesAList) {
  TemporaryFolder folder;
  const std::string list = folder.file("list", folder.file("page", "<img src=a>"));
  for (const auto& command : kTextCommands) {
    EXPECT_EQ(outputOf(with(command, {"--files-from", list})),
              outputOf(with(command, {readFile(list)})));
  }
}

TEST(Inputs, AListThatCannotBeReadFailsAndTheOthersGoThrough) {
  TemporaryFolder folder;
  const std::string list = folder.path() + "/none";
  const std::string file = folder.file("page", "x");
  const ProgramResult result = pagescanTool({"entities", "--files-from", list, file});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "x");
  EXPECT_EQ(result.err, "pagescan: " + list + ": No such file or directory\n");
}

TEST(Inputs, WhatIsNoTextIsNamedAndNotRead) {
  const struct {
    std::string bytes;
    const char* kind;
  } rows[] = {
      {"\x1F\x8B\x08\0\0"s, "gzip (zcat unpacks it)"},
      {"\x28\xB5\x2F\xFDx"s, "Zstandard (zstdcat unpacks it)"},
      {"PK\x03\x04x"s, "a ZIP archive"},
      {"\x89PNG\r\n\x1A\n"s, "a PNG picture"},
      {"%PDF-1.7"s, "PDF"},
      {"\xFF\xFE<\0"s, "UTF-16"},
      {"\xFE\xFF\0<"s, "UTF-16"},
      {"<\0a\0"s, "UTF-16"},
      {"\0<\0a"s, "UTF-16"},
  };
  TemporaryFolder folder;
  const std::string good = folder.file("good", "<img src=a>p{a:url(b)}");
  for (const auto& row : rows) {
    const std::string bad = folder.file("bad", row.bytes);
    for (const auto& command : kTextCommands) {
      const ProgramResult result = pagescanTool(with(command, {bad, good}));
      EXPECT_EQ(result.status, 1);
      EXPECT_EQ(result.err, "pagescan: " + bad + ": not read: it looks like " + row.kind + "\n");
      EXPECT_EQ(result.out, outputOf(with(command, {good})));
    }
  }
}

TEST(Inputs, TwoGibibytesAreRefusedAndTheOthersGoThrough) {
  TemporaryFolder folder;
  const std::string large = folder.file("large", "");
  std::filesystem::resize_file(large, std::uintmax_t{1} << 31);  // without a block on disk
  const std::string good = folder.file("good", "<img src=a>");
  for (const auto& command : kTextCommands) {
    const ProgramResult result = pagescanTool(with(command, {large, good}));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "pagescan: " + large + ": too large: 2 GiB or more\n");
    EXPECT_EQ(result.out, outputOf(with(command, {good})));
  }
}

TEST(Inputs, OneThatNeedsTooMuchMemoryFailsByNameAndTheOthersGoThrough) {
#ifdef PAGESCAN_SANITIZED
  GTEST_SKIP() << "AddressSanitizer itself needs more memory than the limit of this test";
#endif
  TemporaryFolder folder;
  const std::string large = folder.file("large", "");
  std::filesystem::resize_file(large, std::uintmax_t{1} << 30);
  const std::string good = folder.file("good", "<img src=a>");
  for (const auto& command : kTextCommands) {
    const auto arguments =
        with({"bash", "-c", "ulimit -v 400000; exec \"$0\" \"$@\"", PAGESCAN_TOOL_PATH},
             with(command, {good, large, good}));
    const ProgramResult result = runProgram(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "pagescan: " + large + ": out of memory\n");
    EXPECT_EQ(result.out, outputOf(with(command, {good, good})));
  }
}

}  // namespace
}  // namespace pagescan::tests
