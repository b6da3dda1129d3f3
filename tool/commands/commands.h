// The commands of the program. Each function adds one command with its options to the command
// line; when that command was chosen and its options proved right, `job` is set to its work.
#ifndef PAGESCAN_TOOL_COMMANDS_H
#define PAGESCAN_TOOL_COMMANDS_H

#include <CLI/CLI.hpp>
#include <functional>

#include "exit_status.h"
#include "output/output.h"

namespace pagescan::tool {

using Job = std::function<ExitStatus(Output& output)>;

void addLinks(CLI::App& app, Job& job);
void addCss(CLI::App& app, Job& job);
void addEncode(CLI::App& app, Job& job);
void addDecode(CLI::App& app, Job& job);
void addFlavour(CLI::App& app, Job& job);
void addEntities(CLI::App& app, Job& job);
void addUtf8(CLI::App& app, Job& job);
void addScrub(CLI::App& app, Job& job);

}  // namespace pagescan::tool

#endif
