// Slow twins of UTF-8 detection and conversion, with routines for ISO-8859-1.
#ifndef PAGESCAN_TESTS_REFERENCE_ZKUTF8_H
#define PAGESCAN_TESTS_REFERENCE_ZKUTF8_H

#include <string>

namespace reference {

bool isUtf8(const char* bytes, int length);

// Both convert a text up to its first NUL. A character beyond byte 255, and each malformed
// sequence, becomes "?".
std::string latin1ToUtf8(const std::string& text);
std::string utf8ToLatin1(const std::string& text);

const char* ConvertUtf8toAnsi(std::string& text);
const char* ConvertAnsitoUtf8(std::string& text);

}  // namespace reference

#endif
