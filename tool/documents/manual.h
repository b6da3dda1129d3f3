// Manual pages in the mdoc language, as the text of their files.
#ifndef PAGESCAN_TOOL_MANUAL_H
#define PAGESCAN_TOOL_MANUAL_H

#include <string>
#include <vector>

#include "documents/command_facts.h"

namespace pagescan::tool {

// The page of the program: its commands, each with its summary.
std::string programManual(const CLI::App& app, const std::vector<CommandFacts>& commands);

// The page of one command. `commands` are all of them.
std::string commandManual(const CommandFacts& command, const std::vector<CommandFacts>& commands);

// Sections that a command's page has beyond what its help says, in mdoc; empty for most.
std::string furtherSections(const std::string& command);

}  // namespace pagescan::tool

#endif
