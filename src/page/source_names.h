// The names of elements of references.
#ifndef PAGESCAN_PAGE_SOURCE_NAMES_H
#define PAGESCAN_PAGE_SOURCE_NAMES_H

#include <string>

#include "page/page_reading.h"

namespace pagescan::internal {

// The name of the element of a reference, with the prefix of its namespace. One that no table has
// is read from its tag again.
std::string elementNameOf(const PageReading& page, const Reference& reference);

}  // namespace pagescan::internal

#endif
