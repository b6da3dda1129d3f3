// The characters of CSS: names, white space, escapes.
//
// Texts are well-formed UTF-8 that was not preprocessed: CR and FF are new lines, too, and a NUL
// counts as U+FFFD, which a name may hold. Offsets are byte offsets.
// Source   CSS Syntax Module Level 3, 4.2 "Definitions", 4.3 "Tokenizer Algorithms"
#ifndef PAGESCAN_PAGE_CSS_CHARACTERS_H
#define PAGESCAN_PAGE_CSS_CHARACTERS_H

#include <cstddef>
#include <string_view>

#include "base/byte_class.h"

namespace pagescan::internal {

inline constexpr ByteClass kCssNewLine = ByteClass::of("\n\r\f");
inline constexpr ByteClass kCssWhiteSpace = kCssNewLine | ByteClass::of("\t ");
inline constexpr ByteClass kCssAsciiNameStart = kLetters | ByteClass::of({"_\0", 2});
inline constexpr ByteClass kCssAsciiName = kCssAsciiNameStart | kDigits | ByteClass::of("-");

// Whether a character above ASCII may stand in a name ("non-ASCII ident code point").
bool isCssNameCharacter(char32_t character);

// The bytes of the name character that begins at `at`, or 0; escapes are not looked at.
std::size_t cssNameCharacterLength(std::string_view css, std::size_t at);

// The bytes of the name character that ends before `at`, or 0. Nothing before `floor` is looked at.
std::size_t cssNameCharacterLengthBefore(std::string_view css, std::size_t at, std::size_t floor);

// Whether the backslash at `at` begins an escape: not before a new line.
bool isCssEscape(std::string_view css, std::size_t at);

struct CssEscape {
  char32_t character;
  std::size_t length;  // of its spelling, the backslash and the white space after digits included
};

// The escape that begins at `at`, where isCssEscape holds. At the end of the text it is U+FFFD.
CssEscape readCssEscape(std::string_view css, std::size_t at);

// The bytes of the new line at `at`: 2 for CR LF.
std::size_t cssNewLineLength(std::string_view css, std::size_t at);

// Whether a name begins at `at` ("would start an ident sequence").
bool beginsCssName(std::string_view css, std::size_t at);

}  // namespace pagescan::internal

#endif
