// What the span of a CSS reference spells.
#include <algorithm>
#include <string>

#include "encoding/utf8.h"
#include "page/css_characters.h"
#include "page/style_text.h"
#include "page/white_space.h"

namespace pagescan::internal {
namespace {

constexpr ByteClass kSpecial = ByteClass::of({"\\\0", 2});

// The bytes of a backslash that spells nothing in a string: before a new line, or at the end.
std::size_t ignoredLength(std::string_view raw, std::size_t at) {
  if (at + 1 == raw.size()) return 1;
  return isCssEscape(raw, at) ? 0 : 1 + cssNewLineLength(raw, at + 1);
}

}  // namespace

void decodeCssValue(std::string_view raw, Slot slot, DecodedText& result) {
  result.start(raw);
  for (std::size_t at = 0; at < raw.size();) {
    const std::size_t special = findIn(raw, at, kSpecial);
    result.appendAsIs(at, special);
    if (special == raw.size()) return;
    CssEscape spelled = {kReplacementCharacter, 1};
    if (raw[special] == '\\') {
      const std::size_t ignored = slot == Slot::cssString ? ignoredLength(raw, special) : 0;
      if (ignored != 0) {
        result.appendSpelled(special, special + ignored, {});
        at = special + ignored;
        continue;
      }
      spelled = readCssEscape(raw, special);
    }
    std::string utf8;
    appendUtf8(utf8, spelled.character);
    at = special + spelled.length;
    result.appendSpelled(special, at, utf8);
  }
}

}  // namespace pagescan::internal
