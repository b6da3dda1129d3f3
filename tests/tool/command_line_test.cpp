// The program as a whole: help, usage errors, outputs that fail.
#include <csignal>

#include "tool/tool.h"

namespace pagescan::tests {
namespace {

using testing::PrintToString;

const std::vector<std::string> kCommands = {"inventory", "rewrite",  "save",   "resolve",
                                            "links",     "css",      "encode", "decode",
                                            "flavour",   "entities", "utf8",   "scrub"};

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(CommandLine, TellsItsVersion) {
  EXPECT_EQ(outputOf({"--version"}), "pagescan " PAGESCAN_VERSION "\n");
}

TEST(CommandLine, HelpIsAMapOfTheCommandsWithExamples) {
  const std::string help = outputOf({"--help"});
  EXPECT_EQ(outputOf({"-h"}), help);
  for (const std::string& command : kCommands) EXPECT_TRUE(contains(help, "\n  " + command + " "));
  EXPECT_TRUE(contains(help, "Examples:\n  pagescan "));
}

TEST(CommandLine, EveryCommandHasHelpWithExamplesAndAManualPage) {
  for (const std::string& command : kCommands) {
    SCOPED_TRACE(command);
    const std::string help = outputOf({command, "--help"});
    EXPECT_TRUE(contains(help, "Usage: pagescan " + command)) << help;
    EXPECT_TRUE(contains(help, "Examples:\n  ")) << help;
    EXPECT_TRUE(contains(help, "pagescan " + command)) << help;
    const std::string manual = readFile(PAGESCAN_SOURCE_DIR "/docs/man/pagescan-" + command + ".1");
    EXPECT_TRUE(contains(manual, ".Nm pagescan " + command)) << manual;
  }
}

TEST(CommandLine, WrongUsageWritesNothingAndEndsWithTwo) {
  const std::string longName(255, 'x');
  const std::vector<std::vector<std::string>> rows = {
      {},
      {"no-such-command"},
      {"--no-such-option"},
      {"links", "--no-such-option"},
      {"links", "--format", "xml"},
      {"links", "--base"},
      {"css", "--format", ""},
      {"encode", "text"},
      {"decode", "--flavour"},
      {"encode", "--flavour", "no-such-flavour", "text"},
      {"encode", "--flavour", "1", "text"},
      {"flavour", "one", "two"},
      {"utf8", "--to", "utf16"},
      {"utf8", "--code-page", "no-such-page"},
      {"utf8", "--code-page", "UTF-16"},
      {"utf8", "--code-page", "UTF-32LE"},
      {"utf8", "--code-page", "ASCII//TRANSLIT"},
      {"scrub"},
      {"scrub", "page.html"},
      {"scrub", "--tag", ""},
      {"scrub", "--tag", longName},
      {"entities", "--scripts"},
  };
  for (const auto& arguments : rows) {
    const ProgramResult result = pagescanTool(arguments, "a=b");
    EXPECT_EQ(result.status, 2) << PrintToString(arguments);
    EXPECT_EQ(result.out, "") << PrintToString(arguments);
    EXPECT_EQ(result.err.substr(0, 10), "pagescan: ") << PrintToString(arguments);
    EXPECT_TRUE(contains(result.err, " --help'.\n")) << result.err;
  }
}

TEST(CommandLine, NamesTheCommandThatItDoesNotKnow) {
  EXPECT_EQ(pagescanTool({"lynx"}).err,
            "pagescan: no such command: lynx\nTry 'pagescan --help'.\n");
}

TEST(CommandLine, ComplaintsArePlainSentences) {
  const struct {
    std::vector<std::string> arguments;
    const char* complaint;
  } rows[] = {
      {{"links", "--base"}, "--base needs a value"},
      {{"scrub", "--tag"}, "--tag needs a value"},
      {{"links", "--base", "a", "--base", "b"}, "--base may be given once"},
      {{"links", "--format", "xml"}, "--format: \"xml\" is none of table, jsonl, urls"},
      {{"links", "--nope"}, "no such option: --nope"},
      {{"flavour", "one", "two"}, "one argument too many: two"},
      {{"encode", "x"}, "--flavour is required"},
      {{"utf8", "--code-page", ""}, "--code-page: the name of the code page is empty"},
      {{"utf8", "--code-page="}, "--code-page: the name of the code page is empty"},
      {{"inventory", "--url", "h/a"}, "--url: \"h/a\" is no absolute URL"},
      {{"links", "-0"}, "--null requires --files-from"},
      {{"encode", "--flavour", "uri", "--lines", "x"}, "--lines excludes TEXT"},
      {{"-x"}, "no such option: -x"},
      {{"help", "lynx"}, "no such command: lynx"},
      {{"links", "--\x1b[2J"}, "no such option: --\\x1b[2J"},
      {{"\x1b[2J"}, "no such command: \\x1b[2J"},
      {{"links", "--format", "\x9b"}, "--format: \"\\x9b\" is none of table, jsonl, urls"},
  };
  for (const auto& row : rows) {
    const ProgramResult result = pagescanTool(row.arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err.substr(0, result.err.find('\n')),
              std::string("pagescan: ") + row.complaint);
  }
}

TEST(CommandLine, HelpIsACommandToo) {
  EXPECT_EQ(outputOf({"help"}), outputOf({"--help"}));
  EXPECT_EQ(outputOf({"help", "links"}), outputOf({"links", "--help"}));
}

TEST(CommandLine, AnEmptyValueAfterAnEqualsSignIsEmpty) {
  TemporaryFolder folder;
  const std::string file = folder.file("page", "<img src=a>");
  EXPECT_EQ(outputOf({"links", "--base=", file}), outputOf({"links", "--base", "", file}));
  EXPECT_EQ(outputOf({"encode", "--flavour=uri", "--", "--base="}), "--base=\n");
  EXPECT_EQ(pagescanTool({"scrub", "--tag", "--tag=", folder.file("b", "<b>")}).status, 0);
}

TEST(CommandLine, AnOutputThatIsFullIsAFailure) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"encode", "--flavour", "uri", "a"},
        {"links", PAGESCAN_SOURCE_DIR "/examples/sample.html"},
        {"--help"},
        {"--version"}}) {
    const ProgramResult result = pagescanTool(arguments, "", "/dev/full");
    EXPECT_EQ(result.status, 1) << PrintToString(arguments);
    EXPECT_EQ(result.err, "pagescan: cannot write the output: No space left on device\n");
  }
}

