// The command line: what its commands have in common, and how it is read.
#ifndef PAGESCAN_TOOL_COMMAND_LINE_H
#define PAGESCAN_TOOL_COMMAND_LINE_H

#include <memory>

#include "commands/commands.h"
#include "exit_status.h"
#include "options.h"
#include "output/output.h"

namespace pagescan::tool {

// The whole command line. `job` is set to the work of the command that is chosen, when it is.
std::unique_ptr<CLI::App> makeApp(Job& job);

// Reads the words of the command line and does what they ask for.
ExitStatus runCommandLine(Names words, Output& output);

}  // namespace pagescan::tool

#endif
