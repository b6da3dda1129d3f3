#include "command_line.h"

#include <cstdio>
#include <memory>
#include <sstream>

#include "commands/commands.h"
#include "output/messages.h"

namespace pagescan::tool {

namespace {

constexpr char kPurpose[] =
    "Finds, resolves and cleans the URLs of HTML pages and style text.\n"
    "Each command is a part of the library libpagescan on the command line.\n";

constexpr char kExamples[] =
    "Examples:\n"
    "  pagescan links --base http://www.example.com/a/b.html page.html\n"
    "  curl -s http://h/ | pagescan links --base http://h/ --format jsonl\n"
    "  pagescan css --base http://www.example.com/a/ style.css\n"
    "  pagescan scrub --scripts --comments page.html > quiet.html\n"
    "\n"
    "Data goes to standard output, everything else to standard error.\n"
    "Exit status: 0 done; 1 an input failed, the others went through; 2 wrong usage.\n"
    "'pagescan COMMAND --help' tells more about a command.";

std::string complaintOf(const CLI::App& app, const CLI::Error& error) {
  const auto strangers = app.remaining();
  if (!app.get_subcommands().empty() || error.get_name() != "RequiredError") return error.what();
  return strangers.empty() ? "a command is required" : "no such command: " + strangers.front();
}

std::string failureMessage(const CLI::App* app, const CLI::Error& error) {
  const auto chosen = app->get_subcommands();
  const std::string command = chosen.empty() ? "" : " " + chosen.front()->get_name();
  return "pagescan: " + complaintOf(*app, error) + "\nTry 'pagescan" + command + " --help'.\n";
}

// Prints help with the names of options or commands in a column of this width.
std::shared_ptr<CLI::Formatter> helpFormatter(std::size_t columnWidth) {
  auto formatter = std::make_shared<CLI::Formatter>();
  formatter->column_width(columnWidth);
  formatter->label("SUBCOMMAND", "COMMAND");
  formatter->label("Positionals", "Arguments");
  return formatter;
}

void describe(CLI::App& app) {
  app.name("pagescan");
  app.set_version_flag("--version", "pagescan " PAGESCAN_VERSION, "Print the version and exit");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.require_subcommand(1);
  app.failure_message(failureMessage);
  app.formatter(helpFormatter(26));  // what the commands inherit
}

// Help and the version are data; complaints are not.
ExitStatus answer(const CLI::App& app, const CLI::ParseError& error, Output& output) {
  std::ostringstream data;
  std::ostringstream complaint;
  const int status = app.exit(error, data, complaint);
  output.write(data.str());
  const std::string text = complaint.str();
  std::fwrite(text.data(), 1, text.size(), stderr);
  return status == 0 ? kSuccess : kWrongUsage;
}

}  // namespace

CLI::callback_t keepIn(Names& texts) {
  return [&texts](const CLI::results_t& given) {
    texts = given;
    return true;
  };
}

void addArguments(CLI::App& command, const char* name, const char* description, Names& arguments) {
  // A list in the usual way would take an argument in brackets for a list of its own, split at the
  // commas. One that waits for more than can come takes each as it is.
  constexpr int kEndless = CLI::detail::expected_max_vector_size;
  command.add_option(name, keepIn(arguments), description)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->expected(kEndless - 1, kEndless)
      ->allow_extra_args(false)
      ->option_text(" ");
}

void addFiles(CLI::App& command, Names& files) {
  addArguments(command, "FILE", "Files to read; standard input for - or none", files);
}

ExitStatus runCommandLine(int argc, const char* const* argv, Output& output) {
  Job job;
  CLI::App app(kPurpose);
  describe(app);
  for (const auto add :
       {addLinks, addCss, addEncode, addDecode, addFlavour, addEntities, addUtf8, addScrub}) {
    add(app, job);
  }
  app.formatter(helpFormatter(13));
  app.footer(kExamples);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return answer(app, error, output);
  }
  return job(output);
}

}  // namespace pagescan::tool
