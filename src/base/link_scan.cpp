#include "base/link_scan.h"

#include <emmintrin.h>

namespace pagescan {
namespace {

constexpr std::size_t kWidth = 16;

LinkTraits scanShort(std::string_view link) {
  LinkTraits traits{};
  char previous = '\0';
  for (const char c : link) {
    traits.needsCleaning |= static_cast<unsigned char>(c) <= ' ' || c == '%';
    traits.needsFolding |= c == '\\' || (previous == '.' && c == '/');
    previous = c;
  }
  return traits;
}

// What one block shows, gathered over all blocks of a link.
class Blocks {
 public:
  void add(const char* at) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const auto is = [&](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    const __m128i isLow = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(' ')), bytes);
    const __m128i isBehindDot = _mm_slli_si128(is('.'), 1);
    toClean_ = _mm_or_si128(toClean_, _mm_or_si128(isLow, is('%')));
    toFold_ = _mm_or_si128(toFold_, _mm_or_si128(is('\\'), _mm_and_si128(is('/'), isBehindDot)));
  }

  LinkTraits traits() const {
    return {_mm_movemask_epi8(toClean_) != 0, _mm_movemask_epi8(toFold_) != 0};
  }

 private:
  __m128i toClean_ = _mm_setzero_si128();
  __m128i toFold_ = _mm_setzero_si128();
};

}  // namespace

// Blocks overlap by one byte, so that every two neighbours stand in one of them.
LinkTraits scanLink(std::string_view link) {
  if (link.size() < kWidth) return scanShort(link);
  Blocks blocks;
  const char* last = link.data() + link.size() - kWidth;
  for (const char* at = link.data(); at < last; at += kWidth - 1) blocks.add(at);
  blocks.add(last);
  return blocks.traits();
}

}  // namespace pagescan
