// The library's answers beside those of the twins: what differs, in words.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_BESIDE_LIBRARY_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_BESIDE_LIBRARY_H

#include <string>
#include <string_view>

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

}  // namespace reference::page

#endif
