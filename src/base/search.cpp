#include "base/search.h"

#include <algorithm>

#include "base/kernels.h"

namespace pagescan::internal {
namespace {

// A way to cut a text in two such that a match can be tried from the cut to the right first.
struct Factorization {
  std::size_t cut;
  std::size_t period;
};

// The start and period of the greatest suffix, for one order of the bytes.
Factorization greatestSuffix(std::string_view text, bool reversedOrder) {
  std::size_t start = 0;
  std::size_t period = 1;
  for (std::size_t at = 1, matched = 0; at + matched < text.size();) {
    const auto candidate = toByte(toLower(text[at + matched]));
    const auto best = toByte(toLower(text[start + matched]));
    if (candidate == best) {
      if (++matched == period) {
        at += period;
        matched = 0;
      }
    } else if ((candidate < best) != reversedOrder) {
      at += matched + 1;
      matched = 0;
      period = at - start;
    } else {
      start = at++;
      matched = 0;
      period = 1;
    }
  }
  return {start, period};
}

Factorization factorize(std::string_view text) {
  const Factorization forward = greatestSuffix(text, false);
  const Factorization backward = greatestSuffix(text, true);
  return forward.cut > backward.cut ? forward : backward;
}

// The two-way search: linear in both texts and without memory of its own.
const char* findLong(const char* begin, const char* end, std::string_view text) {
  const auto [cut, period] = factorize(text);
  const bool isPeriodic = equalsIgnoringCase(text.data(), text.data() + period, cut);
  const std::size_t shift = isPeriodic ? period : std::max(cut, text.size() - cut) + 1;
  std::size_t known = 0;  // bytes at the start known to match, after a shift by the period
  while (static_cast<std::size_t>(end - begin) >= text.size()) {
    std::size_t right = std::max(cut, known);
    while (right < text.size() && toLower(begin[right]) == toLower(text[right])) ++right;
    if (right < text.size()) {
      begin += right - cut + 1;
      known = 0;
      continue;
    }
    std::size_t left = cut;
    while (left > known && toLower(begin[left - 1]) == toLower(text[left - 1])) --left;
    if (left <= known) return begin;
    begin += shift;
    known = isPeriodic ? text.size() - period : 0;
  }
  return end;
}

}  // namespace

bool equalsIgnoringCase(const char* a, const char* b, std::size_t length) {
  for (std::size_t i = 0; i < length; ++i) {
    if (toLower(a[i]) != toLower(b[i])) return false;
  }
  return true;
}

int compareIgnoringCase(const char* a, const char* b, std::size_t length) {
  for (std::size_t i = 0; i < length; ++i) {
    const int difference = toByte(toLower(a[i])) - toByte(toLower(b[i]));
    if (difference != 0 || a[i] == '\0') return difference;
  }
  return 0;
}

const char* findText(const char* begin, const char* end, std::string_view text) {
  if (text.empty()) return begin;
  if (begin > end || static_cast<std::size_t>(end - begin) < text.size()) return end;
  if (text.size() == 1) return findByte(begin, end, text.front());
  if (text.size() <= kShortText) {
    return kernels().findText(begin, end, SearchedText(text, SearchedText::exact).needle());
  }
  const void* found =
      ::memmem(begin, static_cast<std::size_t>(end - begin), text.data(), text.size());
  return found ? static_cast<const char*>(found) : end;
}

const char* findIgnoringCase(const char* begin, const char* end, const CaselessText& text) {
  if (text.size() == 0) return begin;
  if (begin > end || static_cast<std::size_t>(end - begin) < text.size()) return end;
  const bool isOneByte = text.size() == 1 && text.needle().first.fold == 0;
  if (isOneByte) return findByte(begin, end, text.text().front());
  return text.size() <= kShortText ? kernels().findText(begin, end, text.needle())
                                   : findLong(begin, end, text.text());
}

}  // namespace pagescan::internal
