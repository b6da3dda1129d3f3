// Finds names where they stand in a page: their ends, and their numbers.
//
// Eight bytes are looked at together. A name's key is made of bytes that are at hand then; a table
// built at compile time holds the keys of the known names.
#ifndef PAGESCAN_PAGE_NAME_TABLES_H
#define PAGESCAN_PAGE_NAME_TABLES_H

#include <array>
#include <bit>
#include <cstring>
#include <string_view>

#include "base/byte_class.h"
#include "page/names.h"

namespace pagescan::internal {

static_assert(std::endian::native == std::endian::little, "a key's first byte is its lowest");

// The white space of the tokenizer, and what ends names.
inline constexpr ByteClass kTagWhiteSpace = ByteClass::of("\t\n\f\r ");
inline constexpr ByteClass kTagNameEnd = kTagWhiteSpace | ByteClass::of("/>");
inline constexpr ByteClass kAttributeNameEnd = kTagNameEnd | ByteClass::of("=");

// ASCII capitals of eight bytes to lower case, all other bytes as they are.
constexpr std::uint64_t lowerCased(std::uint64_t word) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  const std::uint64_t low = word & (0x7f * kOnes);
  const std::uint64_t fromA = low + (0x80 - 'A') * kOnes;
  const std::uint64_t pastZ = low + (0x7f - 'Z') * kOnes;
  return word | ((fromA ^ pastZ) & ~word & (0x80 * kOnes)) >> 2;
}

// What tells a name from others: its length and its first and last eight bytes in lower case.
struct NameKey {
  std::uint64_t head = 0;  // a shorter name at its upper end
  std::uint64_t tail = 0;  // 0 for names of up to eight bytes
  std::uint64_t length = 0;

  constexpr bool operator==(const NameKey&) const = default;

  constexpr std::uint64_t hash() const {
    const std::uint64_t mixed =
        (head ^ (tail >> 29) ^ (tail << 17) ^ length) * std::uint64_t{0x9E3779B97F4A7C15};
    return mixed >> 48;
  }
};

inline std::uint64_t wordAt(const char* at) {
  std::uint64_t word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// A name and where it ends.
struct ScannedName {
  const char* end;
  NameKey key;
};

// The high bit of each byte that is below `limit` or equal to one of `others`. Bits above the
// lowest one set may be wrong.
template <char... kOthers>
constexpr std::uint64_t bytesThatEnd(std::uint64_t word) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  const std::uint64_t low = (word - (' ' + 1) * kOnes) & ~word;
  const auto equal = [word](char c) {
    const std::uint64_t differing = word ^ (static_cast<unsigned char>(c) * kOnes);
    return (differing - kOnes) & ~differing;
  };
  return (low | ... | equal(kOthers)) & (0x80 * kOnes);
}

// Reads a name a byte at a time: near the end of the page, and where a control character stands.
ScannedName scanNameSlowly(const char* name, const char* end, const ByteClass& stop);

// A name of at least eight bytes, all readable.
template <char... kOthers>
ScannedName scanLongName(const char* name, const char* end, const ByteClass& stop) {
  constexpr std::ptrdiff_t kWord = 8;
  for (const char* at = name + kWord; end - at >= kWord; at += kWord) {
    const std::uint64_t ends = bytesThatEnd<kOthers...>(wordAt(at));
    if (ends == 0) continue;
    at += std::countr_zero(ends) / 8;
    if (!stop.contains(*at)) break;
    if (at == name + kWord) return {at, {lowerCased(wordAt(name)), 0, kWord}};
    return {at,
            {lowerCased(wordAt(name)), lowerCased(wordAt(at - kWord)),
             static_cast<std::uint64_t>(at - name)}};
  }
  return scanNameSlowly(name, end, stop);
}

