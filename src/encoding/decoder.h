// Decodes bytes of any encoding to UTF-8.
#ifndef PAGESCAN_ENCODING_DECODER_H
#define PAGESCAN_ENCODING_DECODER_H

#include <string>
#include <string_view>

#include "encoding/encoding.h"

namespace pagescan::internal {

// Appends `bytes` as UTF-8 to `out`. A byte order mark is a character like any other; what is
// malformed becomes U+FFFD.
// bytes     any bytes; must not be part of `out`
// Fails     std::bad_alloc alone
// Cost      linear in the bytes; runs of ASCII are copied many bytes at a time
// Source    Encoding Standard, 4.1 "process a queue" with a decoder and the error mode
// "replacement"
void appendDecoded(std::string& out, std::string_view bytes, Encoding encoding);

}  // namespace pagescan::internal

#endif
