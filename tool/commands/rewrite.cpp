// pagescan rewrite: other URLs in pages and style sheets, and the rest byte for byte.
#include <algorithm>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "commands/absolute_url.h"
#include "commands/commands.h"
#include "commands/reading_options.h"
#include "commands/rewrite_run.h"
#include "input.h"
#include "input_files.h"
#include "output/messages.h"
#include "page_files.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Writes other URLs into pages and style sheets: absolute, relative, moved\n"
    "to another place, or those of a list. All other bytes stay as they are";

constexpr char kNotes[] =
    "One input goes to standard output, or to -o FILE; several need --in-place or\n"
    "--dry-run. A folder stands for the pages and style sheets in it (.html, .htm,\n"
    ".xhtml, .shtml, .css). Files that end in .css are style sheets in any case.\n"
    "What cannot be written is told with its reason, and then nothing is written.\n"
    "An edit is a JSON line with start, end, expected and url (of a reference: see\n"
    "pagescan inventory, whose member value is what is expected), or bytes; with\n"
    "several inputs, file says of which one.\n"
    "\n"
    "Examples:\n"
    "  pagescan rewrite --url https://example.com/a/b.html --absolute page.html\n"
    "  pagescan rewrite --url https://a.test/ --map https://a.test=https://b.test p.html\n"
    "  pagescan rewrite --base-url-from-path site=https://a.test/ --relative \\\n"
    "    --in-place=.old --jobs 4 site\n"
    "  pagescan rewrite --edits edits.jsonl --dry-run page.html";

// What the options say, in their own words.
struct Given {
  ReadingWords reading;
  std::string folder, proxy, edits, file;
  std::optional<std::string> inPlace;  // its suffix
  Names moves, kinds;
  bool isAbsolute = false;
  bool isRelative = false;
  bool isDryRun = false;
  unsigned jobs = 1;
  InputFiles files;
};

struct WrongUsage {
  std::string message;
};

UrlRules rulesOf(const Given& given) {
  constexpr std::string_view kPlace = "{}";
  UrlRules rules;
  if (given.isAbsolute) rules.form = UrlForm::absolute;
  if (given.isRelative) rules.form = UrlForm::relative;
  if (!given.proxy.empty()) {
    const std::size_t place = given.proxy.find(kPlace);
    if (place == std::string::npos) throw WrongUsage{"--template: there is no {} in it"};
    rules.form = UrlForm::proxied;
    rules.beforeUrl = given.proxy.substr(0, place);
    rules.afterUrl = given.proxy.substr(place + kPlace.size());
  }
  for (const std::string& text : given.moves) {
    std::string problem;
    rules.moves.push_back(moveOf(text, problem));
    if (!problem.empty()) throw WrongUsage{"--map: " + problem};
  }
  rules.kinds = given.kinds.empty() ? usualKinds(rules.form) : kindsOf(given.kinds);
  return rules;
}

// Whether at the most one of them holds.
bool isOneOrNone(std::initializer_list<bool> all) {
  return std::count(all.begin(), all.end(), true) <= 1;
}

void checkChoices(const Given& given) {
  const bool hasProxy = !given.proxy.empty();
  const bool hasRules = given.isAbsolute || given.isRelative || hasProxy || !given.moves.empty();
  if (!hasRules && given.edits.empty()) {
    throw WrongUsage{"one of --absolute, --relative, --map, --template and --edits is required"};
  }
  if (!isOneOrNone({given.isAbsolute, given.isRelative, hasProxy})) {
    throw WrongUsage{"--absolute, --relative and --template exclude one another"};
  }
  if (!isOneOrNone({hasRules, !given.edits.empty()})) {
    throw WrongUsage{"--edits excludes --absolute, --relative, --map and --template"};
  }
  if (!isOneOrNone({!given.reading.url.empty(), !given.folder.empty()})) {
    throw WrongUsage{"--url and --base-url-from-path exclude one another"};
  }
  if (!isOneOrNone({given.isDryRun, given.inPlace.has_value(), !given.file.empty()})) {
    throw WrongUsage{"--dry-run, --in-place and -o exclude one another"};
  }
  const bool hasUrl = !given.reading.url.empty() || !given.folder.empty();
  if ((given.isAbsolute || given.isRelative) && !hasUrl) {
    throw WrongUsage{"--absolute and --relative need --url or --base-url-from-path"};
  }
}

