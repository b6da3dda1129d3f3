// The command line: what its commands have in common, and how it is read.
#ifndef PAGESCAN_TOOL_COMMAND_LINE_H
#define PAGESCAN_TOOL_COMMAND_LINE_H

#include <CLI/CLI.hpp>
#include <string>

#include "exit_status.h"
#include "input.h"
#include "output/output.h"

namespace pagescan::tool {

// The families of commands, as headings of the program's help.
inline constexpr char kRecordCommands[] = "URLs of pages and style text, with their byte offsets";
inline constexpr char kUrlCommands[] = "Percent encoding of URLs and query strings";
inline constexpr char kCharacterCommands[] = "Characters";
inline constexpr char kScrubCommands[] = "Cleaning pages";

// Keeps what was given for an option of any number of texts, byte for byte.
CLI::callback_t keepIn(Names& texts);

// Adds the arguments of a command that takes any number of them.
void addArguments(CLI::App& command, const char* name, const char* description, Names& arguments);

// The arguments of a command that reads files or standard input.
void addFiles(CLI::App& command, Names& files);

// Reads the command line and does what it asks for.
ExitStatus runCommandLine(int argc, const char* const* argv, Output& output);

}  // namespace pagescan::tool

#endif
