// Character references decoded as the classic library decodes them, but to UTF-8.
#ifndef PAGESCAN_TOOL_REFERENCES_UTF8_H
#define PAGESCAN_TOOL_REFERENCES_UTF8_H

#include <string>
#include <string_view>

namespace pagescan::tool {

// The text with each reference that CTQCharSet::convert decodes written in UTF-8. All other bytes
// stay. Linear in the text.
std::string referencesToUtf8(std::string_view text);

}  // namespace pagescan::tool

#endif
