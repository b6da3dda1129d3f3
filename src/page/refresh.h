// The URL of a refresh: <meta http-equiv=refresh content="5; url=next.html">.
#ifndef PAGESCAN_PAGE_REFRESH_H
#define PAGESCAN_PAGE_REFRESH_H

#include <optional>
#include <string_view>

#include "pagescan/page.h"

namespace pagescan::internal {

// Where the URL stands in the content of a refresh.
// content  decoded UTF-8 of at most 2^32-1 bytes
// Returns  std::nullopt where there is no refresh, or one that spells no URL
// Cost     linear
// Source   HTML Standard, 4.2.5.3 "shared declarative refresh steps"
std::optional<Span> findRefreshUrl(std::string_view content);

}  // namespace pagescan::internal

#endif
