// The vector types of AVX2, as kernels_impl.h describes them. Included only by sources that are
// compiled for AVX2.
#ifndef PAGESCAN_BASE_VECTOR_AVX2_H
#define PAGESCAN_BASE_VECTOR_AVX2_H

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace pagescan::internal {
namespace {

// Vectors of 16 bytes, with shuffles: those do not cross the halves of wider ones.
struct Avx2Short {
  using Type = __m128i;
  using Mask = std::uint32_t;
  static constexpr std::size_t kWidth = 16;

  template <class Byte>
  static Type load(const Byte* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  }
  static void store(char* at, Type v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(at), v); }
  static Type fill(char c) { return _mm_set1_epi8(c); }
  static Type equal(Type a, Type b) { return _mm_cmpeq_epi8(a, b); }
  static Type both(Type a, Type b) { return _mm_and_si128(a, b); }
  static Type differ(Type a, Type b) { return _mm_xor_si128(a, b); }
  static Type either(Type a, Type b) { return _mm_or_si128(a, b); }
  static Type select(Type chosen, Type a, Type b) { return _mm_blendv_epi8(b, a, chosen); }
  static Type lowNibbles(Type v) { return _mm_and_si128(v, fill(0x0f)); }
  static Type highNibbles(Type v) { return lowNibbles(_mm_srli_epi16(v, 4)); }
  static Type shuffle(Type table, Type places) { return _mm_shuffle_epi8(table, places); }
  static Type interleaveLow(Type a, Type b) { return _mm_unpacklo_epi8(a, b); }
  static Type interleaveHigh(Type a, Type b) { return _mm_unpackhi_epi8(a, b); }
  static Type interleaveLowPairs(Type a, Type b) { return _mm_unpacklo_epi16(a, b); }
  static Type interleaveHighPairs(Type a, Type b) { return _mm_unpackhi_epi16(a, b); }
  static Mask mask(Type v) { return static_cast<Mask>(_mm_movemask_epi8(v)); }
};

struct Avx2 {
  using Short = Avx2Short;
  using Type = __m256i;
  using Mask = std::uint32_t;
  static constexpr std::size_t kWidth = 32;

  static Type load(const char* at) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
  }
  static void store(char* at, Type v) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(at), v); }
  static Type fill(char c) { return _mm256_set1_epi8(c); }
  static Type equal(Type a, Type b) { return _mm256_cmpeq_epi8(a, b); }
  static Type either(Type a, Type b) { return _mm256_or_si256(a, b); }
  static Type both(Type a, Type b) { return _mm256_and_si256(a, b); }
  static Type differ(Type a, Type b) { return _mm256_xor_si256(a, b); }
  static Type less(Type a, Type b) { return _mm256_cmpgt_epi8(b, a); }
  static Type without(Type a, Type b) { return _mm256_andnot_si256(b, a); }
  static Type minus(Type a, Type b) { return _mm256_sub_epi8(a, b); }
  static std::size_t sum(Type v) {
    const __m256i quarters = _mm256_sad_epu8(v, _mm256_setzero_si256());
    const __m128i halves =
        _mm_add_epi64(_mm256_castsi256_si128(quarters), _mm256_extracti128_si256(quarters, 1));
    const __m128i total = _mm_add_epi64(halves, _mm_unpackhi_epi64(halves, halves));
    return static_cast<std::size_t>(_mm_cvtsi128_si64(total));
  }
  static Mask mask(Type v) { return static_cast<Mask>(_mm256_movemask_epi8(v)); }
};

}  // namespace

}  // namespace pagescan::internal

#endif
