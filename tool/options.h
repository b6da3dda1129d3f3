// Kinds of options and arguments that several commands have.
#ifndef PAGESCAN_TOOL_OPTIONS_H
#define PAGESCAN_TOOL_OPTIONS_H

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace pagescan::tool {

using Names = std::vector<std::string>;

// Keeps what was given for an option of any number of texts, byte for byte.
std::function<bool(const Names&)> keepIn(Names& texts);

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
                     const std::string& label, const std::string& description);

// The option --format of all that is listed: a table on a terminal, JSON Lines elsewhere, or URLs.
void addListFormat(CLI::App& command, std::string& format);

// Adds the flag --lines of the commands that take texts.
CLI::Option* addLinesFlag(CLI::App& command, bool& areLines);

// What CLI11 would take differently than a user means it: "--base=" is an empty value, not the next
// word, and "help COMMAND" is "COMMAND --help".
Names wordsAsMeant(const CLI::App& app, Names words);

}  // namespace pagescan::tool

#endif
