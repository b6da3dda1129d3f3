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

// 64 bytes by the low six bits of each place. (The plain permutation makes g++ 12 warn.)
__m512i lookUp(__m512i table, __m512i places) {
  return _mm512_maskz_permutexvar_epi8(~__mmask64{0}, places, table);
}

constexpr ByteSet kNameEnds("\t\n\f\r />=");

void markTags512(const char* blocks, std::size_t count, TagMarks& marks) {
  const __m512i nameEnds = _mm512_loadu_si512(kNameEnds.bytes.data());
  for (std::size_t i = 0; i < count; ++i, blocks += TagMarks::kBlock) {
    const __m512i bytes = Avx512::load(blocks);
    marks.openings[i] = Avx512::equal(bytes, Avx512::fill('<'));
    marks.nameEnds[i] = Avx512::equal(bytes, lookUp(nameEnds, bytes));
    marks.quotes[i] = Avx512::equal(bytes, Avx512::fill('"'));
  }
}

constexpr ByteSet kPlainStyleStarts("\"'@\\/");

// The two letters before a "(", as a number below 64. The case of neither matters in its last five
// bits, so that each pair has two numbers.
constexpr unsigned pairNumber(char last, char second) {
  return (2U * static_cast<unsigned char>(last) + static_cast<unsigned char>(second)) % 64;
}

// For each pair that may end a function of interest "(", for all others a quote: that is a mark
// wherever it stands.
constexpr std::array<char, 64> kFunctionStarts = [] {
  std::array<char, 64> starts{};
  for (char& start : starts) start = '"';
  for (const std::string_view name : kStyleFunctions) {
    starts[pairNumber(name[2], name[1])] = '(';
    starts[pairNumber(name[2], name[1]) ^ 32U] = '(';
  }
  return starts;
}();

// Looks 64 bytes up in two tables of 64.
class StyleStarts512 {
 public:
  std::uint64_t in(const char* block) const {
    const __m512i bytes = Avx512::load(block);
    const __m512i last = Avx512::load(block - 1);
    const __m512i pairs = _mm512_add_epi8(_mm512_add_epi8(last, last), Avx512::load(block - 2));
    return Avx512::equal(bytes, lookUp(plain_, bytes)) |
           Avx512::equal(bytes, lookUp(functions_, pairs));
  }

 private:
  __m512i plain_ = _mm512_loadu_si512(kPlainStyleStarts.bytes.data());
  __m512i functions_ = _mm512_loadu_si512(kFunctionStarts.data());
};

// The sets of url_bytes.h that an ASCII byte is not in and is in.
constexpr unsigned char kChanged = 1;
constexpr unsigned char kHostByte = 2;
constexpr std::array<unsigned char, 128> kUrlSets = [] {
  std::array<unsigned char, 128> sets{};
  for (std::size_t i = 0; i < sets.size(); ++i) {
    const char c = static_cast<char>(i);
    if (!kKeptUrlBytes.contains(c)) sets[i] |= kChanged;
    if (kKeptHostBytes.contains(c)) sets[i] |= kHostByte;
  }
  return sets;
}();

UrlBytes urlBytes512(const char* begin, std::size_t size) {
  const __mmask64 all = lowBits(size);
  const __m512i bytes = _mm512_maskz_loadu_epi8(all, begin);
  const __m512i sets = AsciiTable(kUrlSets.data())[bytes];
  const auto isIn = [sets](unsigned char set) {
    return _mm512_test_epi8_mask(sets, _mm512_set1_epi8(static_cast<char>(set)));
  };
  const auto is = [bytes](char c) { return Avx512::equal(bytes, Avx512::fill(c)); };
  const __mmask64 beyondAscii = _mm512_movepi8_mask(bytes);
  return {.changed = (isIn(kChanged) | beyondAscii) & all,
          .ampersands = is('&'),
          .slashes = is('/'),
          .dots = is('.') | is('%'),
          .hostBytes = isIn(kHostByte) & ~beyondAscii};
}

}  // namespace

constinit const SearchKernels kAvx512Searches = {
    .findText = findTextByLength,
    .findRegion = findRegion<Avx512>,
    .findTag = findTag512,
    .findMark = findMark512,
    .markTags = markTags512,
    .findStyleMark = findStyleMark<Avx512, StyleStarts512>,
    .urlBytes = urlBytes512,
};

}  // namespace pagescan::internal
