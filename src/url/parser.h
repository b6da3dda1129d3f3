// The URL Standard's parser (4.4 "URL parsing") as it is without a state override, writing the
// serialised URL (4.5 "URL serializing") as it goes.
#ifndef PAGESCAN_URL_PARSER_H
#define PAGESCAN_URL_PARSER_H

#include <string>
#include <string_view>

#include "encoding/encoding.h"
#include "pagescan/url.h"
#include "url/url_view.h"

namespace pagescan::internal {

// Parses any text. False where the standard's parser fails; `out` and `at` are then of no use.
// text           bytes as written
// base           nullptr: none
// queryEncoding  one that has an encoder
// out            its content is replaced; its memory is used again. No part of the other arguments.
bool parseUrl(std::string& out, UrlOffsets& at, std::string_view text, const UrlView* base,
              Encoding queryEncoding);

}  // namespace pagescan::internal

#endif
