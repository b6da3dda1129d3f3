#include "page/css_characters.h"

#include <algorithm>
#include <iterator>

#include "url/utf8_reader.h"

namespace pagescan::internal {
namespace {

struct CharacterRange {
  char32_t first, last;
};

constexpr CharacterRange kNameCharacters[] = {
    {0xB7, 0xB7},     {0xC0, 0xD6},     {0xD8, 0xF6},        {0xF8, 0x37D},    {0x37F, 0x1FFF},
    {0x200C, 0x200D}, {0x203F, 0x2040}, {0x2070, 0x218F},    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF},
    {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0x10FFFF},
};
static_assert(std::size(kNameCharacters) == 13);

constexpr ByteClass kHexDigits = kDigits | ByteClass::range('a', 'f') | ByteClass::range('A', 'F');
constexpr std::size_t kMostDigits = 6;
constexpr std::size_t kMostBytes = 4;  // of a character

char32_t valueOf(std::string_view digits) {
  char32_t value = 0;
  for (const char c : digits) {
    value = value << 4 | (kDigits.contains(c) ? toByte(c) & 0x0FU : (toByte(c) & 0x0FU) + 9);
  }
  const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
  return value == 0 || isSurrogate || value > 0x10FFFF ? kReplacementCharacter : value;
}

// A NUL is U+FFFD, as the standard's preprocessing has it.
char32_t readCharacter(std::string_view css, std::size_t& at) {
  const char32_t character = readUtf8(css, at);
  return character == 0 ? kReplacementCharacter : character;
}

// Whether a name character that is no digit, or an escape, stands at `at`.
bool isNameStartOrHyphen(std::string_view css, std::size_t at) {
  if (at >= css.size()) return false;
  if (css[at] == '\\') return isCssEscape(css, at);
  return !kDigits.contains(css[at]) && cssNameCharacterLength(css, at) != 0;
}

}  // namespace

bool isCssNameCharacter(char32_t character) {
  const auto endsBefore = [](const CharacterRange& range, char32_t c) { return range.last < c; };
  const CharacterRange* const range = std::lower_bound(
      std::begin(kNameCharacters), std::end(kNameCharacters), character, endsBefore);
  return range != std::end(kNameCharacters) && character >= range->first;
}

std::size_t cssNameCharacterLength(std::string_view css, std::size_t at) {
  if (at >= css.size()) return 0;
  if (toByte(css[at]) < 0x80) return kCssAsciiName.contains(css[at]) ? 1 : 0;
  std::size_t end = at;
  return isCssNameCharacter(readUtf8(css, end)) ? end - at : 0;
}

std::size_t cssNameCharacterLengthBefore(std::string_view css, std::size_t at, std::size_t floor) {
  if (at <= floor) return 0;
  if (toByte(css[at - 1]) < 0x80) return kCssAsciiName.contains(css[at - 1]) ? 1 : 0;
  std::size_t begin = at - 1;
  const std::size_t least = at - std::min(at - floor, kMostBytes);
  while (begin > least && (toByte(css[begin]) & 0xC0) == 0x80) --begin;
  return cssNameCharacterLength(css, begin) == at - begin ? at - begin : 0;
}

bool isCssEscape(std::string_view css, std::size_t at) {
  return at + 1 >= css.size() || !kCssNewLine.contains(css[at + 1]);
}

CssEscape readCssEscape(std::string_view css, std::size_t at) {
  std::size_t end = at + 1;
  if (end == css.size()) return {kReplacementCharacter, 1};
  const std::size_t most = std::min(end + kMostDigits, css.size());
  while (end < most && kHexDigits.contains(css[end])) ++end;
  if (end == at + 1) {
    const char32_t character = readCharacter(css, end);
    return {character, end - at};
  }
  const char32_t character = valueOf(css.substr(at + 1, end - at - 1));
  if (end < css.size() && kCssWhiteSpace.contains(css[end])) end += cssNewLineLength(css, end);
  return {character, end - at};
}

std::size_t cssNewLineLength(std::string_view css, std::size_t at) {
  return css.substr(at, 2) == "\r\n" ? 2 : 1;
}

bool beginsCssName(std::string_view css, std::size_t at) {
  const bool isHyphen = at < css.size() && css[at] == '-';
  return isNameStartOrHyphen(css, isHyphen ? at + 1 : at);
}

}  // namespace pagescan::internal
