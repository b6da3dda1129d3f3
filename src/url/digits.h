// Hexadecimal digits.
#ifndef PAGESCAN_URL_DIGITS_H
#define PAGESCAN_URL_DIGITS_H

#include "base/byte_class.h"

namespace pagescan::internal {

inline constexpr ByteClass kHexDigits =
    kDigits | ByteClass::range('a', 'f') | ByteClass::range('A', 'F');

constexpr bool isHexDigit(char c) {
  return kHexDigits.contains(c);
}

// The value of a hexadecimal digit.
constexpr unsigned hexDigitValue(char c) {
  return kDigits.contains(c) ? static_cast<unsigned>(c - '0')
                             : static_cast<unsigned>(toLower(c) - 'a') + 10;
}

}  // namespace pagescan::internal

#endif
