// What bytes look like that no command takes for a page: compressed files, pictures and the like.
#ifndef PAGESCAN_TOOL_INPUT_KIND_H
#define PAGESCAN_TOOL_INPUT_KIND_H

#include <string_view>

namespace pagescan::tool {

// "gzip", "a PNG picture", ..., recognised by the first bytes; empty for what may be text.
std::string_view binaryKindOf(std::string_view bytes);

// Whether it looks like UTF-16: it begins with a byte order mark, or with two characters of ASCII,
// each beside a NUL byte.
bool looksLikeUtf16(std::string_view bytes);

}  // namespace pagescan::tool

#endif
