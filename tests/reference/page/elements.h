// The elements of a parsed page, for whoever asks each of them something.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_ELEMENTS_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_ELEMENTS_H

#include <vector>

#include "reference/page/tree.h"

namespace reference::page {

struct Located {
  const Node* node = nullptr;
  bool inTemplate = false;
  bool inShadow = false;
};

// All elements of a tree, in order; of a start tag whose element the parser repeated, the first,
// which always stays in the tree.
std::vector<Located> elementsOf(const Tree& tree);

// The element's own text nodes.
Text textOf(const Node& element);

}  // namespace reference::page

#endif
