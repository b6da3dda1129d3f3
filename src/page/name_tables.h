// A table that finds names by their keys, built at compile time.
#ifndef PAGESCAN_PAGE_NAME_TABLES_H
#define PAGESCAN_PAGE_NAME_TABLES_H

#include <array>
#include <bit>
#include <string_view>

#include "page/names.h"

namespace pagescan::internal {

constexpr std::uint64_t nameWord(std::string_view bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    value |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * (8 - bytes.size() + i));
  }
  return value;
}

// The key of a name in lower case, as nameKey() makes it from a page on a little-endian machine.
constexpr NameKey keyOfName(std::string_view name) {
  if (name.size() <= 8) return {nameWord(name), 0, static_cast<std::uint32_t>(name.size())};
  return {nameWord(name.substr(0, 8)), nameWord(name.substr(name.size() - 8)),
          static_cast<std::uint32_t>(name.size())};
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

  // The number of the name with this key, or 0. What lies between head and tail is not compared.
  constexpr NameId find(const NameKey& key) const {
    for (std::size_t slot = key.hash() % kSlots;; slot = (slot + 1) % kSlots) {
      const NameId found = slots_[slot];
      if (found == 0 || keys_[found] == key) return found;
    }
  }

 private:
  std::array<NameId, kSlots> slots_{};
  std::array<NameKey, kCount> keys_{};
};

}  // namespace pagescan::internal

#endif
