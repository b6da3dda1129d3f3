// Searches over [begin, end): each returns the first place that fits, or `end`. None allocates or
// reads outside its range; all are linear.
#ifndef PAGESCAN_BASE_SEARCH_H
#define PAGESCAN_BASE_SEARCH_H

#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "base/byte_class.h"
#include "base/kernels.h"
#include "base/near_vector.h"

namespace pagescan::internal {

inline const char* findByte(const char* begin, const char* end, char byte) {
  if (begin >= end) return end;
  const void* found = std::memchr(begin, toByte(byte), static_cast<std::size_t>(end - begin));
  return found ? static_cast<const char*>(found) : end;
}

// The same, for a byte that stands within a few dozen bytes as a rule: there a call costs as much
// as the search.
inline const char* findNearbyByte(const char* begin, const char* end, char byte) {
  constexpr std::ptrdiff_t kWidth = NearVector::kWidth;
  const auto wanted = NearVector::fill(byte);
  for (int i = 0; i < 4 && end - begin >= kWidth; ++i, begin += kWidth) {
    const auto mask = NearVector::mask(NearVector::equal(NearVector::load(begin), wanted));
    if (mask != 0) return begin + std::countr_zero(mask);
  }
  return findByte(begin, end, byte);
}

// For runs that are short as a rule; long ones go through findByte.
inline const char* findFirstOf(const char* begin, const char* end, const ByteClass& bytes) {
  while (begin < end && !bytes.contains(*begin)) ++begin;
  return begin;
}

inline const char* findFirstNotOf(const char* begin, const char* end, const ByteClass& bytes) {
  while (begin < end && bytes.contains(*begin)) ++begin;
  return begin;
}

// The first byte that is not HTML white space. Runs are a byte or two as a rule, but blanked
// scripts leave long ones.
inline const char* skipWhiteSpace(const char* begin, const char* end) {
  constexpr std::ptrdiff_t kShortRun = 8;
  const char* soon = end - begin > kShortRun ? begin + kShortRun : end;
  begin = findFirstNotOf(begin, soon, kHtmlWhiteSpace);
  if (begin < soon || begin >= end) return begin;
  return findFirstNotOf(kernels().skipWhiteSpace(begin, end), end, kHtmlWhiteSpace);
}

// The place after the last byte that is not of the set; `begin` when all are.
inline const char* findEndOfLastNotOf(const char* begin, const char* end, const ByteClass& bytes) {
  while (end > begin && bytes.contains(end[-1])) --end;
  return end;
}

// Whether `length` bytes are the same except for the case of ASCII letters.
bool equalsIgnoringCase(const char* a, const char* b, std::size_t length);

// Compares as strncasecmp does in the "C" locale: up to `length` bytes, stopping at a NUL.
int compareIgnoringCase(const char* a, const char* b, std::size_t length);

inline bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && equalsIgnoringCase(a.data(), b.data(), a.size());
}

// A text to be found, with the filter that finds its candidates: those two of its bytes that pages
// hold least. Keeps a view of the text.
class SearchedText {
 public:
  enum Case { exact, ignored };

  constexpr SearchedText(std::string_view text, Case letterCase)
      : needle_{text.data(), text.size(), letterCase == ignored, 0, 0, {}, {}} {
    if (text.empty()) return;
    const std::size_t rarest = rarestBut(text.size());
    const std::size_t second = text.size() > 1 ? rarestBut(rarest) : rarest;
    const std::size_t far = rarest < second ? second : rarest;
    const std::size_t lead = rarest < second ? rarest : second;
    probeAt(lead, far - lead);
  }

  constexpr std::string_view text() const { return {needle_.text, needle_.length}; }
  constexpr std::size_t size() const { return needle_.length; }
  constexpr const Needle& needle() const { return needle_; }

  // Has the candidates found by the two bytes at `lead` and `distance` after it.
  constexpr void probeAt(std::size_t lead, std::size_t distance) {
    needle_.lead = lead;
    needle_.distance = distance;
    needle_.first = probeFor(needle_.text[lead]);
    needle_.second = probeFor(needle_.text[lead + distance]);
  }

  // How seldom pages hold the byte; letters of either case alike.
  static constexpr std::size_t rarity(char c) {
    const std::size_t rank = kFrequent.find(toLower(c));
    return rank == std::string_view::npos ? kFrequent.size() : rank;
  }

 private:
  // What pages are full of, the most frequent byte first; all others are rare.
  static constexpr std::string_view kFrequent = " etaionsrlc\"d/=<-phum>fgb.0w1y2v:_;3";

  // The place of the rarest byte that does not stand at `excluded`.
  constexpr std::size_t rarestBut(std::size_t excluded) const {
    std::size_t best = excluded == 0 ? 1 : 0;
    for (std::size_t i = best + 1; i < needle_.length; ++i) {
      const bool isRarer = rarity(needle_.text[i]) > rarity(needle_.text[best]);
      if (i != excluded && isRarer) best = i;
    }
    return best;
  }

  constexpr ByteProbe probeFor(char c) const {
    const bool folds = needle_.ignoresCase && kLetters.contains(c);
    return folds ? ByteProbe{toLower(c), 0x20} : ByteProbe{c, 0};
  }

  Needle needle_;
};

// A text to be found ignoring the case of its letters.
class CaselessText : public SearchedText {
 public:
  constexpr CaselessText(std::string_view text)  // NOLINT(google-explicit-constructor)
      : SearchedText(text, ignored) {}
  constexpr CaselessText(const char* text)  // NOLINT(google-explicit-constructor)
      : CaselessText(std::string_view(text)) {}
};

// Up to this length a candidate is simply compared: that costs a constant.
inline constexpr std::size_t kShortText = 32;

// An empty text is found at `begin`.
const char* findText(const char* begin, const char* end, std::string_view text);

// An empty text is found at `begin`.
const char* findIgnoringCase(const char* begin, const char* end, const CaselessText& text);

}  // namespace pagescan::internal

#endif
