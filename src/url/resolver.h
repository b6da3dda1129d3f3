// One link after another against one base, as the page reader does it.
#ifndef PAGESCAN_URL_RESOLVER_H
#define PAGESCAN_URL_RESOLVER_H

#include <string>
#include <string_view>

#include "encoding/encoding.h"
#include "pagescan/url.h"

namespace pagescan::internal {

// The encoding that queries are written in for a page of the encoding with this label; UTF-8 for
// one that is unknown.
Encoding queryEncodingForLabel(std::string_view label);

// Resolves a link and writes the serialised URL.
// out            its content is replaced; its memory is used again. No part of the other arguments.
// url            bytes as written
// queryEncoding  of the page; one without an encoder counts as UTF-8
// Returns        false where the standard's parser fails; `out` is then of no use
// Cost           linear; allocates nothing but what `out` needs, for a link in plain ASCII
bool resolveInto(std::string& out, std::string_view url, const Base& base, Encoding queryEncoding);

}  // namespace pagescan::internal

#endif
