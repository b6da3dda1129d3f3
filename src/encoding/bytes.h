// Bytes and ranges of them.
#ifndef PAGESCAN_ENCODING_BYTES_H
#define PAGESCAN_ENCODING_BYTES_H

namespace pagescan::internal {

using Byte = unsigned char;

constexpr bool isAscii(Byte byte) {
  return byte < 0x80;
}

constexpr bool isBetween(unsigned value, unsigned first, unsigned last) {
  return value - first <= last - first;
}

}  // namespace pagescan::internal

#endif
