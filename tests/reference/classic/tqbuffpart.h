// Slow twin of the slice comparison. A slice or text that holds a NUL compares as if it ended
// there, but its length counts whole.
#ifndef PAGESCAN_TESTS_REFERENCE_TQBUFFPART_H
#define PAGESCAN_TESTS_REFERENCE_TQBUFFPART_H

#include <cstddef>
#include <string>

namespace reference {

int g_strnicmp(const char* a, const char* b, std::size_t n);

// What compare gives for a part that holds the bytes of `part`.
int comparePart(const std::string& part, const std::string& text, bool ignoreCase);

// What getPart keeps of a slice: its bytes up to the first NUL, zero-filled to its length.
std::string copyOfPart(const std::string& part);

}  // namespace reference

#endif
