// The kernel that walks style text from one place that needs a look to the next. Included by
// kernels_impl.h alone.
//
// Of a block of 64 bytes it makes a mask of what may begin something, and keeps it while it passes
// strings and comments: so a block is looked at once, however much it holds.
#ifndef PAGESCAN_BASE_KERNELS_STYLE_WALK_IMPL_H
#define PAGESCAN_BASE_KERNELS_STYLE_WALK_IMPL_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/kernels.h"

namespace pagescan::internal {
namespace {

constexpr std::ptrdiff_t kStyleBlock = 64;

// The bytes before a "(" of interest: the end of url, src or image-set.
constexpr std::string_view kStyleFunctions[] = {"url", "src", "set"};

// What may begin something. isMark may be asked at every byte, the vectors two bytes after the
// text's begin at the earliest.
struct StyleStarts {
  template <class Vector>
  static auto candidates(const char* at) {
    const auto bytes = Vector::load(at);
    const auto is = [bytes](char c) { return Vector::equal(bytes, Vector::fill(c)); };
    const auto last = Vector::either(Vector::load(at - 1), Vector::fill(0x20));
    const auto endsWith = [last](char c) { return Vector::equal(last, Vector::fill(c)); };
    const auto letters =
        Vector::either(endsWith('l'), Vector::either(endsWith('c'), endsWith('t')));
    const auto quotes = Vector::either(is('"'), is('\''));
    const auto others = Vector::either(is('/'), Vector::either(is('@'), is('\\')));
    return Vector::either(Vector::either(quotes, others), Vector::both(is('('), letters));
  }
  static bool isMark(const char* at) {
    return *at == '"' || *at == '\'' || *at == '/' || *at == '@' || *at == '\\' || *at == '(';
  }
};

// What ends a string in these quotes: a quote or, for a bad one, a new line.
template <char kQuote>
struct StringEnds {
  template <class Vector>
  static auto candidates(const char* at) {
    const auto bytes = Vector::load(at);
    const auto is = [bytes](char c) { return Vector::equal(bytes, Vector::fill(c)); };
    return Vector::either(Vector::either(is(kQuote), is('\n')), Vector::either(is('\r'), is('\f')));
  }
  static bool isMark(const char* at) {
    return *at == kQuote || *at == '\n' || *at == '\r' || *at == '\f';
  }
};

// The "/" of "*/".
struct CommentEnds {
  template <class Vector>
  static auto candidates(const char* at) {
    return Vector::both(Vector::equal(Vector::load(at), Vector::fill('/')),
                        Vector::equal(Vector::load(at - 1), Vector::fill('*')));
  }
  static bool isMark(const char* at) { return *at == '/' && at[-1] == '*'; }
};

// A bit for each mark in a whole block.
template <class Vector, class Marks>
std::uint64_t marksInBlock(const char* block) {
  std::uint64_t marks = 0;
  for (std::size_t i = 0; i < kStyleBlock; i += Vector::kWidth) {
    marks |= std::uint64_t{Vector::mask(Marks::template candidates<Vector>(block + i))} << i;
  }
  return marks;
}

// The same byte by byte, for the first block and one that the end cuts short.
template <class Marks>
std::uint64_t marksBytewise(const char* block, const char* end) {
  std::uint64_t marks = 0;
  for (std::ptrdiff_t i = 0; i < kStyleBlock && block + i < end; ++i) {
    marks |= std::uint64_t{Marks::isMark(block + i)} << i;
  }
  return marks;
}

// The first mark, or `end`.
template <class Vector, class Marks>
const char* nextMark(const char* at, const char* end) {
  for (; end - at >= kStyleBlock; at += kStyleBlock) {
    const std::uint64_t marks = marksInBlock<Vector, Marks>(at);
    if (marks != 0) return at + std::countr_zero(marks);
  }
  while (at < end && !Marks::isMark(at)) ++at;
  return at;
}

// After the string that begins at `mark` in a block, or null for one that needs a look: no end, a
// new line, or a backslash before the quote.
template <class Vector, char kQuote>
const char* afterString(const char* block, const char* mark, const char* end) {
  using Ends = StringEnds<kQuote>;
  const char* quote = nullptr;
  if (end - block < kStyleBlock) {
    quote = nextMark<Vector, Ends>(mark + 1, end);
  } else {
    const std::uint64_t ends =
        marksInBlock<Vector, Ends>(block) & (~std::uint64_t{1} << (mark - block));
    quote = ends != 0 ? block + std::countr_zero(ends)
                      : nextMark<Vector, Ends>(block + kStyleBlock, end);
  }
  return quote != end && *quote == kQuote && quote[-1] != '\\' ? quote + 1 : nullptr;
}

// `mark` is at the "/".
template <class Vector>
const char* afterComment(const char* mark, const char* end) {
  constexpr std::ptrdiff_t kShortest = 4;
  if (end - mark < kShortest) return end;
  const char* const close = nextMark<Vector, CommentEnds>(mark + kShortest - 1, end);
  return close == end ? end : close + 1;
}

constexpr char lowerLetter(char c) {
  return static_cast<char>(c | 0x20);
}

inline bool isAfterStyleFunction(const char* mark, const char* floor) {
  if (mark - floor < 3) return false;
  bool found = false;
  for (const std::string_view name : kStyleFunctions) {
    found |= lowerLetter(mark[-3]) == name[0] && lowerLetter(mark[-2]) == name[1] &&
             lowerLetter(mark[-1]) == name[2];
  }
  return found;
}

inline bool mayBeginStyleRule(const char* mark, const char* end) {
  if (end - mark < 2) return false;
  const char next = lowerLetter(mark[1]);
  return next == 'i' || next == 'n' || mark[1] == '\\';
}

// After the string or comment at a mark; the mark itself where there is neither, null where a look
// is needed.
template <class Vector>
const char* afterStyleMark(const char* block, const char* mark, const char* floor,
                           const char* end) {
  switch (*mark) {
    case '"':
      return afterString<Vector, '"'>(block, mark, end);
    case '\'':
      return afterString<Vector, '\''>(block, mark, end);
    case '/':
      return end - mark > 1 && mark[1] == '*' ? afterComment<Vector>(mark, end) : mark;
    case '@':
      return mayBeginStyleRule(mark, end) ? nullptr : mark;
    case '(':
      return isAfterStyleFunction(mark, floor) ? nullptr : mark;
    default:
      return nullptr;
  }
}

template <class Vector>
struct StyleStartsOver {
  std::uint64_t in(const char* block) const { return marksInBlock<Vector, StyleStarts>(block); }
};

// Starts    offers in(block): a bit for each place of a whole block where StyleStarts may be
template <class Vector, class Starts = StyleStartsOver<Vector>>
[[gnu::flatten]] StylePlace findStyleMark(const char* begin, const char* end, StylePlace from) {
  constexpr std::ptrdiff_t kBefore = 2;  // bytes before a block that its mask depends on
  const Starts starts;
  const char* floor = from.floor;
  for (const char* block = from.at; block < end;) {
    const bool isWhole = end - block >= kStyleBlock && block - begin >= kBefore;
    std::uint64_t marks = isWhole ? starts.in(block) : marksBytewise<StyleStarts>(block, end);
    const char* next = end - block < kStyleBlock ? end : block + kStyleBlock;
    while (marks != 0) {
      const char* const mark = block + std::countr_zero(marks);
      const char* const after = afterStyleMark<Vector>(block, mark, floor, end);
      if (after == nullptr) return {mark, floor};
      if (after != mark) floor = after;
      if (after >= next) {
        next = after;
        break;
      }
      marks &= (marks - 1) & (~std::uint64_t{0} << (after - block));
    }
    block = next;
  }
  return {end, floor};
}

}  // namespace
}  // namespace pagescan::internal

#endif
