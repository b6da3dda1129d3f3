// The kernels that walk style text. Included by kernels_impl.h alone.
#ifndef PAGESCAN_BASE_KERNELS_STYLE_IMPL_H
#define PAGESCAN_BASE_KERNELS_STYLE_IMPL_H

#include <bit>
#include <cstddef>

#include "base/byte_class.h"
#include "base/kernels.h"

namespace pagescan::internal {
namespace {

// Whether the mark at `at` is one in its place: a "(" after the last letter of a function's name, a
// "/" before "*". What lies outside the range may be anything.
inline bool isStyleMark(const char* at, const char* begin, const char* end) {
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

// What can be a mark of style text, and which of that is one.
struct StyleMarks {
  template <class Vector>
  static auto candidates(typename Vector::Type bytes) {
    const auto is = [bytes](char c) { return Vector::equal(bytes, Vector::fill(c)); };
    const auto quotes = Vector::either(is('"'), is('\''));
    const auto slashes = Vector::either(is('/'), is('\\'));
    return Vector::either(Vector::either(quotes, slashes), Vector::either(is('('), is('@')));
  }
  static bool isMark(const char* at, const char* begin, const char* end) {
    return isStyleMark(at, begin, end);
  }
};

// What ends a string or needs a look: a quote, a backslash, a new line.
struct StringMarks {
  template <class Vector>
  static auto candidates(typename Vector::Type bytes) {
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
  template <class Vector>
  static auto candidates(typename Vector::Type bytes) {
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
  for (; end - at >= kWidth; at += kWidth) {
    auto marks = Vector::mask(Marks::template candidates<Vector>(Vector::load(at)));
    for (; marks != 0; marks &= marks - 1) {
      const char* const mark = at + std::countr_zero(marks);
      if (Marks::isMark(mark, begin, end)) return mark;
    }
  }
  while (at < end && !Marks::isMark(at, begin, end)) ++at;
  return at;
}

}  // namespace
}  // namespace pagescan::internal

#endif
