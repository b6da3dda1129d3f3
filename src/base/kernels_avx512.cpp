// Compiled for AVX-512; nothing here may run before the machine was asked whether it has it.
#include <array>
#include <string_view>

#include "base/kernels_impl.h"
#include "base/kernels_levels.h"
#include "base/vector_avx2.h"

namespace pagescan::internal {
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

// A byte for each ASCII byte, looked up 64 at a time. Bytes above count as those 128 below them.
class AsciiTable {
 public:
  explicit AsciiTable(const unsigned char* bytes)
      : low_(_mm512_loadu_si512(bytes)), high_(_mm512_loadu_si512(bytes + 64)) {}

  __m512i operator[](__m512i bytes) const { return _mm512_permutex2var_epi8(low_, bytes, high_); }

 private:
  __m512i low_;
  __m512i high_;
};

const char* findTag512(const char* begin, const char* end, const TagFilter& filter) {
  const AsciiTable firsts(filter.kinds[0].data());
  const AsciiTable seconds(filter.kinds[1].data());
  const AsciiTable thirds(filter.kinds[2].data());
  const __m512i opening = _mm512_set1_epi8('<');
  for (; end - begin >= 64; begin += 64) {
    const __mmask64 openings = _mm512_cmpeq_epi8_mask(_mm512_loadu_si512(begin), opening);
    const __m512i pairs = _mm512_and_si512(firsts[_mm512_loadu_si512(begin + 1)],
                                           seconds[_mm512_loadu_si512(begin + 2)]);
    std::uint64_t mask =
        _mm512_mask_test_epi8_mask(openings, pairs, thirds[_mm512_loadu_si512(begin + 3)]);
    for (; mask != 0; mask &= mask - 1) {
      const char* at = begin + std::countr_zero(mask);
      if (filter.passes(at)) return at;
    }
  }
  return findTag<Avx2>(begin, end, filter);
}

// The kinds of marks as bits, for each of their first three bytes.
struct MarkKinds {
  std::array<unsigned char, 128> bytes[3];

  constexpr void add(unsigned char kind, std::string_view first, std::string_view second,
                     std::string_view third) {
    const std::string_view all[] = {first, second, third};
    for (std::size_t i = 0; i < 3; ++i) {
      for (const char c : all[i]) bytes[i][static_cast<unsigned char>(c)] |= kind;
    }
  }
};

constexpr MarkKinds kMarkKinds = [] {
  MarkKinds kinds{};
  kinds.add(1, "<", "sS", "cC");
  kinds.add(2, "<", "/", "sS");
  kinds.add(4, "<", "!", "-");
  kinds.add(8, "-", "-", ">");
  return kinds;
}();

const char* findMark512(const char* begin, const char* limit, const char* end) {
  const AsciiTable firsts(kMarkKinds.bytes[0].data());
  const AsciiTable seconds(kMarkKinds.bytes[1].data());
  const AsciiTable thirds(kMarkKinds.bytes[2].data());
  for (; begin < limit && end - begin >= 64 + 2; begin += 64) {
    const __m512i pairs =
        _mm512_and_si512(firsts[_mm512_loadu_si512(begin)], seconds[_mm512_loadu_si512(begin + 1)]);
    std::uint64_t mask = _mm512_test_epi8_mask(pairs, thirds[_mm512_loadu_si512(begin + 2)]);
    for (; mask != 0; mask &= mask - 1) {
      const char* at = begin + std::countr_zero(mask);
      if (at >= limit) return limit;
      if (mayBeMark(at, end)) return at;
    }
  }
  return findMark<Avx2>(begin, limit, end);
}

// For each value of their low six bits, the one byte of a set that has it. Others get a byte that
// they are not.
struct ByteSet {
  std::array<char, 64> bytes{};

  constexpr explicit ByteSet(std::string_view members) {
    bytes[0] = 1;
    for (const char c : members) bytes[static_cast<unsigned char>(c) % 64] = c;
  }
};

constexpr ByteSet kAlwaysStyleMarks("\"'@\\");
constexpr ByteSet kFunctionEnds("lct");

// Looks bytes up in a set, 64 at a time.
class ByteSetTable {
 public:
  explicit ByteSetTable(const ByteSet& set) : bytes_(_mm512_loadu_si512(set.bytes.data())) {}

  // Which bytes of those chosen are in the set. (The plain permutation makes g++ 12 warn.)
  __mmask64 holds(__mmask64 chosen, __m512i bytes) const {
    const __m512i members = _mm512_maskz_permutexvar_epi8(~__mmask64{0}, bytes, bytes_);
    return _mm512_mask_cmpeq_epi8_mask(chosen, members, bytes);
  }

 private:
  __m512i bytes_;
};

const char* findStyleMark512(const char* begin, const char* end) {
  if (begin == end || StyleMarks::isMark(begin, begin, end)) return begin;
  const ByteSetTable always(kAlwaysStyleMarks);
  const ByteSetTable functionEnds(kFunctionEnds);
  const __m512i fold = Avx512::fill(0x20);
  const char* at = begin + 1;
  for (; end - at >= 64 + 1; at += 64) {
    const __m512i bytes = Avx512::load(at);
    const __mmask64 functions = functionEnds.holds(Avx512::equal(bytes, Avx512::fill('(')),
                                                   Avx512::either(Avx512::load(at - 1), fold));
    const __mmask64 comments = _mm512_mask_cmpeq_epi8_mask(Avx512::equal(bytes, Avx512::fill('/')),
                                                           Avx512::load(at + 1), Avx512::fill('*'));
    const std::uint64_t mask = always.holds(~__mmask64{0}, bytes) | functions | comments;
    if (mask != 0) return at + std::countr_zero(mask);
  }
  while (at < end && !StyleMarks::isMark(at, begin, end)) ++at;
  return at;
}

}  // namespace

constinit const SearchKernels kAvx512Searches = {
    .findText = findTextByLength,
    .findRegion = findRegion<Avx512>,
    .findTag = findTag512,
    .findMark = findMark512,
    .findStyleMark = findStyleMark512,
};

}  // namespace pagescan::internal
