#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <utility>

namespace pagescan::tool {

namespace {

constexpr char kChoice[] = "choice";

std::string joined(const Names& words, const char* separator) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : separator).append(word);
  return text;
}

// The validator keeps the words in its description, where wordsOf finds them.
CLI::Validator choiceOf(const Names& words) {
  const auto check = [words](const std::string& given) {
    const bool isKnown = std::find(words.begin(), words.end(), given) != words.end();
    return isKnown ? "" : "\"" + given + "\" is none of " + joined(words, ", ");
  };
  return {check, joined(words, "|"), kChoice};
}

CLI::Option* makeChoice(CLI::Option* option, const Names& words, const std::string& label) {
  return option->option_text(label.empty() ? joined(words, "|") : label)->check(choiceOf(words));
}

// Whether `word` is the name of an option that takes a value, without one or with an empty one.
struct OptionWord {
  bool takesValue;
  bool hasEmptyValue;
  std::string name;
};

OptionWord readOptionWord(const CLI::App& command, const std::string& word) {
  const std::size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  if (name.empty() || name.front() != '-') return {false, false, name};
  const CLI::Option* option = command.get_option_no_throw(name);
  const bool takesValue = option != nullptr && option->get_items_expected_min() > 0;
  return {takesValue && equals == std::string::npos, takesValue && equals + 1 == word.size(), name};
}

// Makes "--base=" two words, the second of them empty.
void splitEmptyValues(const CLI::App& command, Names& words) {
  for (std::size_t i = 1; i < words.size() && words[i] != "--"; ++i) {
    const OptionWord option = readOptionWord(command, words[i]);
    if (option.hasEmptyValue) {
      words[i] = option.name;
      words.insert(words.begin() + static_cast<std::ptrdiff_t>(i) + 1, "");
    }
    if (option.hasEmptyValue || option.takesValue) ++i;
  }
}

CLI::Option* checked(CLI::Option* option, const Check& check) {
  return check ? option->check(check) : option;
}

}  // namespace

CLI::App& addCommand(CLI::App& app, const std::string& name, const std::string& description,
                     const std::string& group) {
  return *app.add_subcommand(name, description)->group(group);
}

void finishCommand(CLI::App& command, const std::string& notes, std::function<void()> chosen) {
  command.footer(notes)->callback(std::move(chosen));
}

CLI::Option* addFlag(CLI::App& command, const std::string& name, bool& isGiven,
                     const std::string& description) {
  return command.add_flag(name, isGiven, description);
}

CLI::Option* addFlagWithText(CLI::App& command, const std::string& name,
                             std::optional<std::string>& value, const std::string& label,
                             const std::string& description) {
  static constexpr char kNoValue[] = "true";  // what CLI11 gives a flag that stands alone
  const auto keep = [&value](const std::string& given) { value = given == kNoValue ? "" : given; };
  return command.add_flag(name, description)->each(keep)->option_text("[=" + label + "]");
}

CLI::Option* addFlagFor(CLI::Option* other, CLI::App& command, const std::string& name,
                        bool& isGiven, const std::string& description) {
  return addFlag(command, name, isGiven, description)->needs(other)->option_text(" ");
}

std::function<bool(const Names&)> keepIn(Names& texts) {
  return [&texts](const CLI::results_t& given) {
    texts = given;
    return true;
  };
}

CLI::Option* addArgument(CLI::App& command, const char* name, const char* description,
                         std::optional<std::string>& argument) {
  const CLI::callback_t keep = [&argument](const CLI::results_t& given) {
    argument = given.front();
    return true;
  };
  return command.add_option(name, keep, description)->option_text(" ");
}

CLI::Option* addArguments(CLI::App& command, const char* name, const char* description,
                          Names& arguments) {
  // A list in the usual way would take an argument in brackets for a list of its own, split at the
  // commas. One that waits for more than can come takes each as it is.
  constexpr int kEndless = CLI::detail::expected_max_vector_size;
  return command.add_option(name, keepIn(arguments), description)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->expected(kEndless - 1, kEndless)
      ->allow_extra_args(false)
      ->option_text(" ");
}

CLI::Option* addChoice(CLI::App& command, const std::string& name, std::string& value,
                       const Names& words, const std::string& description,
                       const std::string& label) {
  return makeChoice(command.add_option(name, value, description), words, label);
}

CLI::Option* addChoices(CLI::App& command, const std::string& name, Names& values,
                        const Names& words, const std::string& description,
                        const std::string& label) {
  CLI::Option* option = command.add_option(name, keepIn(values), description)
                            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  return makeChoice(option, words, label);
}

Names wordsOf(const CLI::Option& option) {
  Names words;
  try {
    // CLI11 has this function for options that may be changed alone.
    std::istringstream list(
        const_cast<CLI::Option&>(option).get_validator(kChoice)->get_description());
    for (std::string word; std::getline(list, word, '|');) words.push_back(word);
  } catch (const CLI::OptionNotFound&) {
  }
  return words;
}

CLI::Option* addText(CLI::App& command, const std::string& name, std::string& value,
                     const std::string& label, const std::string& description, const Check& check) {
  return checked(command.add_option(name, value, description)->option_text(label), check);
}

CLI::Option* addTexts(CLI::App& command, const std::string& name, Names& values,
                      const std::string& label, const std::string& description,
                      const Check& check) {
  CLI::Option* option = command.add_option(name, keepIn(values), description)
                            ->option_text(label)
                            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  return checked(option, check);
}

CLI::Option* addNumber(CLI::App& command, const std::string& name, unsigned& value, unsigned least,
                       unsigned most, const std::string& description) {
  return command.add_option(name, value, description)
      ->option_text("N")
      ->check(CLI::Range(least, most));
}

void require(CLI::Option* option) {
  option->required();
}

void exclude(CLI::Option* option, CLI::Option* other) {
  option->excludes(other);
}

void complainOfMissing(const std::string& what) {
  throw CLI::RequiredError(what);
}

std::string helpRow(const std::string& name, const std::string& description) {
  constexpr std::size_t kColumn = 18;
  std::ostringstream row;
  CLI::detail::format_help(row, name, description, kColumn);
  return row.str();
}

void addListFormat(CLI::App& command, std::string& format) {
  addChoice(command, "--format", format, {"table", "jsonl", "urls"},
            "How the list is written: table for people, the default\n"
            "on a terminal; jsonl, a JSON object a line, the default\n"
            "elsewhere; urls, the resolved URLs alone, each once");
}

CLI::Option* addLinesFlag(CLI::App& command, bool& areLines) {
  return addFlag(command, "--lines", areLines,
                 "Each line of standard input is a text of its own,\n"
                 "with a result a line; CR LF ends a line, too");
}

Names wordsAsMeant(const CLI::App& app, Names words) {
  const bool asksForHelp = !words.empty() && words.front() == "help";
  if (asksForHelp) words.erase(words.begin());
  if (words.empty()) return asksForHelp ? Names{"--help"} : words;
  const auto commands = app.get_subcommands(
      [&](const CLI::App* command) { return command->get_name() == words.front(); });
  if (commands.empty()) return words;
  if (asksForHelp) return {words.front(), "--help"};
  splitEmptyValues(*commands.front(), words);
  return words;
}

}  // namespace pagescan::tool
