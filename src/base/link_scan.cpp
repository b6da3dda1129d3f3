#include "base/link_scan.h"

#include <algorithm>
#include <cstdint>

#include "base/near_vector.h"
#include "base/words.h"

namespace pagescan::internal {
namespace {

using Vector = NearVector;

Vector::Type toClean(const char* at) {
  const Vector::Type bytes = Vector::load(at);
  const Vector::Type isLow = Vector::without(Vector::less(bytes, Vector::fill(' ' + 1)),
                                             Vector::less(bytes, Vector::fill(0)));
  return Vector::either(isLow, Vector::equal(bytes, Vector::fill('%')));
}

// Looks at one byte more than a vector has.
Vector::Type toFold(const char* at) {
  const Vector::Type bytes = Vector::load(at);
  const Vector::Type next = Vector::load(at + 1);
  const Vector::Type isBackslash = Vector::either(Vector::equal(bytes, Vector::fill('\\')),
                                                  Vector::equal(next, Vector::fill('\\')));
  return Vector::either(isBackslash, Vector::both(Vector::equal(bytes, Vector::fill('.')),
                                                  Vector::equal(next, Vector::fill('/'))));
}

// Whether any block of a link of at least `kBlock` bytes shows what `found` looks for in so many.
template <std::size_t kBlock, class Found>
bool anyBlock(std::string_view link, Found found) {
  const char* last = link.data() + link.size() - kBlock;
  Vector::Type any = found(last);
  for (const char* at = link.data(); at < last; at += Vector::kWidth) {
    any = Vector::either(any, found(at));
  }
  return Vector::mask(any) != 0;
}

// Eight bytes with letters in lower case. Other bytes change as well, but none above 31 that is not
// a letter becomes one of a lower-case scheme.
std::uint64_t loweredWord(const char* at) {
  return loadWord<std::uint64_t>(at) | 0x2020202020202020U;
}

}  // namespace

bool needsCleaning(std::string_view link) {
  if (link.size() >= Vector::kWidth) return anyBlock<Vector::kWidth>(link, toClean);
  return std::any_of(link.begin(), link.end(),
                     [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == '%'; });
}

bool needsFolding(std::string_view link) {
  constexpr std::size_t kBlock = Vector::kWidth + 1;
  if (link.size() >= kBlock) return anyBlock<kBlock>(link, toFold);
  for (std::size_t i = 0; i < link.size(); ++i) {
    if (link[i] == '\\' || (link[i] == '/' && i > 0 && link[i - 1] == '.')) return true;
  }
  return false;
}

bool isAbsoluteHttp(std::string_view link) {
  constexpr std::uint64_t kSevenBytes = ~std::uint64_t{0} >> 8U;
  const std::uint64_t https = loweredWord("https://");
  const std::uint64_t http = loweredWord("http://") & kSevenBytes;
  if (link.size() < sizeof https) return false;
  const std::uint64_t word = loweredWord(link.data());
  return word == https || (word & kSevenBytes) == http;
}

}  // namespace pagescan::internal
