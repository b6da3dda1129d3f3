// The cleaning of URLs, on views, so that a URL with nothing to clean costs no copy.
#ifndef PAGESCAN_URL_CLEANING_H
#define PAGESCAN_URL_CLEANING_H

#include <string_view>

#include "classic/scratch_text.h"

namespace pagescan::internal {

// What stripUrl makes of `url`: a part of `url` itself where only its ends had to go, otherwise the
// text built in `scratch`.
// Fails   std::bad_alloc.
std::string_view cleanUrl(std::string_view url, bool decodePercent, ScratchText& scratch);

}  // namespace pagescan::internal

#endif
