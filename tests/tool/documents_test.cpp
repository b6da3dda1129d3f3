// Manual pages and completions: they are what the command line says of itself.
#include <filesystem>
#include <map>
#include <set>

#include "tool/tool.h"

namespace pagescan::tests {
namespace {

namespace fs = std::filesystem;

// The files below two folders of a tree, by their paths in it.
std::map<std::string, std::string> documentsOf(const fs::path& root) {
  std::map<std::string, std::string> documents;
  for (const char* folder : {"docs/man", "completions"}) {
    for (const auto& entry : fs::directory_iterator(root / folder)) {
      documents[fs::relative(entry.path(), root)] = readFile(entry.path());
    }
  }
  return documents;
}

TEST(Documents, OfTheSourceTreeAreThoseOfTheCommandLine) {
  TemporaryFolder folder;
  ASSERT_EQ(runProgram({PAGESCAN_DOCUMENTS_PATH, folder.path()}).status, 0);
  const auto made = documentsOf(folder.path());
  const auto kept = documentsOf(PAGESCAN_SOURCE_DIR);
  for (const auto& [path, text] : made) {
    const auto found = kept.find(path);
    EXPECT_TRUE(found != kept.end() && found->second == text)
        << path << " is not up to date: run pagescan_documents in the source folder";
  }
  EXPECT_EQ(made.size(), kept.size()) << "a page or completion belongs to no command";
}

// The words that bash offers for the last of the words given.
std::set<std::string> offered(const std::vector<std::string>& words) {
  std::vector<std::string> arguments = {
      "bash", "-c",
      "source \"$0\"; COMP_WORDS=(\"$@\") COMP_CWORD=$(($# - 1)); _pagescan; "
      "printf '%s\\n' \"${COMPREPLY[@]}\"",
      PAGESCAN_SOURCE_DIR "/completions/pagescan.bash", "pagescan"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  const ProgramResult result = runProgram(arguments);
  EXPECT_EQ(result.err, "");
  std::set<std::string> offers;
  std::istringstream lines(result.out);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) offers.insert(line);
  }
  return offers;
}

// The options that the help of a command names, at the begin of its lines.
std::set<std::string> optionsInHelp(const std::string& command) {
  std::set<std::string> options;
  std::istringstream lines(outputOf({command, "--help"}));
  for (std::string line; std::getline(lines, line);) {
    if (line.substr(0, 3) != "  -") continue;
    std::istringstream names(line.substr(2, line.find(' ', 2) - 2));
    for (std::string name; std::getline(names, name, ',');) options.insert(name);
  }
  return options;
}

TEST(Documents, BashOffersTheCommandsAndTheirOptions) {
  std::set<std::string> commands = offered({""});
  EXPECT_TRUE(commands.count("links") == 1 && commands.count("help") == 1);
  for (const char* other : {"help", "--help", "--version"}) commands.erase(other);
  EXPECT_EQ(offered({"help", ""}), commands);
  for (const std::string& command : commands) {
    const std::set<std::string> options = optionsInHelp(command);
    EXPECT_TRUE(options.count("--help") == 1) << command;
    EXPECT_EQ(offered({command, "-"}), options) << command;
  }
}

TEST(Documents, BashOffersTheValuesOfAnOption) {
  using Words = std::set<std::string>;
  EXPECT_EQ(offered({"links", "--format", ""}), (Words{"table", "jsonl", "urls"}));
  EXPECT_EQ(offered({"flavour", "--format", ""}), (Words{"text", "jsonl"}));
  EXPECT_EQ(offered({"utf8", "--to", "a"}), (Words{"ansi"}));
  EXPECT_EQ(offered({"links", "--base", ""}), (Words{}));
  EXPECT_EQ(offered({"encode", "--flavour", "chrome"}), (Words{"chrome", "chrome94"}));
}

TEST(Documents, BashOffersFilesToThoseThatReadThem) {
  TemporaryFolder folder;
  const std::string file = folder.file("page.html", "");
  EXPECT_EQ(offered({"links", folder.path() + "/"}), std::set<std::string>{file});
  EXPECT_EQ(offered({"inventory", "--places", folder.path() + "/"}), std::set<std::string>{file});
  EXPECT_TRUE(offered({"encode", folder.path() + "/"}).empty());
}

}  // namespace
}  // namespace pagescan::tests
