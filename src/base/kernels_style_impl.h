// The kernels that walk style text. Included by kernels_impl.h alone.
#ifndef PAGESCAN_BASE_KERNELS_STYLE_IMPL_H
#define PAGESCAN_BASE_KERNELS_STYLE_IMPL_H

#include <bit>
#include <cstddef>

#include "base/byte_class.h"
#include "base/kernels.h"

namespace pagescan::internal {
namespace {

// What begins a string, a comment, an escape, a rule, or the arguments of a function of interest:
// a "(" counts after the last letter of its name alone, a "/" before "*".
struct StyleMarks {
  static constexpr bool kIsExact = true;        // whether all candidates are marks
  static constexpr std::ptrdiff_t kBefore = 1;  // bytes around a candidate that are looked at
  static constexpr std::ptrdiff_t kAfter = 1;

  template <class Vector>
  static auto candidates(const char* at) {
    const auto bytes = Vector::load(at);
    const auto is = [bytes](char c) { return Vector::equal(bytes, Vector::fill(c)); };
    const auto last = Vector::either(Vector::load(at - 1), Vector::fill(0x20));
    const auto endsWith = [last](char c) { return Vector::equal(last, Vector::fill(c)); };
    const auto letters =
        Vector::either(endsWith('l'), Vector::either(endsWith('c'), endsWith('t')));
    const auto functions = Vector::both(is('('), letters);
    const auto stars = Vector::equal(Vector::load(at + 1), Vector::fill('*'));
    const auto comments = Vector::both(is('/'), stars);
    const auto quotes = Vector::either(is('"'), is('\''));
    const auto others = Vector::either(is('@'), is('\\'));
    return Vector::either(Vector::either(functions, comments), Vector::either(quotes, others));
  }

  // What lies outside the range may be anything.
  static bool isMark(const char* at, const char* begin, const char* end) {
    switch (*at) {
      case '"':
      case '\'':
      case '\\':
      case '@':
        return true;
      case '(': {
        if (at == begin) return true;
        const int last = at[-1] | 0x20;
        return last == 'l' || last == 'c' || last == 't';
      }
      case '/':
        return at + 1 == end || at[1] == '*';
      default:
        return false;
    }
  }
};

// What ends a string or needs a look: a quote, a backslash, a new line.
struct StringMarks {
  static constexpr bool kIsExact = true;
  static constexpr std::ptrdiff_t kBefore = 0;
  static constexpr std::ptrdiff_t kAfter = 0;

  template <class Vector>
  static auto candidates(const char* at) {
    const auto bytes = Vector::load(at);
    const auto is = [bytes](char c) { return Vector::equal(bytes, Vector::fill(c)); };
    const auto quotes = Vector::either(is('"'), is('\''));
    const auto newLines = Vector::either(is('\n'), Vector::either(is('\r'), is('\f')));
    return Vector::either(Vector::either(quotes, newLines), is('\\'));
  }
  static bool isMark(const char* at, const char* /*begin*/, const char* /*end*/) {
    return kStringMarks.contains(*at);
  }
  static constexpr ByteClass kStringMarks = ByteClass::of("\"'\\\n\r\f");
};

// The same for url( without quotes: also white space, what cannot be printed, and brackets.
struct UrlMarks {
  static constexpr bool kIsExact = false;
  static constexpr std::ptrdiff_t kBefore = 0;
  static constexpr std::ptrdiff_t kAfter = 0;

  template <class Vector>
  static auto candidates(const char* at) {
    const auto bytes = Vector::load(at);
    const auto is = [bytes](char c) { return Vector::equal(bytes, Vector::fill(c)); };
    const auto quotes = Vector::either(is('"'), is('\''));
    const auto brackets = Vector::either(is('('), is(')'));
    // Bytes above ASCII are negative here.
    const auto others = Vector::either(is('\x7F'), Vector::less(bytes, Vector::fill('!')));
    return Vector::either(Vector::either(quotes, brackets), Vector::either(is('\\'), others));
  }
  static bool isMark(const char* at, const char* /*begin*/, const char* /*end*/) {
    return kUrlMarks.contains(*at);
  }
  static constexpr ByteClass kUrlMarks =
      ByteClass::range('\x01', ' ') | ByteClass::of("\"'()\\\x7F");
};

template <class Vector, class Marks>
const char* findStyleMark(const char* begin, const char* end) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  const char* at = begin;
  for (; at < end && at - begin < Marks::kBefore; ++at) {
    if (Marks::isMark(at, begin, end)) return at;
  }
  for (; end - at >= kWidth + Marks::kAfter; at += kWidth) {
    auto marks = Vector::mask(Marks::template candidates<Vector>(at));
    for (; marks != 0; marks &= marks - 1) {
      const char* const mark = at + std::countr_zero(marks);
      if (Marks::kIsExact || Marks::isMark(mark, begin, end)) return mark;
    }
  }
  while (at < end && !Marks::isMark(at, begin, end)) ++at;
  return at;
}

}  // namespace
}  // namespace pagescan::internal

#endif
