#include "zkutf8.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "base/kernels.h"
#include "hostroutines.h"

using namespace pagescan::internal;

namespace {

// The most misplaced bytes of a text that passes.
constexpr std::size_t kMostBadPairs = 9;

using HostRoutine = int (*)(int, const char*, int, char*, int);

// The result is what stands before the first NUL, whatever a host's routine makes of the rest.
void convert(RWCString& text, HostRoutine routine) {
  const std::size_t size = 3 * text.length() + 1;
  const std::unique_ptr<char[]> converted(new char[size]);
  converted[0] = '\0';
  const auto largest = static_cast<std::size_t>(std::numeric_limits<int>::max());
  routine(0, text.data(), -1, converted.get(), static_cast<int>(std::min(size, largest)));
  converted[size - 1] = '\0';
  text = RWCString(converted.get());
}

bool looksLikeUtf8(const RWCString& text) {
  return isUtf8(text.data(), static_cast<int>(text.length()));
}

}  // namespace

bool isUtf8(const char* bytes, int length) {
  if (length < 2) return false;
  const PairCount pairs = kernels().countUtf8Pairs(bytes, bytes + length, kMostBadPairs);
  return pairs.good > 0 && pairs.bad <= std::min(pairs.good, kMostBadPairs);
}

const char* ConvertUtf8toAnsi(RWCString& text) {
  if (text.length() > 0 && looksLikeUtf8(text)) convert(text, UTF8ToANSI);
  return text.data();
}

const char* ConvertAnsitoUtf8(RWCString& text) {
  if (text.length() > 0 && !looksLikeUtf8(text)) convert(text, ANSIToUTF8);
  return text.data();
}
