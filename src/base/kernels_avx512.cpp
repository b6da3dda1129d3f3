// Compiled for AVX-512; nothing here may run before the machine was asked whether it has it.
#include "base/kernels_impl.h"
#include "base/kernels_levels.h"
#include "base/vector_avx2.h"

namespace pagescan {
namespace {

// Comparisons yield one bit a byte, not vectors.
struct Avx512 {
  using Type = __m512i;
  using Mask = std::uint64_t;
  static constexpr std::size_t kWidth = 64;

  static Type load(const char* at) { return _mm512_loadu_si512(at); }
  static Type fill(char c) { return _mm512_set1_epi8(c); }
  static Type either(Type a, Type b) { return _mm512_or_si512(a, b); }
  static Mask equal(Type a, Type b) { return _mm512_cmpeq_epi8_mask(a, b); }
  static Mask either(Mask a, Mask b) { return a | b; }
  static Mask both(Mask a, Mask b) { return a & b; }
  static Mask without(Mask a, Mask b) { return a & ~b; }
  static Mask mask(Mask bits) { return bits; }
};

// Vectors this wide pay for texts of some length alone.
constexpr std::ptrdiff_t kLongText = 512;

const char* findTextByLength(const char* begin, const char* end, const Needle& needle) {
  return end - begin < kLongText ? findText<Avx2>(begin, end, needle)
                                 : findText<Avx512>(begin, end, needle);
}

}  // namespace

constinit const SearchKernels kAvx512Searches = {
    .findText = findTextByLength,
    .findTag = findTag<Avx512>,
};

}  // namespace pagescan
