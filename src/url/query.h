// Queries in the encoding of a page.
#ifndef PAGESCAN_URL_QUERY_H
#define PAGESCAN_URL_QUERY_H

#include <string>
#include <string_view>

#include "base/byte_class.h"
#include "encoding/encoding.h"

namespace pagescan::internal {

// Appends the text encoded, then percent-encoded (URL Standard, 1.3 "percent-encode after
// encoding"). A character that the encoding lacks becomes its number, as "%26%23NNN%3B".
// text       well-formed UTF-8
// encoding   one that has an encoder
void appendEncodedQuery(std::string& out, std::string_view text, const ByteClass& set,
                        Encoding encoding);

}  // namespace pagescan::internal

#endif
