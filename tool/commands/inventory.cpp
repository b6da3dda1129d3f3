// pagescan inventory: every URL of pages and style sheets, read as browsers read them.
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>

#include "commands/absolute_url.h"
#include "commands/commands.h"
#include "commands/inventory_run.h"
#include "input.h"
#include "output/messages.h"

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

constexpr unsigned kMostJobs = 256;

// What the options say, in their own words.
struct Given {
  std::string url, charset, places, format;
  std::string scripting = "on";
  Names profiles, kinds;
  bool isCss = false;
  unsigned jobs = 1;
  InputFiles files;
};

Names kindNames() {
  Names names;
  for (unsigned kind = 0; kind <= static_cast<unsigned>(Kind::dead); ++kind) {
    names.emplace_back(nameOf(static_cast<Kind>(kind)));
  }
  return names;
}

unsigned kindsOf(const Names& names) {
  unsigned kinds = 0;
  for (const std::string& name : names) kinds |= 1U << static_cast<unsigned>(*kindOf(name));
  return names.empty() ? ~0U : kinds;
}

Profiles profilesOf(const Names& names) {
  unsigned profiles = 0;
  for (const std::string& name : names) profiles |= *profileOf(name);
  return static_cast<Profiles>(profiles);
}

ListFormat formatOf(const std::string& name, const Output& output) {
  if (name.empty()) return output.isTerminal() ? ListFormat::table : ListFormat::jsonl;
  return name == "table"  ? ListFormat::table
         : name == "urls" ? ListFormat::urls
                          : ListFormat::jsonl;
}

// The user's own table; nothing, with the reason told, when there is none in the file.
std::optional<Places> readPlaces(const std::string& file) {
  InputReader reader(kMostInputBytes);
  InputContent content = reader.read(file);
  std::optional<Places> places;
  if (content.failure.empty()) places = Places::parse(content.bytes, &content.failure);
  if (!places) tellAbout(file, content.failure);
  return places;
}

ExitStatus run(const Given& given, Output& output) {
  InventoryOptions options;
  options.url = given.url;
  options.charset = given.charset;
  options.hasScripting = given.scripting == "on";
  options.profiles = profilesOf(given.profiles);
  options.isCss = given.isCss;
  options.jobs = given.jobs;
  options.lines = {formatOf(given.format, output), kindsOf(given.kinds)};
  if (!given.places.empty()) {
    options.places = readPlaces(given.places);
    if (!options.places) return kWrongUsage;
  }
  return runInventory(options, given.files, output);
}

void addReadingOptions(CLI::App& command, Given& given) {
  addText(command, "--url", given.url, "URL",
          "Where the pages come from; without it only absolute\n"
          "URLs resolve")
      ->check(checkAbsoluteUrl);
  addText(command, "--charset", given.charset, "LABEL",
          "Their character set by the word of a server; a byte\n"
          "order mark goes before it");
  addChoice(command, "--scripting", given.scripting, {"on", "off"},
            "Whether scripts run, on by default: noscript is read\n"
            "for what it holds in any case");
  addChoices(command, "--profile", given.profiles, {"standard", "lazy", "meta", "data"},
             "Look at further places: lazy (data-src and the like),\n"
             "meta (og:image and the like), data (JSON-LD, import\n"
             "maps, speculation rules); may be given several times",
             "NAME");
  addText(command, "--places", given.places, "FILE",
          "Read a table of further places from FILE: see\n"
          "docs/inventory.md");
  command.add_flag("--css", given.isCss, "The inputs are style sheets");
}

void addListOptions(CLI::App& command, Given& given) {
  addChoices(command, "--kind", given.kinds, kindNames(),
             "List this kind alone; may be given several times", "NAME");
  addListFormat(command, given.format);
  command.add_option("--jobs", given.jobs, "Read N inputs at a time; the output stays the same")
      ->option_text("N")
      ->check(CLI::Range(1U, kMostJobs));
}

}  // namespace

void addInventory(CLI::App& app, Job& job) {
  CLI::App* command = app.add_subcommand("inventory", kDescription)->group(kRecordCommands);
  const auto given = std::make_shared<Given>();
  addReadingOptions(*command, *given);
  addListOptions(*command, *given);
  addFiles(*command, given->files);
  command->footer(kNotes);
  command->callback(
      [&job, given] { job = [given](Output& output) { return run(*given, output); }; });
}

}  // namespace pagescan::tool
