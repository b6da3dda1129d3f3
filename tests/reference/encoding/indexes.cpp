#include "reference/encoding/indexes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "encoding/generated/big5.h"
#include "encoding/generated/euc_kr.h"
#include "encoding/generated/gb18030.h"
#include "encoding/generated/gb18030_ranges.h"
#include "encoding/generated/jis0208.h"
#include "encoding/generated/jis0212.h"
#include "encoding/generated/katakana.h"
#include "encoding/generated/single_byte.h"

namespace reference {

using pagescan::internal::Encoding;
using namespace pagescan::internal;
namespace {

// From a generated literal, whose last unit is a NUL.
template <typename Unit, std::size_t kSize>
Index indexOf(const Unit (&literal)[kSize], std::size_t firstPointer = 0) {
  Index index(firstPointer, kNull);
  for (std::size_t i = 0; i + 1 < kSize; ++i) {
    index.push_back(literal[i] == 0xFFFD ? kNull : static_cast<int>(literal[i]));
  }
  return index;
}

std::vector<Index> singleByteIndexes() {
  return {
      indexOf(kIbm866),      indexOf(kIso8859_2),   indexOf(kIso8859_3),   indexOf(kIso8859_4),
      indexOf(kIso8859_5),   indexOf(kIso8859_6),   indexOf(kIso8859_7),   indexOf(kIso8859_8),
      indexOf(kIso8859_8),   indexOf(kIso8859_10),  indexOf(kIso8859_13),  indexOf(kIso8859_14),
      indexOf(kIso8859_15),  indexOf(kIso8859_16),  indexOf(kKoi8R),       indexOf(kKoi8U),
      indexOf(kMacintosh),   indexOf(kWindows874),  indexOf(kWindows1250), indexOf(kWindows1251),
      indexOf(kWindows1252), indexOf(kWindows1253), indexOf(kWindows1254), indexOf(kWindows1255),
      indexOf(kWindows1256), indexOf(kWindows1257), indexOf(kWindows1258), indexOf(kXMacCyrillic)};
}

}  // namespace

const Index& indexBig5() {
  static const Index index = indexOf(kBig5, kBig5FirstPointer);
  return index;
}
const Index& indexEucKr() {
  static const Index index = indexOf(kEucKr);
  return index;
}
const Index& indexGb18030() {
  static const Index index = indexOf(kGb18030);
  return index;
}
const Index& indexJis0208() {
  static const Index index = indexOf(kJis0208);
  return index;
}
const Index& indexJis0212() {
  static const Index index = indexOf(kJis0212);
  return index;
}
const Index& indexKatakana() {
  static const Index index = indexOf(kFullWidthKatakana);
  return index;
}
const Index& indexSingleByte(Encoding encoding) {
  static const std::vector<Index> indexes = singleByteIndexes();
  return indexes.at(static_cast<std::size_t>(encoding) -
                    static_cast<std::size_t>(Encoding::ibm866));
}

int indexCodePoint(const Index& index, int pointer) {
  return pointer >= 0 && static_cast<std::size_t>(pointer) < index.size()
             ? index[static_cast<std::size_t>(pointer)]
             : kNull;
}

int indexPointer(const Index& index, int codePoint) {
  const auto found = std::find(index.begin(), index.end(), codePoint);
  return found == index.end() ? kNull : static_cast<int>(found - index.begin());
}

int indexGb18030RangesCodePoint(int pointer) {
  if ((pointer > 39419 && pointer < 189000) || pointer > 1237575) return kNull;
  if (pointer == 7457) return 0xE7C7;
  int offset = 0;
  int codePointOffset = 0;
  for (const Gb18030Range& range : kGb18030Ranges) {
    if (static_cast<int>(range.pointer) > pointer) break;
    offset = static_cast<int>(range.pointer);
    codePointOffset = static_cast<int>(range.codePoint);
  }
  return codePointOffset + pointer - offset;
}

int indexGb18030RangesPointer(int codePoint) {
  if (codePoint == 0xE7C7) return 7457;
  int offset = 0;
  int pointerOffset = 0;
  for (const Gb18030Range& range : kGb18030Ranges) {
    if (static_cast<int>(range.codePoint) > codePoint) break;
    offset = static_cast<int>(range.codePoint);
    pointerOffset = static_cast<int>(range.pointer);
  }
  return pointerOffset + codePoint - offset;
}

int indexShiftJisPointer(int codePoint) {
  Index index = indexJis0208();
  std::fill(index.begin() + 8272, index.begin() + 8836, kNull);
  return indexPointer(index, codePoint);
}

int indexBig5Pointer(int codePoint) {
  static const Index index = [] {
    Index plain = indexBig5();
    std::fill(plain.begin(), plain.begin() + (0xA1 - 0x81) * 157, kNull);
    return plain;
  }();
  for (const int last : {0x2550, 0x255E, 0x2561, 0x256A, 0x5341, 0x5345}) {
    if (codePoint != last) continue;
    const auto found = std::find(index.rbegin(), index.rend(), codePoint);
    return static_cast<int>(index.rend() - found) - 1;
  }
  return indexPointer(index, codePoint);
}

}  // namespace reference
