// Generated pages in legacy encodings: markup in ASCII around sentences of a language.
#ifndef PAGESCAN_BENCH_LEGACY_PAGES_H
#define PAGESCAN_BENCH_LEGACY_PAGES_H

#include <string>
#include <vector>

#include "encoding/encoding.h"
#include "input.h"

namespace pagescan::bench {

struct LegacyPages {
  internal::Encoding encoding;
  std::string language;
  Texts pages;
};

// The same in every run: some pages for each of the encodings that the web still has.
std::vector<LegacyPages> legacyPages();

}  // namespace pagescan::bench

#endif
