// The real bytes that all benchmarks work over.
#ifndef PAGESCAN_BENCH_INPUT_H
#define PAGESCAN_BENCH_INPUT_H

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "job.h"
#include "rw/rwcstring.h"

namespace pagescan::bench {

using Texts = std::vector<RWCString>;

// The links of a page and the URL that they are resolved against.
struct PageLinks {
  std::string base;
  Texts links;
};

struct Input {
  std::string name;  // what kind of pages these are
  Texts pages;       // each ends before its first NUL byte; blanking the scripts of each returns
  Texts sheets;
  std::vector<PageLinks> links;
  Texts queries;  // of the links
};

// Reads a folder: pages are in its subfolder "pages", style sheets in "css", URLs in
// "page-bases.tsv" (page, base) and "links.tsv" (page, tag, attribute, value). A folder of pages
// alone is taken as it is; its links are then those that the library finds.
// Fails   std::runtime_error when there is no page.
Input readInput(const std::filesystem::path& folder);

// Pages and style sheets of our own, the same in every run, that resemble real ones.
Input generatedInput();

// What stands after the "?" of each link.
Texts queriesOf(const std::vector<PageLinks>& pages);

std::size_t bytesOf(const Texts& texts);

// A pass over all of the texts; `item` says what each is.
Work workOver(const Texts& texts, const std::string& item);

}  // namespace pagescan::bench

#endif
