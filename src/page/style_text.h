// The URLs of CSS text: style sheets, style attributes, presentation attributes of SVG.
//
// Reads decoded UTF-8 of at most 2^32-1 bytes; malformed bytes count as U+FFFD. Spans are byte
// offsets in that text, half-open. Pure functions; any thread may call.
#ifndef PAGESCAN_PAGE_STYLE_TEXT_H
#define PAGESCAN_PAGE_STYLE_TEXT_H

#include <string_view>
#include <vector>

#include "page/decoded_text.h"
#include "pagescan/page.h"

namespace pagescan::internal {

enum class StyleForm {
  sheet,         // rules
  declarations,  // a style attribute
  value,         // of one property: fill="url(#a)"
};

// A URL in CSS. Empty and blank ones are none.
struct StyleReference {
  Span span;    // between the quotes, or between "url(" with its white space and that before ")"
  Slot slot;    // cssUrl or cssString
  Kind kind;    // load, fragment, identifier or dead
  Flags flags;  // kCandidate, kConditional
};

// Appends the references of `css` in the order of their spans.
// Fails    std::bad_alloc alone
// Cost     linear in the text; memory a byte for each bracket that is open at once
// Source   CSS Syntax Module Level 3, 4 "Tokenization"
void readStyle(std::string_view css, StyleForm form, std::vector<StyleReference>& references);

// What the span of a reference spells: its escapes decoded. Offsets count from the start of raw.
// raw      css[span]
// Cost     linear
void decodeCssValue(std::string_view raw, Slot slot, DecodedText& result);

}  // namespace pagescan::internal

#endif
