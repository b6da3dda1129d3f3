// The reverse indexes and the rules by which one of several pointers is chosen.
#include "encoding/pointers.h"

#include <algorithm>
#include <string_view>

#include "encoding/reverse_index.h"

namespace pagescan::internal {
namespace {

constexpr auto kEucKrPointers = pointersByCodePoint<countCharacters(kEucKr)>(kEucKr);
constexpr auto kGb18030Pointers = pointersByCodePoint<countCharacters(kGb18030)>(kGb18030);
constexpr auto kJis0208Pointers = pointersByCodePoint<countCharacters(kJis0208)>(kJis0208);
constexpr auto kBig5Pointers = pointersByCodePoint<countCharacters(kBig5)>(kBig5);

std::optional<unsigned> firstOf(const Pointers& pointers) {
  if (pointers.begin == pointers.end) return std::nullopt;
  return *pointers.begin;
}

Pointers inJis0208(char32_t codePoint) {
  return pointersOf(codePoint, kJis0208Pointers, [](std::uint16_t i) { return kJis0208[i]; });
}

}  // namespace

std::optional<unsigned> eucKrPointer(char32_t codePoint) {
  return firstOf(pointersOf(codePoint, kEucKrPointers, [](std::uint16_t i) { return kEucKr[i]; }));
}

std::optional<unsigned> gb18030Pointer(char32_t codePoint) {
  return firstOf(
      pointersOf(codePoint, kGb18030Pointers, [](std::uint16_t i) { return kGb18030[i]; }));
}

std::optional<unsigned> jis0208Pointer(char32_t codePoint) {
  return firstOf(inJis0208(codePoint));
}

std::optional<unsigned> shiftJisPointer(char32_t codePoint) {
  const Pointers all = inJis0208(codePoint);
  const auto* const found = std::find_if(all.begin, all.end, [](std::uint16_t pointer) {
    constexpr std::uint16_t kFirstOfNec = 8272;
    constexpr std::uint16_t kLastOfNec = 8835;
    return pointer < kFirstOfNec || pointer > kLastOfNec;
  });
  if (found == all.end) return std::nullopt;
  return *found;
}

std::optional<unsigned> big5Pointer(char32_t codePoint) {
  constexpr std::u32string_view kLastCounts = U"\u2550\u255E\u2561\u256A\u5341\u5345";
  constexpr unsigned kFirstPlain = (0xA1 - 0x81) * 157;
  Pointers all = pointersOf(codePoint, kBig5Pointers,
                            [](std::uint16_t i) { return big5CodePoint(i + kBig5FirstPointer); });
  const auto pointerAt = [](const std::uint16_t* place) { return *place + kBig5FirstPointer + 0U; };
  while (all.begin != all.end && pointerAt(all.begin) < kFirstPlain) ++all.begin;
  if (all.begin == all.end) return std::nullopt;
  const bool takesLast = kLastCounts.find(codePoint) != std::u32string_view::npos;
  return pointerAt(takesLast ? all.end - 1 : all.begin);
}

}  // namespace pagescan::internal
