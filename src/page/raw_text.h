// Where text that is no markup ends, and where comments do (HTML Standard, 13.2.5).
#ifndef PAGESCAN_PAGE_RAW_TEXT_H
#define PAGESCAN_PAGE_RAW_TEXT_H

#include <cstdint>
#include <string_view>

#include "encoding/encoding.h"

namespace pagescan::internal {

// How the tokenizer reads on after a start tag (13.2.5.1 to 13.2.5.5).
enum class ContentState : std::uint8_t { data, rcdata, rawtext, script, plaintext };

// The "<" of the end tag with this name that ends a raw text, or `end`. Without a name, nothing
// ends it.
const char* rawTextEnd(const char* begin, const char* end, std::string_view name);

// The same for a script, in which "<!--" and "<script" can hide an end tag (13.2.5.15 to
// 13.2.5.31).
const char* scriptEnd(const char* begin, const char* end, std::string_view name);

// After the end of the comment whose text starts at `begin`; `end` for one that does not end.
const char* commentEnd(const char* begin, const char* end);

// The "]]>" that ends the CDATA section whose text starts at `begin`, or `end`. In encodings such
// as Shift_JIS a "]" may be the second byte of a character, which ends nothing.
// Cost   linear in the text of the section, which is decoded
const char* cdataEnd(const char* begin, const char* end, Encoding encoding);

// Whether a text starts with "<!doctype", ASCII case ignored.
bool startsDoctype(std::string_view text);

}  // namespace pagescan::internal

#endif
