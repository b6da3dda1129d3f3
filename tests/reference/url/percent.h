// Percent-encoding by the code point, and the text that it works on.
#ifndef PAGESCAN_TESTS_REFERENCE_URL_PERCENT_H
#define PAGESCAN_TESTS_REFERENCE_URL_PERCENT_H

#include <string>
#include <string_view>

namespace reference {

using CodePoints = std::u32string;

// 1.3 "Percent-encoded bytes": the sets are predicates over code points.
using PercentEncodeSet = bool (*)(char32_t);
bool isInC0ControlSet(char32_t c);
bool isInFragmentSet(char32_t c);
bool isInQuerySet(char32_t c);
bool isInSpecialQuerySet(char32_t c);
bool isInPathSet(char32_t c);
bool isInUserinfoSet(char32_t c);

// "UTF-8 percent-encode".
CodePoints utf8PercentEncode(char32_t c, PercentEncodeSet set);

// "%" and two digits, for a byte.
CodePoints percentEncode(char32_t byte);

// "String percent-decode".
std::string percentDecode(const CodePoints& input);

// The value of a hexadecimal digit, or -1.
int hexValue(char32_t c);

// The bytes decoded as UTF-8, malformed ones as U+FFFD; and back.
CodePoints decodeUtf8(std::string_view bytes);
std::string encodeUtf8(const CodePoints& text);

}  // namespace reference

#endif
