#include "documents/command_facts.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace pagescan::tool {

namespace {

// A description with its line ends as blanks. An empty label of an option is a blank.
std::string inOneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text == " " ? "" : text;
}

// Up to where the first sentence, or the first part of it, ends.
std::string summaryOf(const std::string& line) {
  std::size_t end = line.size();
  for (const char* stop : {" (", ": ", "; ", ". "}) end = std::min(end, line.find(stop));
  return line.substr(0, end);
}

OptionFacts factsOf(const CLI::Option& option) {
  OptionFacts facts;
  if (!option.get_snames().empty()) facts.shortName = "-" + option.get_snames().front();
  if (!option.get_lnames().empty()) facts.longName = "--" + option.get_lnames().front();
  facts.words = wordsOf(option);
  if (option.get_items_expected_min() > 0) facts.label = inOneLine(option.get_option_text());
  facts.description = inOneLine(option.get_description());
  facts.summary = summaryOf(facts.description);
  facts.isRequired = option.get_required();
  facts.mayRepeat = option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
  return facts;
}

void addTo(std::string& list, const char* separator, const std::string& entry) {
  list.append(list.empty() ? "" : separator).append(entry);
}

CommandFacts factsOf(const CLI::App& command) {
  CommandFacts facts;
  facts.name = command.get_name();
  facts.family = command.get_group();
  facts.description = inOneLine(command.get_description());
  facts.summary = summaryOf(facts.description);
  facts.notes = command.get_footer();
  for (const CLI::Option* option : command.get_options()) {
    if (!option->get_positional()) {
      facts.options.push_back(factsOf(*option));
    } else {
      addTo(facts.argument, " ", option->get_name(true));
      addTo(facts.argumentDescription, "; ", inOneLine(option->get_description()));
      facts.mayRepeatArgument =
          option->get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
      facts.isArgumentRequired = option->get_required();
    }
  }
  return facts;
}

}  // namespace

std::vector<CommandFacts> commandFactsOf(const CLI::App& app) {
  std::vector<CommandFacts> facts;
  for (const CLI::App* command : app.get_subcommands({})) facts.push_back(factsOf(*command));
  return facts;
}

}  // namespace pagescan::tool
