#include <algorithm>
#include <array>
#include <cstddef>

#include "base/byte_class.h"
#include "host/conversion.h"
#include "hostroutines.h"

namespace pagescan::internal {
namespace {

// What a lead byte asks for: the second byte is in a range of its own, so that no character has
// two forms and none is a surrogate or beyond U+10FFFF; all others are from 0x80 to 0xBF.
struct Lead {
  unsigned char first;
  unsigned char last;
  unsigned char secondFirst;
  unsigned char secondLast;
  std::ptrdiff_t length;
};
constexpr Lead kLeads[] = {
    {0x00, 0xFF, 0x00, 0xFF, 1},  // no lead byte: alone
    {0xC2, 0xDF, 0x80, 0xBF, 2},  //
    {0xE0, 0xE0, 0xA0, 0xBF, 3},  // not below U+0800
    {0xE1, 0xEC, 0x80, 0xBF, 3},  //
    {0xED, 0xED, 0x80, 0x9F, 3},  // no surrogates
    {0xEE, 0xEF, 0x80, 0xBF, 3},  //
    {0xF0, 0xF0, 0x90, 0xBF, 4},  // not below U+10000
    {0xF1, 0xF3, 0x80, 0xBF, 4},  //
    {0xF4, 0xF4, 0x80, 0x8F, 4},  // not beyond U+10FFFF
};

// For every byte its row, the last one that fits.
constexpr std::array<unsigned char, 256> kLeadOfByte = [] {
  std::array<unsigned char, 256> rows{};
  unsigned char row = 0;
  for (const Lead& lead : kLeads) {
    for (unsigned byte = lead.first; byte <= lead.last; ++byte) rows[byte] = row;
    ++row;
  }
  return rows;
}();

bool isIn(char byte, unsigned char first, unsigned char last) {
  return toByte(byte) >= first && toByte(byte) <= last;
}

// The length of the character at `at`, or of the longest start of one that stands there: a
// malformed sequence ends where the first byte no longer fits. At least 1.
std::ptrdiff_t sequenceLength(const char* at, const char* end) {
  const Lead& lead = kLeads[kLeadOfByte[toByte(*at)]];
  const std::ptrdiff_t most = std::min(lead.length, end - at);
  if (most == 1 || !isIn(at[1], lead.secondFirst, lead.secondLast)) return 1;
  std::ptrdiff_t length = 2;
  while (length < most && isIn(at[length], 0x80, 0xBF)) ++length;
  return length;
}

// U+0080 to U+00FF, the characters beyond ASCII that have a byte.
bool hasByte(const char* at, std::ptrdiff_t length) {
  return length == 2 && isIn(*at, 0xC2, 0xC3);
}

char byteOf(const char* at) {
  return static_cast<char>((toByte(at[0]) << 6) | (toByte(at[1]) & 0x3F));
}

}  // namespace
}  // namespace pagescan::internal

// Weak, and in an object of its own, so that a host's definition wins in every kind of link.
[[gnu::weak]] int UTF8ToANSI(int /*reserved*/, const char* source, int sourceLength,
                             char* destination, int destinationSize) {
  if (destinationSize <= 0) return 0;
  pagescan::internal::Conversion text(source, sourceLength, destination, destinationSize);
  while (text.copyAscii()) {
    do {
      const char* at = text.source();
      const std::ptrdiff_t length = pagescan::internal::sequenceLength(at, text.sourceEnd());
      text.put(pagescan::internal::hasByte(at, length) ? pagescan::internal::byteOf(at) : '?');
      text.skip(length);
    } while (text.isAtOther() && text.room() > 0);
  }
  return text.finish();
}
