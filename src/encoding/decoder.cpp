// Decodes whole texts, in slices that fit a small buffer.
#include "encoding/decoder.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "encoding/decoder_of.h"

namespace pagescan::internal {
namespace {

// Characters that begin in a slice are decoded to a buffer, which is then appended: the text grows
// as strings do, and no byte of it is written twice.
constexpr std::ptrdiff_t kSlice = 1024;
// Characters are written in whole words, and the last one may begin at the slice's last byte.
constexpr std::ptrdiff_t kSlack = 64;
constexpr std::size_t kWord = sizeof(std::uint64_t);

std::uint64_t wordAt(const Byte* at) {
  std::uint64_t word;
  std::memcpy(&word, at, kWord);
  return word;
}

// How many bytes at the start of the word in memory are ASCII.
int asciiBytes(std::uint64_t word) {
  const std::uint64_t high = word & 0x8080808080808080U;
  if constexpr (std::endian::native == std::endian::little) return std::countr_zero(high) / 8;
  return std::countl_zero(high) / 8;
}

// Copies ASCII from `at` on, up to the first other byte or to a place from which fewer than eight
// bytes are left.
const Byte* copyAscii(const Byte* at, const Byte* end, char*& out) {
  while (end - at >= static_cast<std::ptrdiff_t>(2 * kWord)) {
    if (asciiBytes(wordAt(at) | wordAt(at + kWord)) != static_cast<int>(kWord)) break;
    std::memcpy(out, at, 2 * kWord);
    at += 2 * kWord;
    out += 2 * kWord;
  }
  while (end - at >= static_cast<std::ptrdiff_t>(kWord)) {
    const int count = asciiBytes(wordAt(at));
    std::memcpy(out, at, kWord);
    at += count;
    out += count;
    if (count < static_cast<int>(kWord)) break;
  }
  return at;
}

// The same for a run that begins at `at`: often a space alone between two words.
const Byte* copyAsciiRun(const Byte* at, const Byte* end, char*& out) {
  *out++ = static_cast<char>(*at++);
  return at < end && isAscii(*at) ? copyAscii(at, end, out) : at;
}

// Single bytes, eight at a time.
const Byte* decodeSingleBytes(const SingleByteDecoder& decoder, const Byte* at, const Byte* stop,
                              char*& out) {
  while (stop - at >= static_cast<std::ptrdiff_t>(kWord)) {
    if (asciiBytes(wordAt(at)) == static_cast<int>(kWord)) {
      at = copyAscii(at, stop, out);
    } else {
      at = decoder.nextEight(at, out);
    }
  }
  while (at < stop) at = decoder.next(at, stop, out);
  return at;
}

// Decodes the characters that begin before `stop`; returns the place after the last one.
template <typename Decoder>
const Byte* decodeSlice(Decoder& decoder, const Byte* at, const Byte* stop, const Byte* end,
                        char*& out) {
  if constexpr (std::is_same_v<Decoder, SingleByteDecoder>) {
    return decodeSingleBytes(decoder, at, stop, out);
  }
  while (at < stop) {
    if constexpr (Decoder::kAsciiIsPlain) {
      if (isAscii(*at)) {
        at = copyAsciiRun(at, stop, out);
        if (at == stop) break;
      }
    }
    at = decoder.next(at, end, out);
  }
  return at;
}

}  // namespace

void appendDecoded(std::string& out, std::string_view bytes, Encoding encoding) {
  withDecoderOf(encoding, [&out, bytes](auto decoder) {
    char buffer[kSlice * kMaxUtf8PerByte + kSlack];
    const auto* at = reinterpret_cast<const Byte*>(bytes.data());
    const Byte* const end = at + bytes.size();
    while (at < end) {
      char* written = buffer;
      at = decodeSlice(decoder, at, at + std::min(kSlice, end - at), end, written);
      out.append(buffer, written);
    }
  });
}

}  // namespace pagescan::internal
