// The commands of the program. Each function adds one command with its options to the command
// line; when that command was chosen and its options proved right, `job` is set to its work.
#ifndef PAGESCAN_TOOL_COMMANDS_H
#define PAGESCAN_TOOL_COMMANDS_H

#include <functional>

#include "exit_status.h"
#include "options.h"
#include "output/output.h"

namespace pagescan::tool {

// The families of commands, as headings of the program's help.
inline constexpr char kRecordCommands[] = "URLs of pages and style text, with their byte offsets";
inline constexpr char kSaveCommands[] = "Saving pages";
inline constexpr char kUrlCommands[] = "URLs and query strings";
inline constexpr char kCharacterCommands[] = "Characters";
inline constexpr char kScrubCommands[] = "Cleaning pages";

using Job = std::function<ExitStatus(Output& output)>;

void addInventory(CLI::App& app, Job& job);
void addRewrite(CLI::App& app, Job& job);
void addSave(CLI::App& app, Job& job);
void addResolve(CLI::App& app, Job& job);
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
