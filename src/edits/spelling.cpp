#include "edits/spelling.h"

#include <utility>

#include "page/srcset.h"
#include "page/url_lists.h"
#include "url/utf8_reader.h"

namespace pagescan::internal {
namespace {

using Refusal = std::optional<EditRefusal>;

constexpr char32_t kAsciiEnd = 0x80;

std::string digitsOf(char32_t number, unsigned base, std::size_t least) {
  std::string digits;
  for (; number != 0 || digits.size() < least; number /= base) {
    digits.insert(digits.begin(), "0123456789abcdef"[number % base]);
  }
  return digits;
}

// Whether a character is one of some ASCII signs.
bool isOneOf(std::string_view signs, char32_t character) {
  return character < 0x80 && signs.find(static_cast<char>(character)) != std::string_view::npos;
}

// Copies printable ASCII but for `signs`, and calls append(character, bytes) for each of the
// others, in their order, up to the first that is refused.
template <typename Append>
Refusal rewrite(std::string_view text, std::string_view signs, std::string& out, Append append) {
  const auto isPlain = [signs](char c) {
    return c >= ' ' && c <= '~' && signs.find(c) == std::string_view::npos;
  };
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    while (at < text.size() && isPlain(text[at])) ++at;
    out.append(text, begin, at - begin);
    if (at == text.size()) break;
    const std::size_t other = at;
    const char32_t character = readUtf8(text, at);
    if (const Refusal refusal = append(character, text.substr(other, at - other))) return refusal;
  }
  return std::nullopt;
}

// --- The slots of CSS and JSON ---

// The signs that are escaped: those that mean something in the slot, and those that would be markup
// in the text of an element.
std::string cssSigns(Slot slot, Holder holder) {
  std::string signs = slot == Slot::cssString ? "\"'\\" : "\"'()\\";
  if (holder == Holder::rawText) signs += "<";
  if (holder == Holder::svgText) signs += "<&>";
  if (slot == Slot::cssUrl) signs += " ";
  return signs;
}

// Source   CSS Syntax Module Level 3, 4.3.7 "Consume an escaped code point"
Refusal spellCss(std::string_view value, Slot slot, Holder holder, PageEncoder& encoder,
                 std::string& out) {
  const auto append = [&](char32_t character, std::string_view bytes) -> Refusal {
    if (character == 0) return EditRefusal::noEscape;
    if (isOneOf("\"'()\\", character)) {
      out.append("\\").append(bytes);
    } else if (character >= kAsciiEnd && encoder.canWrite(character)) {
      out.append(bytes);
    } else {  // the blank ends the digits, and belongs to them
      out.append("\\").append(digitsOf(character, 16, 1)).append(" ");
    }
    return std::nullopt;
  };
  return rewrite(value, cssSigns(slot, holder), out, append);
}

// "<" is escaped, so that nothing in a script can end it.
// Source   RFC 8259, 7 "Strings"
Refusal spellJson(std::string_view value, PageEncoder& encoder, std::string& out) {
  const auto appendUnit = [&](char32_t unit) { out.append("\\u").append(digitsOf(unit, 16, 4)); };
  const auto append = [&](char32_t character, std::string_view bytes) -> Refusal {
    if (isOneOf("\"\\", character)) {
      out.append("\\").append(bytes);
    } else if (character >= kAsciiEnd && encoder.canWrite(character)) {
      out.append(bytes);
    } else if (character < 0x10000) {
      appendUnit(character);
    } else {
      appendUnit(0xD800 | (character - 0x10000) >> 10);
      appendUnit(0xDC00 | ((character - 0x10000) & 0x3FF));
    }
    return std::nullopt;
  };
  return rewrite(value, "\"\\<", out, append);
}

// --- HTML ---

// The text of an element, which knows no escapes.
Refusal spellRawText(std::string_view value, PageEncoder& encoder, std::string& out) {
  const auto append = [&](char32_t character, std::string_view bytes) -> Refusal {
    if (character == 0 || isOneOf("<\r", character)) return EditRefusal::noEscape;
    if (!encoder.canWrite(character)) return EditRefusal::notInEncoding;
    out.append(bytes);
    return std::nullopt;
  };
  return rewrite(value, "<", out, append);
}

// The signs that are written as references. "<" always is: the attribute may stand in a noscript
// element, which "</noscript" would end.
std::string_view signsIn(Quote quote) {
  if (quote == Quote::single) return "&<\r'";
  return quote == Quote::bare ? "&<\r\"'`> \t\n\f" : "&<\r\"";
}

std::string referenceTo(char32_t character) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return "&#" + digitsOf(character, 10, 1) + ";";
  }
}

