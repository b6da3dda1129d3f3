// A tree as lines of text, in the form of html5lib's tree construction tests.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_TREE_DUMP_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_TREE_DUMP_H

#include <string>

#include "reference/page/tree.h"

namespace reference::page {

// What is in `root`, without itself.
std::string dump(const Node& root);

}  // namespace reference::page

#endif
