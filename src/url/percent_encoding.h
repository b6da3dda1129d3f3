// Percent-encoding and -decoding of bytes (URL Standard, 1.3 "Percent-encoded bytes").
#ifndef PAGESCAN_URL_PERCENT_ENCODING_H
#define PAGESCAN_URL_PERCENT_ENCODING_H

#include <string>
#include <string_view>

#include "base/byte_class.h"

namespace pagescan::internal {

// Appends the bytes, each member of `set` as "%" and two upper-case hexadecimal digits.
void appendPercentEncoded(std::string& out, std::string_view bytes, const ByteClass& set);

// The bytes with each "%" and its two hexadecimal digits replaced by the byte that they spell; a
// "%" without two digits stays.
std::string percentDecoded(std::string_view text);

}  // namespace pagescan::internal

#endif
