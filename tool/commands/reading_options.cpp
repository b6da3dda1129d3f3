#include "commands/reading_options.h"

#include "commands/absolute_url.h"
#include "input.h"
#include "output/messages.h"
#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

constexpr unsigned kMostJobs = 256;

Names kindNames() {
  Names names;
  for (unsigned kind = 0; kind <= static_cast<unsigned>(Kind::dead); ++kind) {
    names.emplace_back(nameOf(static_cast<Kind>(kind)));
  }
  return names;
}

Profiles profilesOf(const Names& names) {
  unsigned profiles = 0;
  for (const std::string& name : names) profiles |= *profileOf(name);
  return static_cast<Profiles>(profiles);
}

// The user's own table; nothing, with the reason told, when there is none in the file.
std::optional<Places> readPlaces(const std::string& file) {
  InputReader reader(kMostInputBytes);
  InputContent content = reader.read(file);
  std::optional<Places> places;
  if (content.failure.empty()) places = Places::parse(content.bytes, &content.failure);
  if (!places) tellAbout(file, printable(content.failure));
  return places;
}

}  // namespace

PageOptions Reading::pageOptions() const {
  PageOptions options;
  options.url = url;
  options.charset = charset;
  options.scripting = hasScripting;
  options.profiles = profiles;
  options.places = places ? &*places : nullptr;
  return options;
}

void addReadingOptions(CLI::App& command, ReadingWords& words) {
  addText(command, "--url", words.url, "URL",
          "Where the pages come from; without it only absolute\n"
          "URLs resolve",
          checkAbsoluteUrl);
  addText(command, "--charset", words.charset, "LABEL",
          "Their character set by the word of a server; a byte\n"
          "order mark goes before it");
  addChoice(command, "--scripting", words.scripting, {"on", "off"},
            "Whether scripts run, on by default: noscript is read\n"
            "for what it holds in any case");
  addChoices(command, "--profile", words.profiles, {"standard", "lazy", "meta", "data"},
             "Look at further places: lazy (data-src and the like),\n"
             "meta (og:image and the like), data (JSON-LD, import\n"
             "maps, speculation rules); may be given several times",
             "NAME");
  addText(command, "--places", words.places, "FILE",
          "Read a table of further places from FILE: see\n"
          "docs/inventory.md");
  addFlag(command, "--css", words.isCss, "The inputs are style sheets");
}

std::optional<Reading> readingOf(const ReadingWords& words) {
  Reading reading;
  reading.url = words.url;
  reading.charset = words.charset;
  reading.hasScripting = words.scripting == "on";
  reading.profiles = profilesOf(words.profiles);
  reading.isCss = words.isCss;
  if (words.places.empty()) return reading;
  reading.places = readPlaces(words.places);
  return reading.places ? std::optional(reading) : std::nullopt;
}

void addKinds(CLI::App& command, Names& kinds, const std::string& description) {
  addChoices(command, "--kind", kinds, kindNames(), description, "NAME");
}

unsigned kindsOf(const Names& names) {
  unsigned kinds = 0;
  for (const std::string& name : names) kinds |= 1U << static_cast<unsigned>(*kindOf(name));
  return names.empty() ? ~0U : kinds;
}

void addJobs(CLI::App& command, unsigned& jobs) {
  addNumber(command, "--jobs", jobs, 1, kMostJobs,
            "Read N inputs at a time; the output stays the same");
}

}  // namespace pagescan::tool
