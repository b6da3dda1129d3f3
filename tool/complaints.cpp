#include "complaints.h"

#include <CLI/CLI.hpp>
#include <cstddef>
#include <string_view>

#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

// CLI11 begins such a message with the name of the option.
std::string optionOf(const std::string& message) {
  return message.substr(0, message.find(':'));
}

std::string aboutCount(const std::string& message) {
  const bool isTooMany = message.find("At Most") != std::string::npos;
  return optionOf(message) + (isTooMany ? " may be given once" : " needs a value");
}

// CLI11 ends such a message with what was not expected.
std::string aboutStranger(const std::string& message) {
  constexpr std::string_view kLead = "expected: ";
  const std::size_t lead = message.find(kLead);
  if (lead == std::string::npos) return message;
  const std::string stranger = message.substr(lead + kLead.size());
  const bool isOption = stranger.size() > 1 && stranger.front() == '-';
  return (isOption ? "no such option: " : "one argument too many: ") + stranger;
}

std::string aboutNoCommand(const CLI::App& app) {
  const auto strangers = app.remaining();
  if (strangers.empty()) return "a command is required";
  const bool isOption = strangers.front().front() == '-';
  return (isOption ? "no such option: " : "no such command: ") + strangers.front();
}

std::string sentenceAbout(const CLI::App& app, const CLI::Error& error) {
  std::string message = error.what();
  const bool hasCommand = !app.get_subcommands().empty();
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) return aboutCount(message);
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) return aboutStranger(message);
  const bool isRequired = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
  if (isRequired && !hasCommand) return aboutNoCommand(app);
  return message;
}

}  // namespace

std::string complaintAbout(const CLI::App* app, const CLI::Error& error) {
  const auto chosen = app->get_subcommands();
  const std::string command = chosen.empty() ? "" : " " + chosen.front()->get_name();
  return "pagescan: " + printable(sentenceAbout(*app, error)) + "\nTry 'pagescan" + command +
         " --help'.\n";
}

}  // namespace pagescan::tool
