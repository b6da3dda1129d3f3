// What a Page and a StyleSheet keep.
#ifndef PAGESCAN_PAGE_PAGE_STATE_H
#define PAGESCAN_PAGE_PAGE_STATE_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "page/page_reading.h"
#include "pagescan/page.h"
#include "pagescan/style_sheet.h"

namespace pagescan {

struct Page::State {
  std::string_view bytes;
  std::unique_ptr<internal::PageReading> reading;  // of an empty page when this one is too large
  std::vector<Reference> references;
  std::string base;

  std::string url, charset;
  bool scripting = true;
  Profiles profiles = 0;
  bool hasPlaces = false;
  Places places;  // what the reading's table is part of
};

struct StyleSheet::State {
  State(std::string_view sheet, const StyleSheetOptions& options)
      : bytes(sheet), url(options.url), charset(options.charset), reading(url, 0, nullptr) {}

  std::string_view bytes;
  std::string url, charset;
  internal::PageReading reading;
  std::vector<Reference> references;
};

}  // namespace pagescan

namespace pagescan::internal {

// How it was read, so that it can be read in the same way again. Valid while the state is.
inline PageOptions optionsOf(const Page::State& page) {
  return {page.url, page.charset, page.scripting, page.profiles,
          page.hasPlaces ? &page.places : nullptr};
}
inline StyleSheetOptions optionsOf(const StyleSheet::State& sheet) {
  return {sheet.url, sheet.charset};
}

}  // namespace pagescan::internal

#endif
