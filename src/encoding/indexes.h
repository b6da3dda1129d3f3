// The indexes of the Encoding Standard (section 5) as decoders and encoders need them: the
// generated ones, and look-ups in those that are no plain array.
#ifndef PAGESCAN_ENCODING_INDEXES_H
#define PAGESCAN_ENCODING_INDEXES_H

#include <algorithm>
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

// Index Big5 in two bytes a character: U+FFFD for those beyond the basic plane, which are all of
// plane 2 and kept apart, sorted by pointer.
struct Big5Index {
  static constexpr std::size_t kSize = sizeOf(kBig5);
  static constexpr std::size_t kPlane2Count =
      std::count_if(kBig5, kBig5 + kSize, [](char32_t codePoint) { return codePoint > 0xFFFF; });
  struct Plane2Row {
    std::uint16_t pointer;
    char16_t low;  // of the code point, 16 bits
  };

  char16_t units[kSize];
  Plane2Row plane2[kPlane2Count];

  constexpr Big5Index() : units(), plane2() {
    Plane2Row* row = plane2;
    for (std::size_t i = 0; i < kSize; ++i) {
      const bool isBasic = kBig5[i] <= 0xFFFF;
      units[i] = static_cast<char16_t>(isBasic ? kBig5[i] : kReplacementCharacter);
      if (!isBasic) *row++ = {static_cast<std::uint16_t>(i), static_cast<char16_t>(kBig5[i])};
    }
  }
};
inline constexpr Big5Index kBig5Index;

// U+FFFD for a pointer that stands for nothing.
inline char32_t big5CodePoint(unsigned pointer) {
  const unsigned i = pointer - kBig5FirstPointer;
  if (i >= Big5Index::kSize) return kReplacementCharacter;
  if (kBig5Index.units[i] != kReplacementCharacter) return kBig5Index.units[i];
  const auto* const row =
      std::partition_point(std::begin(kBig5Index.plane2), std::end(kBig5Index.plane2),
                           [i](const Big5Index::Plane2Row& one) { return one.pointer < i; });
  const bool isThere = row != std::end(kBig5Index.plane2) && row->pointer == i;
  return isThere ? 0x20000 + char32_t{row->low} : kReplacementCharacter;
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
