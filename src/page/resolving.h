// The URLs of the references of a page.
#ifndef PAGESCAN_PAGE_RESOLVING_H
#define PAGESCAN_PAGE_RESOLVING_H

#include <string>

#include "page/page_reading.h"

namespace pagescan::internal {

// Resolves the value of a reference and writes the URL; false where there is none, and `out` is
// then of no use.
// out    its content is replaced; its memory is used again
// Cost   linear in the value and the URL; for an ASCII value that is its own decoding, only `out`
//        allocates
bool resolveReference(const PageReading& page, const Reference& reference, std::string& out);

// What a reference resolves against. Valid as long as the page and `storage`, in which it may
// stand.
const Base& baseOf(const PageReading& page, const Reference& reference, Base& storage);

}  // namespace pagescan::internal

#endif
