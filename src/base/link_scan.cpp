#include "base/link_scan.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace pagescan::internal {
namespace {

constexpr std::size_t kWidth = 16;

__m128i load(const char* at) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

__m128i equals(__m128i bytes, char c) {
  return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
}

__m128i toClean(__m128i bytes) {
  const __m128i isLow = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(' ')), bytes);
  return _mm_or_si128(isLow, equals(bytes, '%'));
}

__m128i toFold(__m128i bytes) {
  const __m128i isBehindDot = _mm_slli_si128(equals(bytes, '.'), 1);
  return _mm_or_si128(equals(bytes, '\\'), _mm_and_si128(equals(bytes, '/'), isBehindDot));
}

// Whether any block of a link of at least one block shows what `found` looks for. Neighbouring
// blocks have `kOverlap` bytes in common, so that a find of more than one byte stands in one.
template <std::size_t kOverlap, class Found>
bool anyBlock(std::string_view link, Found found) {
  const char* last = link.data() + link.size() - kWidth;
  __m128i any = found(load(last));
  for (const char* at = link.data(); at < last; at += kWidth - kOverlap) {
    any = _mm_or_si128(any, found(load(at)));
  }
  return _mm_movemask_epi8(any) != 0;
}

// Eight bytes with letters in lower case. Other bytes change as well, but none above 31 that is not
// a letter becomes one of a lower-case scheme.
std::uint64_t loweredWord(const char* at) {
  std::uint64_t word = 0;
  std::memcpy(&word, at, sizeof word);
  return word | 0x2020202020202020U;
}

}  // namespace

bool needsCleaning(std::string_view link) {
  if (link.size() >= kWidth) return anyBlock<0>(link, toClean);
  return std::any_of(link.begin(), link.end(),
                     [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == '%'; });
}

bool needsFolding(std::string_view link) {
  if (link.size() >= kWidth) return anyBlock<1>(link, toFold);
  for (std::size_t i = 0; i < link.size(); ++i) {
    if (link[i] == '\\' || (link[i] == '/' && i > 0 && link[i - 1] == '.')) return true;
  }
  return false;
}

bool isAbsoluteHttp(std::string_view link) {
  constexpr std::uint64_t kSevenBytes = ~std::uint64_t{0} >> 8U;
  const std::uint64_t https = loweredWord("https://");
  const std::uint64_t http = loweredWord("http://") & kSevenBytes;
  if (link.size() < sizeof https) return false;
  const std::uint64_t word = loweredWord(link.data());
  return word == https || (word & kSevenBytes) == http;
}

}  // namespace pagescan::internal
