// Decoded text in which every character knows the bytes of the page that spell it.
//
// All layers of a page (encoding, character references, CSS, JSON, srcdoc) turn one such text into
// another, so that spans need no arithmetic: they are read off the characters.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_TEXT_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_TEXT_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace reference::page {

// A code point, spelt by bytes [begin, end) of the page.
struct Char {
  char32_t code = 0;
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};
using Text = std::vector<Char>;

inline constexpr char32_t kReplacement = 0xFFFD;

// UTF-8; a lone surrogate is written like any other code point of three bytes.
void appendUtf8(std::string& out, char32_t code);
std::string toUtf8(const Text& text);

// Well-formed UTF-8, each code point at its own offset.
Text fromUtf8(std::string_view utf8);

bool isAsciiUpper(char32_t c);
bool isAsciiAlpha(char32_t c);
bool isAsciiDigit(char32_t c);
bool isAsciiHexDigit(char32_t c);
bool isAsciiAlphanumeric(char32_t c);
// Tab, LF, FF, CR, space: the "ASCII whitespace" of the Infra Standard.
bool isWhitespace(char32_t c);
char32_t toAsciiLower(char32_t c);
unsigned hexValue(char32_t digit);

std::string toAsciiLower(std::string_view text);
bool equalsIgnoringCase(std::string_view a, std::string_view b);
bool startsWithIgnoringCase(std::string_view text, std::string_view prefix);
std::string_view stripped(std::string_view text);  // without white space at both ends
std::vector<std::string> splitOnWhitespace(std::string_view text);

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names);

}  // namespace reference::page

#endif
