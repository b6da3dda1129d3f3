#include "base/byte_class.h"
#include "host/conversion.h"
#include "hostroutines.h"

// Weak, and in an object of its own, so that a host's definition wins in every kind of link.
[[gnu::weak]] int ANSIToUTF8(int /*reserved*/, const char* source, int sourceLength,
                             char* destination, int destinationSize) {
  if (destinationSize <= 0) return 0;
  pagescan::internal::Conversion text(source, sourceLength, destination, destinationSize);
  // A character that does not fit as a whole ends the result.
  while (text.copyAscii() && text.room() >= 2) {
    do {
      const unsigned character = pagescan::internal::toByte(*text.source());
      text.put(static_cast<char>(0xC0 | (character >> 6)));
      text.put(static_cast<char>(0x80 | (character & 0x3F)));
      text.skip(1);
    } while (text.isAtOther() && text.room() >= 2);
  }
  return text.finish();
}
