// Percent escapes: "%" and the two bytes after it.
#ifndef PAGESCAN_BASE_PERCENT_H
#define PAGESCAN_BASE_PERCENT_H

#include <array>
#include <cstddef>

#include "base/byte_class.h"

namespace pagescan::internal {

inline constexpr std::ptrdiff_t kEscapeLength = 3;

// An escape is decoded when its number is 32 or more. Such a number takes two digits: what else
// readHexEscape accepts, one digit with or without a blank or a sign, gives less.
inline constexpr int kLeastDecoded = 32;

// By byte, what hexDigitValue gives. Not inline: the kernels' objects must share no definitions.
extern const std::array<signed char, 256> kHexDigitValues;

// The number after the "%" at `escape`; something below kLeastDecoded without two digits.
inline unsigned char escapedByte(const char* escape) {
  const int high = kHexDigitValues[toByte(escape[1])];
  const int low = kHexDigitValues[toByte(escape[2])];
  return static_cast<unsigned char>((high | low) < 0 ? 0 : high * 16 + low);
}

// Whether the "%" at `at` begins an escape that is decoded.
inline bool isEscape(const char* at, const char* end) {
  return end - at >= kEscapeLength && escapedByte(at) >= kLeastDecoded;
}

}  // namespace pagescan::internal

#endif
