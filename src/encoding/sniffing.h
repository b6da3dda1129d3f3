// Finds out the encoding of a page or a style sheet from its own bytes.
//
// Nothing here allocates; each is linear in the bytes that it looks at.
#ifndef PAGESCAN_ENCODING_SNIFFING_H
#define PAGESCAN_ENCODING_SNIFFING_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "encoding/encoding.h"

namespace pagescan::internal {

struct ByteOrderMark {
  Encoding encoding;
  std::size_t length;  // in bytes
};

// The byte order mark at the start of a text.
// Source    Encoding Standard, 6 "BOM sniff"
std::optional<ByteOrderMark> bomOf(std::string_view bytes);

// The encoding that a page names within its first 1,024 bytes: in a `meta`, or else in an XML
// declaration; UTF-16 for a page whose first bytes spell `<?x` in UTF-16.
// Source    HTML Standard, 13.2.3.2 "prescan a byte stream to determine its encoding"
std::optional<Encoding> prescan(std::string_view bytes);

// The encoding that the `content` of a `meta` names, UTF-16 and x-user-defined not replaced yet.
// Source    HTML Standard, 2.6 "extracting a character encoding from a meta element"
std::optional<Encoding> encodingFromMetaContent(std::string_view content);

// What a page means that names this encoding in a `meta`: UTF-8 for UTF-16, which cannot be true of
// bytes that were read as ASCII, and windows-1252 for x-user-defined.
constexpr Encoding encodingMeantByMeta(Encoding named) {
  if (isUtf16(named)) return Encoding::utf8;
  return named == Encoding::xUserDefined ? Encoding::windows1252 : named;
}

// The encoding that an `@charset` rule at the start of a style sheet names.
// Source    CSS Syntax 3, 3.2 "determine the fallback encoding", step 2
std::optional<Encoding> encodingFromCharsetRule(std::string_view bytes);

}  // namespace pagescan::internal

#endif
