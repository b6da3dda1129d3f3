// What decoders and encoders know of the single-byte encodings: those for which isSingleByte()
// holds.
#ifndef PAGESCAN_ENCODING_SINGLE_BYTE_H
#define PAGESCAN_ENCODING_SINGLE_BYTE_H

#include <array>
#include <cstdint>
#include <string_view>

#include "encoding/encoding.h"

namespace pagescan::internal {

// The UTF-8 of a byte.
struct ByteInUtf8 {
  char bytes[3];
  std::uint8_t length;
};
using SingleByteTable = std::array<ByteInUtf8, 256>;

const SingleByteTable& singleByteTableOf(Encoding encoding);

// The characters of the bytes from 0x80 on; U+FFFD for a byte that means nothing.
std::u16string_view singleByteIndexOf(Encoding encoding);

}  // namespace pagescan::internal

#endif
