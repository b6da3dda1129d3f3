// pagescan scrub: pages without what must not run or be read.
#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "commands/commands.h"
#include "input.h"
#include "output/bytes.h"
#include "output/harmless.h"
#include "zkhtmlparseutils.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Blanks scripts and comments, empties event handlers and elements\n"
    "(tqOverwriteScriptWithBlanks, tqOverwriteTagWithBlanks,\n"
    "tqSkipOnloadAttribute, tqSkipTagBody)";

constexpr char kNotes[] =
    "At least one option is needed. They are applied in this order, whatever the\n"
    "order given. --scripts and --comments keep every byte offset; --handlers and\n"
    "--tag move offsets.\n"
    "\n"
    "--tag compares NAME with the beginning of names, but takes </NAME> alone for the\n"
    "end: --tag b makes <b></b> of <body>x<b>y</b>. Give whole names that no other\n"
    "name begins with.\n"
    "A script that stays, after a stray </script> or without an end, is told by its\n"
    "offset.\n"
    "\n"
    "Examples:\n"
    "  pagescan scrub --scripts --comments page.html > quiet.html\n"
    "  curl -s http://h/ | pagescan scrub --handlers --tag object --tag embed";

// The library aborts on an element's name that is longer.
constexpr std::size_t kLongestTag = 254;

struct Options {
  bool scripts = false;
  bool comments = false;
  bool handlers = false;
  Names tags;
  InputFiles files;
};

void blankScripts(const std::string& inputName, RWCString& page) {
  const HiddenScripts hidden(inputName, page);
  tqOverwriteScriptWithBlanks(page);
  tellScriptsThatStay(inputName, page);
  hidden.showIn(page);
}

void scrub(const Options& options, const std::string& inputName, RWCString& page) {
  if (options.scripts) blankScripts(inputName, page);
  if (options.comments) tqOverwriteTagWithBlanks(page, "<!--", "-->");
  if (options.handlers) tqSkipOnloadAttribute(page);
  for (const std::string& tag : options.tags) tqSkipTagBody(tag.c_str(), page);
}

ExitStatus run(const Options& options, Output& output) {
  return forEachText(options.files, output, [&](const std::string& name, RWCString& page) {
    scrub(options, name, page);
    output.write(bytesOf(page));
    return true;
  });
}

std::string checkTag(const std::string& name) {
  if (name.empty()) return "an element's name is empty";
  if (name.size() > kLongestTag) return "an element's name is longer than 254 bytes";
  return "";
}

void requireWork(const Options& options) {
  if (!options.scripts && !options.comments && !options.handlers && options.tags.empty()) {
    throw CLI::RequiredError("one of --scripts, --comments, --handlers, --tag");
  }
}

}  // namespace

void addScrub(CLI::App& app, Job& job) {
  CLI::App* command = app.add_subcommand("scrub", kDescription)->group(kScrubCommands);
  const auto options = std::make_shared<Options>();
  command->add_flag("--scripts", options->scripts,
                    "Script bodies become blanks; their tags stay.\n"
                    "Offsets stay.");
  command->add_flag("--comments", options->comments,
                    "Comments become <p>, blanks, </p>, up to the first\n"
                    "stray -->. Offsets stay.");
  command->add_flag("--handlers", options->handlers,
                    "onload, onmouseover and onmouseout lose their\n"
                    "values. Moves offsets.");
  command
      ->add_option("--tag", keepIn(options->tags),
                   "Elements whose name begins with NAME become\n"
                   "<NAME></NAME>; may be given several times.\n"
                   "Moves offsets.")
      ->option_text("NAME")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->check(checkTag);
  addFiles(*command, options->files);
  command->footer(kNotes);
  command->callback([&job, options] {
    requireWork(*options);
    job = [options](Output& output) { return run(*options, output); };
  });
}

}  // namespace pagescan::tool
