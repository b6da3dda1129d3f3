// Completions of the command line for shells, as the text of their files.
#ifndef PAGESCAN_TOOL_COMPLETIONS_H
#define PAGESCAN_TOOL_COMPLETIONS_H

#include <string>
#include <vector>

#include "documents/command_facts.h"

namespace pagescan::tool {

std::string bashCompletion(const std::vector<CommandFacts>& commands);
std::string zshCompletion(const std::vector<CommandFacts>& commands);
std::string fishCompletion(const std::vector<CommandFacts>& commands);

}  // namespace pagescan::tool

#endif
