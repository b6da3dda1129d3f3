// Readers of the numbers that stand in URLs and character references. They give what the C
// library's formatted input gives in the "C" locale, whatever the process's locale is.
#ifndef PAGESCAN_BASE_NUMBERS_H
#define PAGESCAN_BASE_NUMBERS_H

#include <optional>

namespace pagescan::internal {

// The value of a hexadecimal digit, or -1.
constexpr int hexDigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The two bytes after a "%", read as "%x" or "%2x" does into a number that is 0 before: leading
// white space and a sign are taken ("-1" gives -1, " 4" gives 4), reading stops at the first byte
// that is not a digit, and where no number can be read the result is 0.
int readHexEscape(char first, char second);

// The number at the start of [begin, end) as "%i" reads it: white space, a sign, then hexadecimal
// after "0x", octal after "0", else decimal. A number too large saturates before it is cut to 32
// bits. Nothing where no number can be read. Reads no further than the number.
std::optional<int> readInteger(const char* begin, const char* end);

}  // namespace pagescan::internal

#endif
