// Words of bytes at any alignment, the first byte in the lowest bits on every machine.
#ifndef PAGESCAN_BASE_WORDS_H
#define PAGESCAN_BASE_WORDS_H

#include <bit>
#include <cstdint>
#include <cstring>

namespace pagescan::internal {

// The word with its bytes in the order of a little-endian machine.
template <class Word>
constexpr Word inLittleEndian(Word word) {
  if constexpr (std::endian::native == std::endian::little) {
    return word;
  } else if constexpr (sizeof(Word) == 8) {
    return __builtin_bswap64(word);
  } else {
    static_assert(sizeof(Word) == 4);
    return __builtin_bswap32(word);
  }
}

template <class Word>
inline Word loadWord(const char* at) {
  Word word;
  std::memcpy(&word, at, sizeof word);
  return inLittleEndian(word);
}

template <class Word>
inline void storeWord(char* at, Word word) {
  word = inLittleEndian(word);
  std::memcpy(at, &word, sizeof word);
}

}  // namespace pagescan::internal

#endif
