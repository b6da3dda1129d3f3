// The options of the commands that read pages as browsers do.
#ifndef PAGESCAN_TOOL_READING_OPTIONS_H
#define PAGESCAN_TOOL_READING_OPTIONS_H

#include <optional>
#include <string>

#include "options.h"
#include "pagescan/page.h"
#include "pagescan/style_sheet.h"

namespace pagescan::tool {

// How pages and style sheets are read, in the words of the options.
struct ReadingWords {
  std::string url, charset, places;
  std::string scripting = "on";
  Names profiles;
  bool isCss = false;
};

// How they are read.
struct Reading {
  std::string url, charset;  // as for PageOptions
  bool hasScripting = true;
  Profiles profiles = 0;
  std::optional<Places> places;
  bool isCss = false;  // the inputs are style sheets

  // Both are valid as long as this.
  PageOptions pageOptions() const;
  StyleSheetOptions sheetOptions() const { return {url, charset}; }
};

// Adds --url, --charset, --scripting, --profile, --places and --css.
void addReadingOptions(CLI::App& command, ReadingWords& words);

// What the words mean; nothing, with the reason told, when the table of places is none.
std::optional<Reading> readingOf(const ReadingWords& words);

// Adds --kind: `description` says what is done with these kinds.
void addKinds(CLI::App& command, Names& kinds, const std::string& description);

// A bit for each kind that is named; all where none is.
unsigned kindsOf(const Names& names);

// Adds --jobs.
void addJobs(CLI::App& command, unsigned& jobs);

}  // namespace pagescan::tool

#endif
