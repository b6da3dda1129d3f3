// What the standards call ASCII white space: form feed counts, vertical tab does not.
#ifndef PAGESCAN_ENCODING_ASCII_H
#define PAGESCAN_ENCODING_ASCII_H

#include "base/byte_class.h"

namespace pagescan::internal {

// Source    Infra Standard, 4.7 "ASCII whitespace"
inline constexpr ByteClass kAsciiWhiteSpace = ByteClass::of("\t\n\f\r ");

}  // namespace pagescan::internal

#endif
