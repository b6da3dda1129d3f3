// The slow twin of sniffing: the standards' algorithms, a byte at a time.
#ifndef PAGESCAN_TESTS_REFERENCE_ENCODING_SNIFF_H
#define PAGESCAN_TESTS_REFERENCE_ENCODING_SNIFF_H

#include <optional>
#include <string>
#include <string_view>

#include "encoding/encoding.h"

namespace reference {

using MaybeEncoding = std::optional<pagescan::internal::Encoding>;

// Encoding Standard, 4.2 "get an encoding", 6 "BOM sniff".
MaybeEncoding getEncoding(std::string_view label);
MaybeEncoding bomSniff(std::string_view bytes);

// HTML Standard, 13.2.3.2 and 2.6. The end condition of the prescan is 1,024 bytes.
MaybeEncoding prescan(std::string_view bytes);
MaybeEncoding extractFromMeta(std::string_view content);

// CSS Syntax 3, 3.2, the second step.
MaybeEncoding charsetRule(std::string_view bytes);

}  // namespace reference

#endif
