// pagescan_documents FOLDER: writes the manual pages and completions of the command line, as the
// line itself describes its commands, to FOLDER/docs/man and FOLDER/completions. The test run holds
// the files of the source tree to it; after a change to an option: pagescan_documents
// SOURCE-FOLDER.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "command_line.h"
#include "documents/completions.h"
#include "documents/manual.h"

namespace {

namespace fs = std::filesystem;
using pagescan::tool::CommandFacts;

void write(const fs::path& path, const std::string& text) {
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file << text;
}

void writeAll(const fs::path& folder) {
  pagescan::tool::Job job;
  const auto app = pagescan::tool::makeApp(job);
  const std::vector<CommandFacts> commands = pagescan::tool::commandFactsOf(*app);
  const fs::path manuals = folder / "docs" / "man";
  write(manuals / "pagescan.1", pagescan::tool::programManual(*app, commands));
  for (const CommandFacts& command : commands) {
    write(manuals / ("pagescan-" + command.name + ".1"),
          pagescan::tool::commandManual(command, commands));
  }
  const fs::path completions = folder / "completions";
  write(completions / "pagescan.bash", pagescan::tool::bashCompletion(commands));
  write(completions / "_pagescan", pagescan::tool::zshCompletion(commands));
  write(completions / "pagescan.fish", pagescan::tool::fishCompletion(commands));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "Usage: pagescan_documents FOLDER\n";
    return 2;
  }
  try {
    writeAll(argv[1]);
  } catch (const std::exception& error) {
    std::cerr << "pagescan_documents: " << error.what() << "\n";
    return 1;
  }
  return 0;
}
