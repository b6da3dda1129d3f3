// Which flavours of percent encoding a text is canonical of: decoding and encoding give it back as
// it was.
#ifndef PAGESCAN_ZKURLENCODING_CANONICAL_H
#define PAGESCAN_ZKURLENCODING_CANONICAL_H

#include <string_view>

#include "classic/zkurlencoding_tables.h"

namespace pagescan::internal {

// Those of `candidates` of which `text` is canonical, with the placeholder that the library comes
// with. One pass, linear in the text; allocates nothing.
FlavourSet canonicalFlavours(std::string_view text, FlavourSet candidates);

}  // namespace pagescan::internal

#endif