// The name that starts at `name`, which is not empty: its first byte belongs to it in any case.
// kOthers  what ends it besides white space
template <char... kOthers>
[[gnu::always_inline]] inline ScannedName scanName(const char* name, const char* end,
                                                   const ByteClass& stop) {
  if (end - name < 8) return scanNameSlowly(name, end, stop);
  const std::uint64_t word = wordAt(name);
  const std::uint64_t ends = bytesThatEnd<kOthers...>(word) & ~std::uint64_t{0xFF};
  if (ends == 0) return scanLongName<kOthers...>(name, end, stop);
  const int length = std::countr_zero(ends) / 8;
  if (!stop.contains(name[length])) return scanNameSlowly(name, end, stop);
  const auto rest = static_cast<unsigned>(64 - 8 * length);
  return {name + length, {lowerCased(word << rest), 0, static_cast<std::uint64_t>(length)}};
}

inline ScannedName scanTagName(const char* name, const char* end) {
  return scanName<'/', '>'>(name, end, kTagNameEnd);
}
inline ScannedName scanAttributeName(const char* name, const char* end) {
  return scanName<'/', '>', '='>(name, end, kAttributeNameEnd);
}

constexpr std::uint64_t nameWord(std::string_view bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    value |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * (8 - bytes.size() + i));
  }
  return lowerCased(value);
}

constexpr NameKey keyOfName(std::string_view name) {
  if (name.size() <= 8) return {nameWord(name), 0, name.size()};
  return {nameWord(name.substr(0, 8)), nameWord(name.substr(name.size() - 8)), name.size()};
}

// kCount names, of which the first stands for no name, in kSlots places: a power of two, at least
// twice as many.
template <std::size_t kCount, std::size_t kSlots>
class NameHash {
 public:
  constexpr explicit NameHash(const std::array<std::string_view, kCount>& names) {
    static_assert(std::has_single_bit(kSlots) && kSlots >= 2 * kCount);
    for (std::size_t i = 1; i < kCount; ++i) {
      keys_[i] = keyOfName(names[i]);
      std::size_t slot = keys_[i].hash() % kSlots;
      while (slots_[slot] != 0) slot = (slot + 1) % kSlots;
      slots_[slot] = static_cast<NameId>(i);
    }
  }

  // The key of a name; for number 0 one of length 0.
  const NameKey& keyOf(NameId number) const { return keys_.data()[number]; }

  // The number of the name with this key, or 0. What lies between head and tail is not compared.
  NameId find(const NameKey& key) const {
    for (std::size_t slot = key.hash() % kSlots;; slot = (slot + 1) % kSlots) {
      const NameId found = slots_[slot];
      if (found == 0 || keys_[found] == key) return found;
    }
  }

 private:
  std::array<NameId, kSlots> slots_{};
  std::array<NameKey, kCount> keys_{};
};

extern const NameHash<kElementCount, 1024> kElementHash;
extern const NameHash<kAttributeCount, 256> kAttributeHash;

// Whether a name of more than 16 bytes is the known one that its key found.
bool isElementName(NameId element, std::string_view name);
bool isAttributeName(NameId attribute, std::string_view name);

// The number of a name as scanned, or kUnknownName. A name with a NUL byte, which stands for
// U+FFFD, is never known.
inline NameId findElement(const char* name, const NameKey& key) {
  const NameId found = kElementHash.find(key);
  if (key.length <= 16 || found == kUnknownName) return found;
  return isElementName(found, {name, key.length}) ? found : kUnknownName;
}
inline NameId findAttribute(const char* name, const NameKey& key) {
  const NameId found = kAttributeHash.find(key);
  if (key.length <= 16 || found == kUnknownName) return found;
  return isAttributeName(found, {name, key.length}) ? found : kUnknownName;
}

// Whether a name of up to seven bytes stands at a place with eight readable bytes, ASCII case
// ignored; what comes after it is not looked at. False for longer names.
inline bool startsWithName(const char* at, const NameKey& name) {
  if (name.length - 1 >= 7) return false;
  return lowerCased(wordAt(at) << (64 - 8 * name.length)) == name.head;
}

}  // namespace pagescan::internal

#endif
