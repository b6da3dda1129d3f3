#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>
#include <utility>

#include "complaints.h"

namespace pagescan::tool {

namespace {

constexpr char kPurpose[] =
    "Finds, resolves and cleans the URLs of HTML pages and style text.\n"
    "Each command is a part of the libraries libpagescan-page (inventory, rewrite, resolve) and\n"
    "libpagescan on the command line.\n";

constexpr char kExamples[] =
    "Examples:\n"
    "  pagescan inventory --url http://www.example.com/a/b.html page.html\n"
    "  pagescan links --base http://www.example.com/a/b.html page.html\n"
    "  curl -s http://h/ | pagescan links --base http://h/ --format jsonl\n"
    "  pagescan css --base http://www.example.com/a/ style.css\n"
    "  pagescan scrub --scripts --comments page.html > quiet.html\n"
    "\n"
    "Data goes to standard output, everything else to standard error.\n"
    "Exit status: 0 done; 1 an input failed, the others went through; 2 wrong usage.\n"
    "'pagescan COMMAND --help', or 'pagescan help COMMAND', tells more about a command.";

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
  app.failure_message(complaintAbout);
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

std::unique_ptr<CLI::App> makeApp(Job& job) {
  auto app = std::make_unique<CLI::App>(kPurpose);
  describe(*app);
  for (const auto add : {addInventory, addRewrite, addSave, addLinks, addCss, addResolve, addEncode,
                         addDecode, addFlavour, addEntities, addUtf8, addScrub}) {
    add(*app, job);
  }
  app->formatter(helpFormatter(13));
  app->footer(kExamples);
  return app;
}

ExitStatus runCommandLine(Names words, Output& output) {
  Job job;
  const std::unique_ptr<CLI::App> app = makeApp(job);
  words = wordsAsMeant(*app, std::move(words));
  std::reverse(words.begin(), words.end());  // CLI11 takes them from the end
  try {
    app->parse(std::move(words));
  } catch (const CLI::ParseError& error) {
    return answer(*app, error, output);
  }
  return job(output);
}

}  // namespace pagescan::tool
