// The library's answers beside those of the twins: what differs, in words.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_BESIDE_LIBRARY_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_BESIDE_LIBRARY_H

#include <optional>
#include <string>
#include <string_view>

#include "reference/page/inventory.h"
#include "reference/page/tree.h"

namespace reference::page {

struct ElementOptions {
  bool scripting = true;
  bool isSrcdoc = false;
  Namespace contextSpace = Namespace::html;  // of a fragment
  std::string_view contextName;              // empty: a whole page
};

// Elements, merged attributes and raw texts of a page by the element reader: the first lines that
// only one of them has, or nothing.
std::string elementDifference(std::string_view bytes, const ElementOptions& options);

// The references of a page by the library's Page, all fields: the first that differ, or nothing.
// Line and column are not looked at.
std::string inventoryDifference(std::string_view bytes, const InventoryOptions& options);

// The same for a style sheet of its own.
std::string sheetDifference(std::string_view bytes, const InventoryOptions& options);

// The absolute URL by the slow twin of the URL parser.
std::optional<std::string> resolveByTwin(const std::string& url, const std::string& base,
                                         const std::string& encoding);

}  // namespace reference::page

#endif
