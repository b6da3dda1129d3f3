// The decoder of ISO-2022-JP; see decoders.h.
#ifndef PAGESCAN_ENCODING_ISO2022JP_DECODER_H
#define PAGESCAN_ENCODING_ISO2022JP_DECODER_H

#include "encoding/decoders.h"
#include "encoding/indexes.h"

namespace pagescan::internal {

// Source    Encoding Standard, 12.2.1 "ISO-2022-JP decoder". Its states within a character or an
//           escape sequence are places in next(); what lasts is the character set and whether an
//           escape sequence came last.
class Iso2022JpDecoder {
 public:
  static constexpr bool kAsciiIsPlain = false;

  std::uint8_t state() const { return static_cast<std::uint8_t>(set_ | (justShifted_ ? 0x80 : 0)); }
  void resume(std::uint8_t state) {
    set_ = static_cast<Set>(state & 0x7F);
    justShifted_ = (state & 0x80) != 0;
  }

  const Byte* next(const Byte* at, const Byte* end, char*& out) {
    if (*at == kEscape) return escape(at, end, out);
    justShifted_ = false;
    if (set_ == kJis0208Set) return pair(at, end, out);
    const char32_t codePoint = characterOf(*at);
    out = writeUtf8(codePoint, out);
    return at + 1;
  }

 private:
  enum Set : std::uint8_t { kAsciiSet, kRomanSet, kKatakanaSet, kJis0208Set };
  static constexpr Byte kEscape = 0x1B;

  // Of a byte that is a character by itself; U+FFFD for a malformed one.
  char32_t characterOf(Byte byte) const {
    if (set_ == kKatakanaSet) {
      return isBetween(byte, 0x21, 0x5F) ? 0xFF61U - 0x21U + byte : kReplacementCharacter;
    }
    if (!isAscii(byte) || byte == 0x0E || byte == 0x0F) return kReplacementCharacter;
    if (set_ == kRomanSet && byte == '\\') return U'\u00A5';
    if (set_ == kRomanSet && byte == '~') return U'\u203E';
    return byte;
  }

  static const Byte* pair(const Byte* at, const Byte* end, char*& out) {
    if (!isBetween(*at, 0x21, 0x7E)) return malformed(at, 1, out);
    if (end - at < 2 || at[1] == kEscape) return malformed(at, 1, out);
    if (!isBetween(at[1], 0x21, 0x7E)) return malformed(at, 2, out);
    out = writeUtf8(kJis0208[(at[0] - 0x21U) * 94 + (at[1] - 0x21U)], out);
    return at + 2;
  }

  const Byte* escape(const Byte* at, const Byte* end, char*& out) {
    const int set = end - at < 3 ? -1 : setNamedBy(at[1], at[2]);
    const bool isSecondInARow = justShifted_ && set >= 0;
    justShifted_ = set >= 0;
    if (set < 0) return malformed(at, 1, out);
    set_ = static_cast<Set>(set);
    return isSecondInARow ? malformed(at, 3, out) : at + 3;
  }

  // The character set that an escape sequence leads to; -1 for none.
  static int setNamedBy(Byte second, Byte third) {
    if (second == '(') {
      if (third == 'B') return kAsciiSet;
      if (third == 'J') return kRomanSet;
      if (third == 'I') return kKatakanaSet;
    }
    return second == '$' && (third == '@' || third == 'B') ? kJis0208Set : -1;
  }

  Set set_ = kAsciiSet;
  bool justShifted_ = false;
};

}  // namespace pagescan::internal

#endif