TEST(CommandLine, AReaderThatLeavesEndsItQuietly) {
  TemporaryFolder folder;
  std::string page;
  while (page.size() < 4'000'000) page += "<img src=picture.gif>\n";
  const std::string file = folder.file("page.html", page);
  const ProgramResult result =
      runProgram({"bash", "-c", "\"$0\" links \"$1\" | head -n 1; echo \"${PIPESTATUS[0]}\"",
                  PAGESCAN_TOOL_PATH, file});
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(recordsOf(result.out.substr(0, result.out.find('\n') + 1)).size(), 1U);
  EXPECT_EQ(result.out.substr(result.out.find('\n') + 1), std::to_string(128 + SIGPIPE) + "\n");
}

TEST(CommandLine, AReaderThatLeavesEndsItQuietlyAlsoWhereTheSignalIsBlocked) {
  const ProgramResult result =
      runProgram({"python3", "-c",
                  "import os, signal, subprocess, sys\n"
                  "signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGPIPE])\n"
                  "reader, writer = os.pipe()\n"
                  "os.close(reader)\n"
                  "run = subprocess.run([sys.argv[1], 'entities'], input=b'x', stdout=writer,\n"
                  "                     restore_signals=False)\n"
                  "print(run.returncode)\n",
                  PAGESCAN_TOOL_PATH});
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out, "1\n");
}

TEST(CommandLine, InputsThatCannotBeReadAreNamedAndTheOthersGoThrough) {
  TemporaryFolder folder;
  const std::string first = folder.file("first", "<img src=1>");
  const std::string last = folder.file("last", "p{x:url(2)}<img src=2>");
  const std::string missing = folder.path() + "/missing";
  for (const char* command : {"links", "css", "entities", "utf8"}) {
    SCOPED_TRACE(command);
    const ProgramResult both = pagescanTool({command, first, missing, folder.path(), last});
    EXPECT_EQ(both.status, 1);
    EXPECT_EQ(both.err, "pagescan: " + missing + ": No such file or directory\npagescan: " +
                            folder.path() + ": Is a directory\n");
    EXPECT_EQ(both.out, outputOf({command, first, last}));
    EXPECT_TRUE(contains(both.out, "2")) << both.out;
  }
}

TEST(CommandLine, ArgumentsArriveAsTheyAre) {
  EXPECT_EQ(outputOf({"encode", "--flavour", "none", "[a,b]", "", "{}", "links", " x ", "-", "a,b",
                      "%%", "--", "--help", "[]"}),
            "[a,b]\n\n{}\nlinks\n x \n-\na,b\n%%\n--help\n[]\n");
}

TEST(CommandLine, MessagesCannotActOnTheTerminal) {
  EXPECT_EQ(pagescanTool({"links", "\x1b[2J\xff"}).err,
            "pagescan: \\x1b[2J\\xff: No such file or directory\n");
}

}  // namespace
}  // namespace pagescan::tests
