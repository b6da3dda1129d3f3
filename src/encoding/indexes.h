// The indexes of the Encoding Standard (section 5) as decoders and encoders need them: the
// generated ones, and look-ups in those that are no plain array.
#ifndef PAGESCAN_ENCODING_INDEXES_H
#define PAGESCAN_ENCODING_INDEXES_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "encoding/generated/big5.h"
#include "encoding/generated/euc_kr.h"
#include "encoding/generated/gb18030.h"
#include "encoding/generated/gb18030_ranges.h"
#include "encoding/generated/jis0208.h"
#include "encoding/generated/jis0212.h"
#include "encoding/utf8.h"

namespace pagescan::internal {

// Number of pointers of an index.
template <typename Unit, std::size_t kSize>
constexpr std::size_t sizeOf(const Unit (&/*index*/)[kSize]) {
  return kSize - 1;  // but for the closing NUL of the literal
}

// Index Big5 in two bytes a character: its characters are of plane 0 or 2.
struct Big5Index {
  static constexpr std::size_t kSize = sizeOf(kBig5);
  std::array<char16_t, kSize> units{};
  std::array<std::uint8_t, (kSize + 7) / 8> isPlane2{};

  constexpr Big5Index() {
    for (std::size_t i = 0; i < kSize; ++i) {
      units[i] = static_cast<char16_t>(kBig5[i] & 0xFFFF);
      if (kBig5[i] > 0xFFFF) isPlane2[i / 8] |= static_cast<std::uint8_t>(1U << (i % 8));
    }
  }
};
inline constexpr Big5Index kBig5Index;

// U+FFFD for a pointer that stands for nothing.
inline char32_t big5CodePoint(unsigned pointer) {
  const unsigned i = pointer - kBig5FirstPointer;
  if (i >= Big5Index::kSize) return kReplacementCharacter;
  const char32_t unit = kBig5Index.units[i];
  return (kBig5Index.isPlane2[i / 8] >> (i % 8) & 1) != 0 ? 0x20000 + unit : unit;
}

// The one pointer that the ranges are wrong about, kept as GB 18030-2005 has it.
inline constexpr unsigned kGb18030OddPointer = 7457;
inline constexpr char32_t kGb18030OddCodePoint = U'\uE7C7';

// "Index gb18030 ranges code point"; U+FFFD for a pointer that stands for nothing.
inline char32_t gb18030RangesCodePoint(unsigned pointer) {
  if ((pointer > 39419 && pointer < 189000) || pointer > 1237575) return kReplacementCharacter;
  if (pointer == kGb18030OddPointer) return kGb18030OddCodePoint;
  const auto* const range = std::prev(
      std::partition_point(std::begin(kGb18030Ranges), std::end(kGb18030Ranges),
                           [pointer](const Gb18030Range& row) { return row.pointer <= pointer; }));
  return range->codePoint + (pointer - range->pointer);
}

// "Index gb18030 ranges pointer", for a code point from U+0080 on.
inline unsigned gb18030RangesPointer(char32_t codePoint) {
  if (codePoint == kGb18030OddCodePoint) return kGb18030OddPointer;
  const auto* const range = std::prev(std::partition_point(
      std::begin(kGb18030Ranges), std::end(kGb18030Ranges),
      [codePoint](const Gb18030Range& row) { return row.codePoint <= codePoint; }));
  return range->pointer + (codePoint - range->codePoint);
}

}  // namespace pagescan::internal

#endif
