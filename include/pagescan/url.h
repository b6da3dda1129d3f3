// Resolves URLs exactly as browsers do: the URL Standard's parser and serialiser.
//
// Texts are bytes of UTF-8; malformed bytes count as U+FFFD. Nothing here keeps a reference to an
// argument beyond the call, but for what a contract says. Different objects may be used on
// different threads at once.
#ifndef PAGESCAN_URL_H
#define PAGESCAN_URL_H

#include <optional>
#include <string>
#include <string_view>

#include "pagescan/export.h"

namespace pagescan {

// Resolves `url` against `base` and returns the serialised absolute URL.
//
// url       as written in a page: white space around it, tabs and line ends in it are dropped
// base      an absolute URL; empty: there is none, and `url` must be absolute itself
// encoding  label of the encoding that a special URL's query is written in; an unknown label counts
//           as UTF-8
// Returns   std::nullopt where the standard's parser fails, for `url` or for `base`
// Fails     std::bad_alloc alone
// Cost      linear in both texts
// Source    URL Standard, 4.4 "URL parsing", 4.5 "URL serializing"
PAGESCAN_PAGE_EXPORT std::optional<std::string> resolve(std::string_view url, std::string_view base,
                                                        std::string_view encoding = "UTF-8");

}  // namespace pagescan

#endif
