// The vectors of SSE2, which every x86-64 machine has, as kernels_impl.h describes vectors.
#ifndef PAGESCAN_BASE_VECTOR_SSE2_H
#define PAGESCAN_BASE_VECTOR_SSE2_H

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace pagescan::internal {
namespace {

struct Sse2 {
  using Short = Sse2;
  using Type = __m128i;
  using Mask = std::uint32_t;
  static constexpr std::size_t kWidth = 16;

  static Type load(const char* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); }
  static void store(char* at, Type v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(at), v); }
  static Type fill(char c) { return _mm_set1_epi8(c); }
  static Type equal(Type a, Type b) { return _mm_cmpeq_epi8(a, b); }
  static Type either(Type a, Type b) { return _mm_or_si128(a, b); }
  static Type both(Type a, Type b) { return _mm_and_si128(a, b); }
  static Type differ(Type a, Type b) { return _mm_xor_si128(a, b); }
  static Type less(Type a, Type b) { return _mm_cmplt_epi8(a, b); }
  static Type without(Type a, Type b) { return _mm_andnot_si128(b, a); }
  static Type minus(Type a, Type b) { return _mm_sub_epi8(a, b); }
  static std::size_t sum(Type v) {
    const __m128i halves = _mm_sad_epu8(v, _mm_setzero_si128());
    const __m128i total = _mm_add_epi64(halves, _mm_unpackhi_epi64(halves, halves));
    return static_cast<std::size_t>(_mm_cvtsi128_si64(total));
  }
  static Mask mask(Type v) { return static_cast<Mask>(_mm_movemask_epi8(v)); }
};

}  // namespace
}  // namespace pagescan::internal

#endif
