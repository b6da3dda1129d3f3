// Which bytes of a link are the same bytes in the URL that it means.
#ifndef PAGESCAN_BASE_URL_BYTES_H
#define PAGESCAN_BASE_URL_BYTES_H

#include "base/byte_class.h"

namespace pagescan::internal {

// In each part after the host: what no percent-encode set of a path, query or fragment holds, and
// no "\" (URL Standard, 1.3 "Percent-encoded bytes", 4.4 "URL parsing").
inline constexpr ByteClass kKeptUrlBytes =
    kLettersAndDigits | ByteClass::of("!#$%&()*+,-./:;=?@[]_|~");

// In a host of names.
inline constexpr ByteClass kKeptHostBytes = kLower | kDigits | ByteClass::of("-._");

}  // namespace pagescan::internal

#endif
