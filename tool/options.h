// Commands, and the kinds of options and arguments that they have. Their sources need not include
// CLI11, which takes seconds to compile.
#ifndef PAGESCAN_TOOL_OPTIONS_H
#define PAGESCAN_TOOL_OPTIONS_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace pagescan::tool {

using Names = std::vector<std::string>;

// What is wrong with a value; empty where nothing is.
using Check = std::function<std::string(const std::string& value)>;

// Adds a command. The help lists those of one `group` together.
CLI::App& addCommand(CLI::App& app, const std::string& name, const std::string& description,
                     const std::string& group);

// Sets what the help of a command says after its options, and what happens when the command was
// chosen and its options proved right. `chosen` may call complainOfMissing.
void finishCommand(CLI::App& command, const std::string& notes, std::function<void()> chosen);

// Adds an option without a value.
CLI::Option* addFlag(CLI::App& command, const std::string& name, bool& isGiven,
                     const std::string& description);

// Adds an option with a value that may be left out, and is told after a "=" alone: --in-place=.old.
// `value` is set when the option is given: to the value, or to an empty one.
CLI::Option* addFlagWithText(CLI::App& command, const std::string& name,
                             std::optional<std::string>& value, const std::string& label,
                             const std::string& description);

// Keeps what was given for an option of any number of texts, byte for byte.
std::function<bool(const Names&)> keepIn(Names& texts);

// The same, for an option that says something about another one and is of no use without it.
CLI::Option* addFlagFor(CLI::Option* other, CLI::App& command, const std::string& name,
                        bool& isGiven, const std::string& description);

// Adds the argument of a command that takes one or none.
CLI::Option* addArgument(CLI::App& command, const char* name, const char* description,
                         std::optional<std::string>& argument);

// Adds the arguments of a command that takes any number of them.
CLI::Option* addArguments(CLI::App& command, const char* name, const char* description,
                          Names& arguments);

// Adds an option that is one of some words. The help shows `label`, or the words themselves where
// it is empty.
CLI::Option* addChoice(CLI::App& command, const std::string& name, std::string& value,
                       const Names& words, const std::string& description,
                       const std::string& label = "");

// The same, for an option that may be given several times.
CLI::Option* addChoices(CLI::App& command, const std::string& name, Names& values,
                        const Names& words, const std::string& description,
                        const std::string& label = "");

// The words that an option is one of; none for an option of another kind.
Names wordsOf(const CLI::Option& option);

// Adds an option that is a text of the user's, called `label` in the help.
CLI::Option* addText(CLI::App& command, const std::string& name, std::string& value,
                     const std::string& label, const std::string& description,
                     const Check& check = nullptr);

// The same, for an option that may be given several times.
CLI::Option* addTexts(CLI::App& command, const std::string& name, Names& values,
                      const std::string& label, const std::string& description,
                      const Check& check = nullptr);

// Adds an option that is a number, called N in the help.
CLI::Option* addNumber(CLI::App& command, const std::string& name, unsigned& value, unsigned least,
                       unsigned most, const std::string& description);

// Demands an option.
void require(CLI::Option* option);

// Allows no two options together.
void exclude(CLI::Option* option, CLI::Option* other);

// Ends the reading of the command line with the complaint that `what` is missing.
[[noreturn]] void complainOfMissing(const std::string& what);

// A row of a table in the help: a name, and what it means in a column of its own.
std::string helpRow(const std::string& name, const std::string& description);

// The option --format of all that is listed: a table on a terminal, JSON Lines elsewhere, or URLs.
void addListFormat(CLI::App& command, std::string& format);

// Adds the flag --lines of the commands that take texts.
CLI::Option* addLinesFlag(CLI::App& command, bool& areLines);

// What CLI11 would take differently than a user means it: "--base=" is an empty value, not the next
// word, and "help COMMAND" is "COMMAND --help".
Names wordsAsMeant(const CLI::App& app, Names words);

}  // namespace pagescan::tool

#endif
