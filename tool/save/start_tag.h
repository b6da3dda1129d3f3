// The attributes of one start tag, with their bytes.
#ifndef PAGESCAN_TOOL_SAVE_START_TAG_H
#define PAGESCAN_TOOL_SAVE_START_TAG_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/page.h"

namespace pagescan::tool {

struct TagAttribute {
  std::string name;  // ASCII letters in lower case; other characters that are not ASCII as "?"
  Span span;         // from the name to the end of the value, with its quotes
};

// tag       offset of the "<" of a start tag
// encoding  of the page; in UTF-16 a character is two bytes
// Cost      linear in the tag
// Source    HTML Standard, 13.2.5.32 to 13.2.5.39, the tokenizer's states within a tag
std::vector<TagAttribute> attributesAt(std::string_view page, std::uint32_t tag,
                                       std::string_view encoding);

// The bytes to take away so that the attribute is gone: it, and the blanks before it where others
// follow.
Span removalOf(const TagAttribute& attribute, std::string_view page, std::string_view encoding);

}  // namespace pagescan::tool

#endif
