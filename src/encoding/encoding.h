// The encodings of the Encoding Standard, by name and by label.
//
// Everything here is constant data and may be used on any thread at once. Nothing allocates.
#ifndef PAGESCAN_ENCODING_ENCODING_H
#define PAGESCAN_ENCODING_ENCODING_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace pagescan::internal {

// In the order of the standard's table (4.2 "Names and labels").
enum class Encoding : std::uint8_t {
  utf8,
  ibm866,
  iso8859_2,
  iso8859_3,
  iso8859_4,
  iso8859_5,
  iso8859_6,
  iso8859_7,
  iso8859_8,
  iso8859_8I,
  iso8859_10,
  iso8859_13,
  iso8859_14,
  iso8859_15,
  iso8859_16,
  koi8R,
  koi8U,
  macintosh,
  windows874,
  windows1250,
  windows1251,
  windows1252,
  windows1253,
  windows1254,
  windows1255,
  windows1256,
  windows1257,
  windows1258,
  xMacCyrillic,
  gbk,
  gb18030,
  big5,
  eucJp,
  iso2022Jp,
  shiftJis,
  eucKr,
  replacement,
  utf16Be,
  utf16Le,
  xUserDefined,
};

inline constexpr int kEncodingCount = static_cast<int>(Encoding::xUserDefined) + 1;
static_assert(kEncodingCount == 40);

// The encoding that a label means; ASCII white space around it and its case are ignored.
// Returns   std::nullopt for a text that is no label
// Cost      linear in the white space; the rest is bounded
// Source    Encoding Standard, 4.2 "get an encoding"
std::optional<Encoding> encodingForLabel(std::string_view label);

// The name as the standard spells it: "UTF-8", "windows-1252", "Shift_JIS".
std::string_view nameOf(Encoding encoding);

// What is written where a page has this encoding: those without an encoder give UTF-8.
// Source    Encoding Standard, 4.3 "get an output encoding"
constexpr Encoding outputEncodingOf(Encoding encoding) {
  switch (encoding) {
    case Encoding::replacement:
    case Encoding::utf16Be:
    case Encoding::utf16Le:
      return Encoding::utf8;
    default:
      return encoding;
  }
}

constexpr bool isUtf16(Encoding encoding) {
  return encoding == Encoding::utf16Be || encoding == Encoding::utf16Le;
}

// Whether every byte is a character of its own.
constexpr bool isSingleByte(Encoding encoding) {
  return (encoding >= Encoding::ibm866 && encoding <= Encoding::xMacCyrillic) ||
         encoding == Encoding::xUserDefined;
}

// Whether a byte below 0x80 may be something else than the ASCII character of that value, and not
// the trail byte of a character either: such text must be converted before delimiters are looked
// for. In all other encodings `<`, `>`, `=`, `&`, `;`, `/`, the quotes and white space stand for
// themselves wherever they occur (a trail byte may be a letter, a digit, `@`, `[`, `\`, `]`, `^`,
// `_`, "`", `{`, `|`, `}` or `~`).
constexpr bool needsConversion(Encoding encoding) {
  return isUtf16(encoding) || encoding == Encoding::iso2022Jp;
}

}  // namespace pagescan::internal

#endif
