// How pairs of bytes are pointers into the indexes of the two-byte encodings.
#ifndef PAGESCAN_ENCODING_PAIR_TABLES_H
#define PAGESCAN_ENCODING_PAIR_TABLES_H

#include <cstddef>
#include <cstdint>

#include "encoding/bytes.h"
#include "encoding/indexes.h"

namespace pagescan::internal {

// A pointer that stands for none.
inline constexpr unsigned kNoPointer = ~0U;

// Most pairs of bytes are one look-up: the pointer is the sum of what the lead byte and the trail
// byte stand for. No branch depends on the bytes, which are as good as random in text.
template <std::size_t kSize>
class PairTable {
 public:
  // pointerOf(lead, trail) is the pointer of any two bytes, or kNoPointer; lead and trail are the
  // bytes of pointer 0.
  template <typename PointerOf>
  constexpr PairTable(Byte lead, Byte trail, const PointerOf& pointerOf) : rows_(), columns_() {
    for (unsigned byte = 0; byte < 256; ++byte) {
      rows_[byte] = orNone(pointerOf(static_cast<Byte>(byte), trail));
      columns_[byte] = orNone(pointerOf(lead, static_cast<Byte>(byte)));
    }
  }

  // Decodes the pair at `at` when it is in the index and in the basic plane; else returns nullptr.
  const Byte* next(const char16_t* index, const Byte* at, const Byte* end, char*& out) const {
    if (end - at < 2) return nullptr;
    const std::size_t pointer = std::size_t{rows_[at[0]]} + columns_[at[1]];
    if (pointer >= kSize || index[pointer] == kReplacementCharacter) return nullptr;
    out = writeUtf8InRoom(index[pointer], out);
    return at + 2;
  }

 private:
  static constexpr std::uint16_t kNone = 0xFFFF;
  static_assert(kSize < kNone);
  static constexpr std::uint16_t orNone(unsigned pointer) {
    return pointer == kNoPointer ? kNone : static_cast<std::uint16_t>(pointer);
  }

  std::uint16_t rows_[256];
  std::uint16_t columns_[256];
};

// The pointer of any two bytes; kNoPointer when they are no lead and trail byte.

constexpr unsigned eucKrPointerOf(Byte lead, Byte trail) {
  if (!isBetween(lead, 0x81, 0xFE) || !isBetween(trail, 0x41, 0xFE)) return kNoPointer;
  return (lead - 0x81U) * 190 + (trail - 0x41U);
}

constexpr unsigned big5PointerOf(Byte lead, Byte trail) {
  if (!isBetween(lead, 0x81, 0xFE)) return kNoPointer;
  if (isBetween(trail, 0x40, 0x7E)) return (lead - 0x81U) * 157 + (trail - 0x40U);
  return isBetween(trail, 0xA1, 0xFE) ? (lead - 0x81U) * 157 + (trail - 0x62U) : kNoPointer;
}

constexpr bool isEucJpByte(Byte byte) {
  return isBetween(byte, 0xA1, 0xFE);
}

constexpr unsigned eucJpPointerOf(Byte lead, Byte trail) {
  if (!isEucJpByte(lead) || !isEucJpByte(trail)) return kNoPointer;
  return (lead - 0xA1U) * 94 + (trail - 0xA1U);
}

constexpr bool isShiftJisLead(Byte byte) {
  return isBetween(byte, 0x81, 0x9F) || isBetween(byte, 0xE0, 0xFC);
}

constexpr unsigned shiftJisPointerOf(Byte lead, Byte trail) {
  if (!isShiftJisLead(lead)) return kNoPointer;
  const unsigned row = (lead - (lead < 0xA0 ? 0x81U : 0xC1U)) * 188;
  if (isBetween(trail, 0x40, 0x7E)) return row + (trail - 0x40U);
  return isBetween(trail, 0x80, 0xFC) ? row + (trail - 0x41U) : kNoPointer;
}

constexpr unsigned gb18030PointerOf(Byte lead, Byte trail) {
  if (!isBetween(lead, 0x81, 0xFE)) return kNoPointer;
  if (isBetween(trail, 0x40, 0x7E)) return (lead - 0x81U) * 190 + (trail - 0x40U);
  return isBetween(trail, 0x80, 0xFE) ? (lead - 0x81U) * 190 + (trail - 0x41U) : kNoPointer;
}

inline constexpr PairTable<sizeOf(kEucKr)> kEucKrPairs{0x81, 0x41, eucKrPointerOf};
inline constexpr PairTable<sizeOf(kJis0208)> kEucJpPairs{0xA1, 0xA1, eucJpPointerOf};
inline constexpr PairTable<sizeOf(kJis0208)> kShiftJisPairs{0x81, 0x40, shiftJisPointerOf};
inline constexpr PairTable<sizeOf(kGb18030)> kGb18030Pairs{0x81, 0x40, gb18030PointerOf};
// Without the rows that are empty.
inline constexpr PairTable<Big5Index::kSize> kBig5Pairs{
    0x87, 0x40, [](Byte lead, Byte trail) {
      const unsigned pointer = big5PointerOf(lead, trail);
      const bool isThere = pointer != kNoPointer && pointer >= kBig5FirstPointer;
      return isThere ? pointer - kBig5FirstPointer : kNoPointer;
    }};

}  // namespace pagescan::internal

#endif
