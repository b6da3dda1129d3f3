// Searches over [begin, end): each returns the first place that fits, or `end`. None allocates or
// reads outside its range; all are linear.
#ifndef PAGESCAN_BASE_SEARCH_H
#define PAGESCAN_BASE_SEARCH_H

#include <cstddef>
#include <cstring>
#include <string_view>

#include "base/byte_class.h"
#include "base/kernels.h"

namespace pagescan {

inline const char* findByte(const char* begin, const char* end, char byte) {
  if (begin >= end) return end;
  const void* found = std::memchr(begin, toByte(byte), static_cast<std::size_t>(end - begin));
  return found ? static_cast<const char*>(found) : end;
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

// The place behind the last byte that is not of the set; `begin` when all are.
inline const char* findEndOfLastNotOf(const char* begin, const char* end, const ByteClass& bytes) {
  while (end > begin && bytes.contains(end[-1])) --end;
  return end;
}

// An empty text is found at `begin`.
inline const char* findText(const char* begin, const char* end, std::string_view text) {
  if (begin > end || static_cast<std::size_t>(end - begin) < text.size()) return end;
  const void* found =
      ::memmem(begin, static_cast<std::size_t>(end - begin), text.data(), text.size());
  return found ? static_cast<const char*>(found) : end;
}

// Whether `length` bytes are the same but for the case of ASCII letters.
bool equalsIgnoringCase(const char* a, const char* b, std::size_t length);

// Compares as strncasecmp does in the "C" locale: up to `length` bytes, stopping at a NUL.
int compareIgnoringCase(const char* a, const char* b, std::size_t length);

inline bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && equalsIgnoringCase(a.data(), b.data(), a.size());
}

// A text to be found ignoring case, with the filter that finds its candidates: its first byte
// together with the last one of those that pages are not full of. Keeps a view of the text.
class CaselessText {
 public:
  constexpr CaselessText(std::string_view text)  // NOLINT(google-explicit-constructor)
      : text_(text), probe_(text.empty() ? PairProbe{} : probeFor(text)) {}
  constexpr CaselessText(const char* text)  // NOLINT(google-explicit-constructor)
      : CaselessText(std::string_view(text)) {}

  constexpr std::string_view text() const { return text_; }
  constexpr const PairProbe& probe() const { return probe_; }

 private:
  static constexpr ByteClass kCommon =
      kHtmlWhiteSpace | kDigits | ByteClass::of("aehilnorstdAEHILNORSTD<>/\"=-");

  static constexpr PairProbe probeFor(std::string_view text) {
    std::size_t rare = text.size() - 1;
    while (rare > 0 && kCommon.contains(text[rare])) --rare;
    const std::size_t distance = rare > 0 ? rare : text.size() - 1;
    return {foldedProbe(text.front()), foldedProbe(text[distance]), distance};
  }

  static constexpr ByteProbe foldedProbe(char c) {
    return kLetters.contains(c) ? ByteProbe{toLower(c), 0x20} : ByteProbe{c, 0};
  }

  std::string_view text_;
  PairProbe probe_;
};

// An empty text is found at `begin`.
const char* findIgnoringCase(const char* begin, const char* end, const CaselessText& text);

}  // namespace pagescan

#endif
