// A page's inventory and a sheet's references beside those of the slow twin, as test assertions.
#ifndef PAGESCAN_TESTS_PAGE_INVENTORY_AGREEMENT_H
#define PAGESCAN_TESTS_PAGE_INVENTORY_AGREEMENT_H

#include <gtest/gtest.h>

#include <string>

#include "reference/page/beside_library.h"

namespace pagescan::tests {

using reference::page::InventoryOptions;

inline InventoryOptions optionsWith(bool scripting) {
  InventoryOptions options;
  options.url = "http://h.test/d/p.html?q#f";
  options.scripting = scripting;
  options.profiles = {"lazy", "meta", "data"};
  return options;
}

inline ::testing::AssertionResult agree(const std::string& text, const InventoryOptions& options) {
  const std::string difference = reference::page::inventoryDifference(text, options);
  if (difference.empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << text.substr(0, 3000) << "\n(scripting " << options.scripting << ", charset "
         << options.charset << ")\n"
         << difference;
}

inline ::testing::AssertionResult agreeOnSheet(const std::string& text) {
  const std::string difference = reference::page::sheetDifference(text, optionsWith(true));
  if (difference.empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << testing::PrintToString(text) << "\n" << difference;
}

}  // namespace pagescan::tests

#endif
