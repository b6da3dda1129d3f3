// The scheme of a URL: where it ends and which one it is.
#ifndef PAGESCAN_BASE_URL_SCHEME_H
#define PAGESCAN_BASE_URL_SCHEME_H

#include <string_view>

namespace pagescan::internal {

// The letters at the start with the colon after them; empty when there is none. A URL that begins
// with a colon has the scheme ":".
std::string_view schemeOf(std::string_view url);

// The values are part of the library's interface.
enum class SchemeCode {
  none = 0,
  ftp = 1,
  file = 2,
  http = 3,
  https = 4,
  mailto = 5,
  javascript = 6,
  other = 7,
  clsid = 8
};

// The code of what schemeOf returned.
SchemeCode schemeCodeOf(std::string_view scheme);

}  // namespace pagescan::internal

#endif
