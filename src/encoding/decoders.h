// The decoders of the Encoding Standard, one character at a time.
//
// A decoder is a small object with
//
//   const Byte* next(const Byte* at, const Byte* end, char*& out);
//
// which decodes what begins at `at` (at < end): it takes at least one byte and returns the place
// after it, and writes UTF-8 to `out`, at most three bytes for each byte that it took. It writes
// nothing for an escape sequence alone. What is malformed gives U+FFFD, and a byte that does not
// belong to it is left for the next call.
//
//   std::uint8_t state() const;  void resume(std::uint8_t state);
//
// are all that it knows of the text before; kAsciiIsPlain says that a byte below 0x80 at `at`
// always is that character.
#ifndef PAGESCAN_ENCODING_DECODERS_H
#define PAGESCAN_ENCODING_DECODERS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "encoding/bytes.h"
#include "encoding/single_byte.h"
#include "encoding/utf8.h"

namespace pagescan::internal {

inline constexpr int kMaxUtf8PerByte = 3;

// Writes U+FFFD for `bytes` bytes.
inline const Byte* malformed(const Byte* at, std::ptrdiff_t bytes, char*& out) {
  out = writeUtf8(kReplacementCharacter, out);
  return at + bytes;
}

// A decoder that needs to know nothing of the text before.
struct StatelessDecoder {
  static constexpr bool kAsciiIsPlain = true;
  static constexpr std::uint8_t state() { return 0; }
  static constexpr void resume(std::uint8_t /*state*/) {}
};

// Source    Encoding Standard, 8.1.1 "UTF-8 decoder"
class Utf8Decoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    const Byte lead = *at;
    if (isAscii(lead)) {
      *out++ = static_cast<char>(lead);
      return at + 1;
    }
    const int length = lengthFor(lead);
    for (int i = 1; i < length; ++i) {
      if (at + i == end || !isTrail(lead, i, at[i])) return malformed(at, i, out);
    }
    if (length == 0) return malformed(at, 1, out);
    std::memcpy(out, at, static_cast<std::size_t>(length));
    out += length;
    return at + length;
  }

 private:
  // Of the character that begins with `lead`; 0 when none does.
  static int lengthFor(Byte lead) {
    if (isBetween(lead, 0xC2, 0xDF)) return 2;
    if (isBetween(lead, 0xE0, 0xEF)) return 3;
    return isBetween(lead, 0xF0, 0xF4) ? 4 : 0;
  }

  // The first byte after some leads has less freedom: no overlong forms, no surrogates, nothing
  // beyond U+10FFFF.
  static bool isTrail(Byte lead, int index, Byte byte) {
    const unsigned first = index > 1 ? 0x80 : lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned last = index > 1 ? 0xBF : lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    return isBetween(byte, first, last);
  }
};

// Source    Encoding Standard, 9.1 "single-byte decoder", 14.5.1 "x-user-defined decoder"
class SingleByteDecoder : public StatelessDecoder {
 public:
  explicit SingleByteDecoder(const SingleByteTable& table) : table_(&table) {}

  const Byte* next(const Byte* at, const Byte* /*end*/, char*& out) const {
    const ByteInUtf8& written = (*table_)[*at];
    std::memcpy(out, &written, written.length);
    out += written.length;
    return at + 1;
  }

  // The same for the eight bytes at `at`; `out` has room for 32.
  const Byte* nextEight(const Byte* at, char*& out) const {
    char* to = out;
    for (int i = 0; i < 8; ++i) {
      const ByteInUtf8& written = (*table_)[at[i]];
      std::memcpy(to, &written, sizeof written);
      to += written.length;
    }
    out = to;
    return at + 8;
  }

 private:
  const SingleByteTable* table_;
};

// Source    Encoding Standard, 14.2.1 "shared UTF-16 decoder"
template <bool kIsBigEndian>
class Utf16Decoder : public StatelessDecoder {
 public:
  static constexpr bool kAsciiIsPlain = false;

  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    if (end - at < 2) return malformed(at, 1, out);
    const unsigned unit = unitAt(at);
    if (!isBetween(unit, 0xD800, 0xDFFF)) {
      out = writeUtf8(unit, out);
      return at + 2;
    }
    if (unit >= 0xDC00) return malformed(at, 2, out);
    // The end in the middle of a pair is one error.
    if (end - at < 4) return malformed(at, end - at, out);
    const unsigned trail = unitAt(at + 2);
    if (!isBetween(trail, 0xDC00, 0xDFFF)) return malformed(at, 2, out);
    out = writeUtf8(0x10000 + ((unit - 0xD800) << 10) + (trail - 0xDC00), out);
    return at + 4;
  }

 private:
  static unsigned unitAt(const Byte* at) {
    return kIsBigEndian ? unsigned{at[0]} << 8 | at[1] : unsigned{at[1]} << 8 | at[0];
  }
};

// The whole text is one error.
// Source    Encoding Standard, 14.1.1 "replacement decoder"
class ReplacementDecoder : public StatelessDecoder {
 public:
  static constexpr bool kAsciiIsPlain = false;

  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    return malformed(at, end - at, out);
  }
};

}  // namespace pagescan::internal

#endif
