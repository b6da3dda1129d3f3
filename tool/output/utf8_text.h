// UTF-8 read strictly: no overlong forms, no surrogates, nothing above U+10FFFF.
#ifndef PAGESCAN_TOOL_UTF8_TEXT_H
#define PAGESCAN_TOOL_UTF8_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace pagescan::tool {

struct Utf8Char {
  bool wellFormed;
  char32_t code;       // 0 when not well-formed
  std::size_t length;  // bytes of the character, or of the malformed sequence
};

// The character with which a text begins that is not empty.
Utf8Char firstUtf8Char(std::string_view text);

bool isWellFormedUtf8(std::string_view text);

// The bytes as the UTF-8 text whose code points are their values.
std::string bytesAsCodePoints(std::string_view bytes);

// The text for a terminal: "\" is doubled; control characters, those that turn the direction of
// writing, line separators and bytes that are not UTF-8 are written as "\xNN" byte by byte.
std::string printable(std::string_view text);

}  // namespace pagescan::tool

#endif
