// What completions and manual pages say of a command, taken from the command line's own
// description.
#ifndef PAGESCAN_TOOL_COMMAND_FACTS_H
#define PAGESCAN_TOOL_COMMAND_FACTS_H

#include <string>
#include <vector>

#include "options.h"

namespace pagescan::tool {

struct OptionFacts {
  std::string shortName;    // "-0"; may be empty
  std::string longName;     // "--base"
  std::string label;        // of its value, as the help shows it; empty for a flag
  Names words;              // the values that it is one of, where there are such
  std::string description;  // in one line
  std::string summary;      // the beginning of that
  bool isRequired = false;
  bool mayRepeat = false;
};

struct CommandFacts {
  std::string name;
  std::string family;       // commands of one family go together
  std::string summary;      // one line: "Lists the URLs of style text"
  std::string description;  // in one line
  std::string notes;        // paragraphs with empty lines between them
  std::string argument;     // "FILE" or "TEXT", or several: "URL DIR"
  bool mayRepeatArgument = false;
  bool isArgumentRequired = false;
  std::string argumentDescription;
  std::vector<OptionFacts> options;

  // Whether the arguments are names of files or folders.
  bool takesFiles() const { return argument.find("FILE") != std::string::npos; }
};

// All commands in the order of the help.
std::vector<CommandFacts> commandFactsOf(const CLI::App& app);

}  // namespace pagescan::tool

#endif
