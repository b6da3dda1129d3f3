// The table of places that carry URLs.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_PLACES_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_PLACES_H

#include <string>
#include <string_view>
#include <vector>

namespace reference::page {

struct PlaceRow {
  std::string profile;
  std::string space;      // html, svg, mathml, any
  std::string element;    // "*": any
  std::string metaName;   // of a row for meta elements: the name in brackets
  std::string attribute;  // empty: the element's text
  std::string slot;
  std::string kind;
  std::string rule;
};

// Rows between line ends, columns between tabs; without the line of column names.
std::vector<PlaceRow> parsePlaces(std::string_view text);

// The built-in table.
const std::vector<PlaceRow>& builtInPlaces();

}  // namespace reference::page

#endif
