// The kernels that pass over the strings and URLs of style text. Included by kernels_impl.h alone.
#ifndef PAGESCAN_BASE_KERNELS_STYLE_IMPL_H
#define PAGESCAN_BASE_KERNELS_STYLE_IMPL_H

#include <bit>
#include <cstddef>

#include "base/byte_class.h"
#include "base/kernels.h"

namespace pagescan::internal {
namespace {

// What ends a string or needs a look: a quote, a backslash, a new line.
struct StringMarks {
  static constexpr bool kIsExact = true;  // whether all candidates are marks

  template <class Vector>
  static auto candidates(const char* at) {
    const auto bytes = Vector::load(at);
    const auto is = [bytes](char c) { return Vector::equal(bytes, Vector::fill(c)); };
    const auto quotes = Vector::either(is('"'), is('\''));
    const auto newLines = Vector::either(is('\n'), Vector::either(is('\r'), is('\f')));
    return Vector::either(Vector::either(quotes, newLines), is('\\'));
  }
  static bool isMark(char c) { return kStringMarks.contains(c); }
  static constexpr ByteClass kStringMarks = ByteClass::of("\"'\\\n\r\f");
};

// The same for url( without quotes: also white space, what cannot be printed, and brackets.
struct UrlMarks {
  static constexpr bool kIsExact = false;

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
  static bool isMark(char c) { return kUrlMarks.contains(c); }
  static constexpr ByteClass kUrlMarks =
      ByteClass::range('\x01', ' ') | ByteClass::of("\"'()\\\x7F");
};

template <class Vector, class Marks>
const char* findMarkOf(const char* begin, const char* end) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  const char* at = begin;
  for (; end - at >= kWidth; at += kWidth) {
    auto marks = Vector::mask(Marks::template candidates<Vector>(at));
    for (; marks != 0; marks &= marks - 1) {
      const char* const mark = at + std::countr_zero(marks);
      if (Marks::kIsExact || Marks::isMark(*mark)) return mark;
    }
  }
  while (at < end && !Marks::isMark(*at)) ++at;
  return at;
}

}  // namespace
}  // namespace pagescan::internal

#endif
