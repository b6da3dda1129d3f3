// The kernel that looks at the bytes of links. Included by kernels_impl.h alone.
#ifndef PAGESCAN_BASE_KERNELS_URL_IMPL_H
#define PAGESCAN_BASE_KERNELS_URL_IMPL_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/kernels.h"
#include "base/url_bytes.h"

namespace pagescan::internal {
namespace {

// The sets of url_bytes.h as comparisons, and single bytes.
template <class Vector>
class UrlVector {
 public:
  using Type = typename Vector::Type;

  explicit UrlVector(const char* at) : bytes_(Vector::load(at)) {}

  Type is(char c) const { return Vector::equal(bytes_, Vector::fill(c)); }

  Type changed() const {
    const Type even = Vector::either(bytes_, Vector::fill(2));
    const auto isPair = [even](char c) { return Vector::equal(even, Vector::fill(c)); };
    const Type low = Vector::less(bytes_, Vector::fill('!'));  // and all beyond ASCII: negative
    const Type high =
        Vector::without(Vector::less(Vector::fill('z'), bytes_), isPair('~'));  // and |
    const Type quotes = Vector::either(Vector::either(is('"'), is('\'')), is('`'));
    const Type pairs = Vector::either(isPair('>'), isPair('^'));  // and "<", "\"
    return Vector::either(Vector::either(low, high), Vector::either(quotes, pairs));
  }

  Type hostBytes() const {
    const Type marks = Vector::without(isBetween('-', '9'), is('/'));
    return Vector::either(marks, Vector::either(isBetween('a', 'z'), is('_')));
  }

 private:
  Type isBetween(char first, char last) const {
    return Vector::without(Vector::less(bytes_, Vector::fill(static_cast<char>(last + 1))),
                           Vector::less(bytes_, Vector::fill(first)));
  }

  Type bytes_;
};

constexpr std::uint64_t lowBits(std::size_t count) {
  return count < 64 ? (std::uint64_t{1} << count) - 1 : ~std::uint64_t{0};
}

template <class Vector>
UrlBytes urlBytes(const char* begin, std::size_t size) {
  char copy[64];
  if (size < sizeof(copy)) {
    std::memset(copy, 0, sizeof(copy));
    std::memcpy(copy, begin, size);
    begin = copy;
  }
  UrlBytes result{};
  for (std::size_t i = 0; i < size; i += Vector::kWidth) {
    const UrlVector<Vector> bytes(begin + i);
    const auto bits = [i](typename Vector::Type v) { return std::uint64_t{Vector::mask(v)} << i; };
    result.changed |= bits(bytes.changed());
    result.ampersands |= bits(bytes.is('&'));
    result.slashes |= bits(bytes.is('/'));
    result.dots |= bits(Vector::either(bytes.is('.'), bytes.is('%')));
    result.hostBytes |= bits(bytes.hostBytes());
  }
  result.changed &= lowBits(size);
  return result;
}

}  // namespace
}  // namespace pagescan::internal

#endif