void setFolder(const Given& given, RewriteOptions& options) {
  if (given.folder.empty()) return;
  const std::size_t equals = given.folder.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw WrongUsage{"--base-url-from-path: \"" + given.folder +
                     "\" is not of the form FOLDER=URL"};
  }
  options.folder = given.folder.substr(0, equals);
  options.folderUrl = given.folder.substr(equals + 1);
  const std::string problem =
      options.folderUrl.empty() ? "there is no URL in it" : checkAbsoluteUrl(options.folderUrl);
  if (!problem.empty()) throw WrongUsage{"--base-url-from-path: " + problem};
}

void setTarget(const Given& given, const Names& names, RewriteOptions& options) {
  if (given.isDryRun) {
    options.target = RewriteTarget::diff;
  } else if (given.inPlace) {
    options.target = RewriteTarget::inPlace;
    options.suffix = *given.inPlace;
    if (std::find(names.begin(), names.end(), "-") != names.end()) {
      throw WrongUsage{"standard input cannot be replaced: --in-place needs files"};
    }
  } else {
    if (names.size() != 1) {
      throw WrongUsage{"several inputs need --in-place or --dry-run"};
    }
    options.target = given.file.empty() ? RewriteTarget::standardOutput : RewriteTarget::file;
    options.file = given.file;
  }
}

void setEdits(const Given& given, RewriteOptions& options) {
  if (given.edits.empty()) return;
  InputReader reader(kMostInputBytes);
  InputContent list = reader.read(given.edits);
  std::string problem = list.failure;
  if (problem.empty()) options.edits = readEditList(list.bytes, problem);
  if (!problem.empty()) throw WrongUsage{shownName(given.edits) + ": " + problem};
}

ExitStatus run(const Given& given, Output& output) {
  try {
    checkChoices(given);
    RewriteOptions options;
    options.rules = rulesOf(given);
    options.jobs = given.jobs;
    setFolder(given, options);
    setEdits(given, options);
    std::optional<Reading> reading = readingOf(given.reading);
    if (!reading) return kWrongUsage;
    options.reading = *std::move(reading);
    bool isWhole = true;
    const Names named = namesOf(given.files, isWhole);
    const Names names = withFilesOfFolders(named, isWhole);
    if (!isWhole) return kFailed;
    setTarget(given, names, options);
    return runRewrite(options, names, output);
  } catch (const WrongUsage& wrong) {
    tell(wrong.message);
    return kWrongUsage;
  }
}

void addRules(CLI::App& command, Given& given) {
  addFlag(command, "--absolute", given.isAbsolute, "Write every URL in full");
  addFlag(command, "--relative", given.isRelative, "Write URLs as short as the page's own allows");
  addTexts(command, "--map", given.moves, "FROM=TO",
           "Where a URL begins with FROM, let it begin with TO;\n"
           "may be given several times: the longest FROM counts");
  addText(command, "--template", given.proxy, "TEXT",
          "Write TEXT with the URL, percent-encoded, in the place\n"
          "of {}: 'https://proxy.test/?u={}'");
  addText(command, "--edits", given.edits, "FILE",
          "Make the edits that FILE lists, a JSON object a line");
  addKinds(command, given.kinds,
           "Rewrite this kind alone; may be given several times.\n"
           "Without it all but identifier and fragment, with\n"
           "--template load, navigation, form and script");
}

void addTargets(CLI::App& command, Given& given) {
  addFlag(command, "--dry-run", given.isDryRun,
          "Write no file, show what would change: a unified diff");
  addFlagWithText(command, "--in-place", given.inPlace, "SUFFIX",
                  "Replace the files, each as a whole; mode, owner and\n"
                  "times stay. --in-place=SUFFIX keeps the old ones, with\n"
                  "SUFFIX after their names");
  addText(command, "-o,--output", given.file, "FILE", "Write to FILE");
}

}  // namespace

void addRewrite(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "rewrite", kDescription, kRecordCommands);
  const auto given = std::make_shared<Given>();
  addRules(command, *given);
  addReadingOptions(command, given->reading);
  addText(command, "--base-url-from-path", given->folder, "FOLDER=URL",
          "The files in FOLDER come from URL and their path in it");
  addTargets(command, *given);
  addJobs(command, given->jobs);
  addFiles(command, given->files);
  finishCommand(command, kNotes,
                [&job, given] { job = [given](Output& output) { return run(*given, output); }; });
}

}  // namespace pagescan::tool