// Source   HTML Standard, 13.2.5.80 "Numeric character reference end state": NUL and the controls
//          from 0x80 to 0x9F have no reference
Refusal spellAttribute(std::string_view value, Quote quote, PageEncoder& encoder,
                       std::string& out) {
  const std::string_view signs = signsIn(quote);
  const auto append = [&](char32_t character, std::string_view bytes) -> Refusal {
    if (character == 0) return EditRefusal::noEscape;
    if (!isOneOf(signs, character) && encoder.canWrite(character)) {
      out.append(bytes);
    } else if (character >= kAsciiEnd && character < 0xA0) {
      return EditRefusal::notInEncoding;
    } else {
      out.append(referenceTo(character));
    }
    return std::nullopt;
  };
  return rewrite(value, signs, out, append);
}

// --- Lists ---

template <typename Reader>
bool isOneItem(std::string_view value) {
  Reader reader(value);
  const auto item = reader.next();
  return item && item->begin == 0 && item->end == value.size();
}

// Whether it stays one item in a list, which knows no escapes.
bool staysWhole(std::string_view value, Slot slot) {
  switch (slot) {
    case Slot::urlList:
      return isOneItem<UrlListReader>(value);
    case Slot::commaList:
      return isOneItem<CommaListReader>(value);
    case Slot::srcset:
      return isOneItem<SrcsetReader>(value);
    default:
      return true;
  }
}

// --- All layers ---

Refusal spellInSlot(std::string_view value, Slot slot, Holder holder, PageEncoder& encoder,
                    std::string& out) {
  if (slot == Slot::cssUrl || slot == Slot::cssString) {
    return spellCss(value, slot, holder, encoder, out);
  }
  if (slot == Slot::json) return spellJson(value, encoder, out);
  if (holder != Holder::attribute) return spellRawText(value, encoder, out);
  out = value;
  return std::nullopt;
}

// The quotes that an attribute is given when it has no value, or would have none without them: of
// the kind that is no markup in the attribute around.
Quote quoteToAdd(const std::vector<Quote>& quotes) {
  return quotes.size() > 1 && quotes[1] == Quote::doubled ? Quote::single : Quote::doubled;
}

// Spells the value for the attribute that holds it, and what the attribute lacks.
Refusal spellInAttribute(const std::vector<Quote>& quotes, PageEncoder& encoder, Spelling& result) {
  const bool isAbsent = quotes[0] == Quote::absent;
  const bool isEmptied = quotes[0] == Quote::bare && result.value.empty();
  const Quote quote = isAbsent || isEmptied ? quoteToAdd(quotes) : quotes[0];
  if (isAbsent || isEmptied) {
    result.after = quote == Quote::single ? "'" : "\"";
    result.before = (isAbsent ? "=" : "") + result.after;
  }
  std::string text;
  const Refusal refusal = spellAttribute(result.value, quote, encoder, text);
  result.value = std::move(text);
  return refusal;
}

}  // namespace

Refusal spell(std::string_view value, Slot slot, const Surroundings& around, PageEncoder& encoder,
              Spelling& result) {
  result = {};
  if (!isWellFormedUtf8(value)) return EditRefusal::notUtf8;
  if (!staysWhole(value, slot)) return EditRefusal::split;
  Refusal refusal = spellInSlot(value, slot, around.holder, encoder, result.value);
  const bool isInAttribute = around.holder == Holder::attribute;
  if (!refusal && isInAttribute) refusal = spellInAttribute(around.quotes, encoder, result);
  for (std::string* const part : {&result.before, &result.value, &result.after}) {
    for (std::size_t i = isInAttribute ? 1 : 0; !refusal && i < around.quotes.size(); ++i) {
      std::string text;
      refusal = spellAttribute(*part, around.quotes[i], encoder, text);
      *part = std::move(text);
    }
    *part = encoder.encode(*part);
  }
  return refusal;
}

}  // namespace pagescan::internal
