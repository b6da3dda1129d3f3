// Writes characters as UTF-8.
#ifndef PAGESCAN_ENCODING_UTF8_H
#define PAGESCAN_ENCODING_UTF8_H

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

namespace pagescan::internal {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Writes a scalar value to `out` and returns the place after it: at most four bytes further.
constexpr char* writeUtf8(char32_t codePoint, char* out) {
  const auto byte = [](char32_t bits) {
    return static_cast<char>(static_cast<unsigned char>(bits));
  };
  if (codePoint < 0x80) {
    *out++ = byte(codePoint);
    return out;
  }
  if (codePoint < 0x800) {
    *out++ = byte(0xC0 | codePoint >> 6);
  } else {
    if (codePoint < 0x10000) {
      *out++ = byte(0xE0 | codePoint >> 12);
    } else {
      *out++ = byte(0xF0 | codePoint >> 18);
      *out++ = byte(0x80 | (codePoint >> 12 & 0x3F));
    }
    *out++ = byte(0x80 | (codePoint >> 6 & 0x3F));
  }
  *out++ = byte(0x80 | (codePoint & 0x3F));
  return out;
}

// The same for a character of the basic plane, at a place with room for four bytes: most characters
// of two-byte encodings take three, which are written at once.
inline char* writeUtf8InRoom(char16_t unit, char* out) {
  if constexpr (std::endian::native == std::endian::little) {
    if (unit >= 0x800) {
      const std::uint32_t bytes = 0x8080E0U | static_cast<std::uint32_t>(unit) >> 12 |
                                  (unit & 0xFC0U) << 2 | (unit & 0x3FU) << 16;
      std::memcpy(out, &bytes, sizeof bytes);
      return out + 3;
    }
  }
  return writeUtf8(unit, out);
}

inline void appendUtf8(std::string& out, char32_t codePoint) {
  char bytes[4];
  out.append(bytes, writeUtf8(codePoint, bytes));
}

}  // namespace pagescan::internal

#endif
