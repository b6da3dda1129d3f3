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
#include "base/unchecked.h"
#include "page/names.h"

namespace pagescan::internal {

static_assert(std::endian::native == std::endian::little, "a key's first byte is its lowest");

// The white space of the tokenizer, and what ends names.
inline constexpr ByteClass kTagWhiteSpace = ByteClass::of("\t\n\f\r ");
inline constexpr ByteClass kTagNameEnd = kTagWhiteSpace | ByteClass::of("/>");
inline constexpr ByteClass kAttributeNameEnd = kTagNameEnd | ByteClass::of("=");

// What tells a name from others: its length and its first and last eight bytes, as written.
struct NameKey {
  std::uint64_t head = 0;  // a shorter name at its upper end
  std::uint64_t tail = 0;  // 0 for names of up to eight bytes
  std::uint64_t length = 0;

  constexpr bool operator==(const NameKey&) const = default;
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
    if (at == name + kWord) return {at, {wordAt(name), 0, kWord}};
    return {at, {wordAt(name), wordAt(at - kWord), static_cast<std::uint64_t>(at - name)}};
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
  return {name + length, {word << rest, 0, static_cast<std::uint64_t>(length)}};
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
  return value;
}

constexpr NameKey keyOfName(std::string_view name) {
  if (name.size() <= 8) return {nameWord(name), 0, name.size()};
  return {nameWord(name.substr(0, 8)), nameWord(name.substr(name.size() - 8)), name.size()};
}

// A known name: the bytes of its key, and the bits that may be set in them for a name as written.
struct KnownName {
  NameKey key;
  std::uint64_t headCase = 0;
  std::uint64_t tailCase = 0;

  // No branch: which of a page's names are known is beyond prediction.
  bool matches(const NameKey& other) const {
    return (((other.head | headCase) ^ key.head) | ((other.tail | tailCase) ^ key.tail) |
            (other.length ^ key.length)) == 0;
  }
};

// 0x20 for each letter in a word: what tells lower case from upper.
constexpr std::uint64_t caseBits(std::uint64_t word) {
  std::uint64_t bits = 0;
  for (unsigned at = 0; at < 64; at += 8) {
    if (kLower.contains(static_cast<char>(word >> at))) bits |= std::uint64_t{0x20} << at;
  }
  return bits;
}

// Finds names in a table where each has a slot of its own, so that one look decides.
// kCount names, of which the first stands for no name, in kSlots slots: a power of two. The more,
// the sooner the compiler finds a multiplier that tells all names apart.
template <std::size_t kCount, std::size_t kSlots>
class NameHash {
 public:
  constexpr explicit NameHash(const std::array<std::string_view, kCount>& names) {
    static_assert(kCount <= 256 && std::has_single_bit(kSlots));
    for (std::size_t i = 1; i < kCount; ++i) {
      const NameKey key = keyOfName(names[i]);
      names_[i] = {key, caseBits(key.head), caseBits(key.tail)};
    }
    while (!placeAll()) multiplier_ += 0x9E3779B97F4A7C16;
  }

  // The name of a number; for 0 one of length 0.
  const KnownName& known(NameId number) const { return unchecked(names_, number); }

  // The number of the name with this key, or 0. What lies between head and tail is not compared.
  NameId find(const NameKey& key) const {
    const NameId found = unchecked(slots_, slotOf(key));
    return static_cast<NameId>(found & -static_cast<int>(known(found).matches(key)));
  }

 private:
  // The same for either case, and for a few other bytes.
  constexpr std::size_t slotOf(const NameKey& key) const {
    constexpr std::uint64_t kCase = 0x2020202020202020;
    const std::uint64_t head = key.head | kCase;
    const std::uint64_t tail = key.tail | kCase;
    const std::uint64_t mixed = head ^ (head >> 29) ^ (tail >> 31) ^ (tail << 17) ^ key.length;
    return (mixed * multiplier_) >> (64 - std::bit_width(kSlots - 1));
  }

  // Gives each name its slot; false when two have the same one.
  constexpr bool placeAll() {
    for (std::size_t i = 1; i < kCount; ++i) {
      std::uint8_t& slot = slots_[slotOf(names_[i].key)];
      if (slot != 0) return removeUpTo(i);
      slot = static_cast<std::uint8_t>(i);
    }
    return true;
  }
  constexpr bool removeUpTo(std::size_t end) {
    for (std::size_t i = 1; i < end; ++i) slots_[slotOf(names_[i].key)] = 0;
    return false;
  }

  std::uint64_t multiplier_ = 0x9E3779B97F4A7C15;
  std::array<std::uint8_t, kSlots> slots_{};
  std::array<KnownName, kCount> names_{};
};

extern const NameHash<kElementCount, 16384> kElementHash;
extern const NameHash<kAttributeCount, 2048> kAttributeHash;

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
inline bool startsWithName(const char* at, const KnownName& name) {
  const std::uint64_t length = name.key.length;
  if (length - 1 >= 7) return false;
  return (wordAt(at) << (64 - 8 * length) | name.headCase) == name.key.head;
}

}  // namespace pagescan::internal

#endif
