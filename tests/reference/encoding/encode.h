// The slow twin of the encoders: the Encoding Standard's algorithms, a code point at a time.
#ifndef PAGESCAN_TESTS_REFERENCE_ENCODING_ENCODE_H
#define PAGESCAN_TESTS_REFERENCE_ENCODING_ENCODE_H

#include <string>
#include <string_view>

#include "encoding/encoding.h"

namespace reference {

// "Encode or fail", again and again with one encoder: where it fails, "&#" and ";" around the code
// point that it returns, written past the encoder.
std::string encode(std::u32string_view text, pagescan::internal::Encoding encoding);

}  // namespace reference

#endif
