// pagescan inventory: every URL of pages and style sheets, read as browsers read them.
#include <memory>
#include <optional>
#include <string>

#include "commands/commands.h"
#include "commands/inventory_run.h"
#include "commands/reading_options.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Lists every URL that pages carry, as browsers read them: the bytes\n"
    "that spell it, what it is for, and the URL it resolves to";

constexpr char kNotes[] =
    "Kinds: load (a browser loads it with the page), navigation, form, ping,\n"
    "connection, base, metadata, identifier, fragment, script (only scripts use it)\n"
    "and dead (no browser of today reads it). Flags tell under which condition:\n"
    "noscript, template, candidate (one of several), lazy, conditional, nonstandard,\n"
    "nested (in a srcdoc).\n"
    "A JSON line has the members file, start, end, line, column, element, attribute,\n"
    "kind, slot, raw, value, and where they apply flags, url, parent and bytes.\n"
    "Offsets count bytes from 0, lines and columns from 1; a column is a byte, too.\n"
    "\n"
    "Examples:\n"
    "  pagescan inventory --url https://example.com/a/b.html page.html\n"
    "  pagescan inventory --url https://example.com/ --kind load --format urls page.html\n"
    "  pagescan inventory --css --url https://example.com/a.css a.css\n"
    "  find . -name '*.html' -print0 | pagescan inventory --files-from - -0 --jobs 4";

// What the options say, in their own words.
struct Given {
  ReadingWords reading;
  std::string format;
  Names kinds;
  unsigned jobs = 1;
  InputFiles files;
};

ListFormat formatOf(const std::string& name, const Output& output) {
  if (name.empty()) return output.isTerminal() ? ListFormat::table : ListFormat::jsonl;
  return name == "table"  ? ListFormat::table
         : name == "urls" ? ListFormat::urls
                          : ListFormat::jsonl;
}

ExitStatus run(const Given& given, Output& output) {
  std::optional<Reading> reading = readingOf(given.reading);
  if (!reading) return kWrongUsage;
  InventoryOptions options;
  options.reading = *std::move(reading);
  options.jobs = given.jobs;
  options.lines = {formatOf(given.format, output), kindsOf(given.kinds)};
  return runInventory(options, given.files, output);
}

void addListOptions(CLI::App& command, Given& given) {
  addKinds(command, given.kinds, "List this kind alone; may be given several times");
  addListFormat(command, given.format);
  addJobs(command, given.jobs);
}

}  // namespace

void addInventory(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "inventory", kDescription, kRecordCommands);
  const auto given = std::make_shared<Given>();
  addReadingOptions(command, given->reading);
  addListOptions(command, *given);
  addFiles(command, given->files);
  finishCommand(command, kNotes,
                [&job, given] { job = [given](Output& output) { return run(*given, output); }; });
}

}  // namespace pagescan::tool
