// Searches over [begin, end): each returns the first place that fits, or `end`. None allocates or
// reads outside its range; all are linear.
#ifndef PAGESCAN_BASE_SEARCH_H
#define PAGESCAN_BASE_SEARCH_H

#include <cstddef>
#include <cstring>
#include <string_view>

#include "base/byte_class.h"

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

// An empty text is found at `begin`.
const char* findIgnoringCase(const char* begin, const char* end, std::string_view text);

}  // namespace pagescan

#endif
