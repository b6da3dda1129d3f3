// pagescan scrub: pages without what must not run or be read.
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
    "A script that stays, after a stray </script> or without an end, is named with its\n"
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
    complainOfMissing("one of --scripts, --comments, --handlers, --tag");
  }
}

}  // namespace

void addScrub(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "scrub", kDescription, kScrubCommands);
  const auto options = std::make_shared<Options>();
  addFlag(command, "--scripts", options->scripts,
          "Script bodies become blanks; their tags stay.\n"
          "Offsets stay.");
  addFlag(command, "--comments", options->comments,
          "Comments become <p>, blanks, </p>, up to the first\n"
          "stray -->. Offsets stay.");
  addFlag(command, "--handlers", options->handlers,
          "onload, onmouseover and onmouseout lose their\n"
          "values. Moves offsets.");
  addTexts(command, "--tag", options->tags, "NAME",
           "Elements whose name begins with NAME become\n"
           "<NAME></NAME>; may be given several times.\n"
           "Moves offsets.",
           checkTag);
  addFiles(command, options->files);
  finishCommand(command, kNotes, [&job, options] {
    requireWork(*options);
    job = [options](Output& output) { return run(*options, output); };
  });
}

}  // namespace pagescan::tool
