// The slow twin of the decoders: the Encoding Standard's algorithms, a byte at a time.
#ifndef PAGESCAN_TESTS_REFERENCE_ENCODING_DECODE_H
#define PAGESCAN_TESTS_REFERENCE_ENCODING_DECODE_H

#include <string>
#include <string_view>

#include "encoding/encoding.h"

namespace reference {

// "Process a queue" with the encoding's decoder and the error mode "replacement", as UTF-8.
std::string decode(std::string_view bytes, pagescan::internal::Encoding encoding);

}  // namespace reference

#endif
