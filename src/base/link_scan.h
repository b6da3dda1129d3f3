// The first look at a link: most have nothing in them that resolving would have to change.
#ifndef PAGESCAN_BASE_LINK_SCAN_H
#define PAGESCAN_BASE_LINK_SCAN_H

#include <string_view>

namespace pagescan::internal {

// All are linear; links are too short for vectors wider than NearVector.

// Whether a link holds a blank, a control byte or a "%".
bool needsCleaning(std::string_view link);

// Whether a link holds a backslash or a "./".
bool needsFolding(std::string_view link);

// Whether a link without control bytes begins with "http://" or "https://".
bool isAbsoluteHttp(std::string_view link);

}  // namespace pagescan::internal

#endif
