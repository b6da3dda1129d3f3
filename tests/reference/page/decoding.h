// The bytes of a page as a text, and the choice of its encoding.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_DECODING_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_DECODING_H

#include <string>
#include <string_view>

#include "reference/page/text.h"

namespace reference::page {

// All of `bytes` in the encoding of that name, each character with its bytes; without a byte order
// mark at the start. What is malformed is U+FFFD.
Text decode(std::string_view bytes, std::string_view encoding);

// The name of the page's encoding: BOM, the caller's label, the first meta of the tree's head that
// names one, the prescan, windows-1252.
std::string encodingOfPage(std::string_view bytes, std::string_view charset, bool scripting);

// The name of the encoding of a style sheet of its own.
std::string encodingOfSheet(std::string_view bytes, std::string_view charset);

}  // namespace reference::page

#endif
