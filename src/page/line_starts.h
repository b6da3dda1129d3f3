// Where the lines of a text begin.
#ifndef PAGESCAN_PAGE_LINE_STARTS_H
#define PAGESCAN_PAGE_LINE_STARTS_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "encoding/encoding.h"
#include "pagescan/page.h"

namespace pagescan::internal {

// The offsets at which lines begin, in order; the first is 0. A line ends with LF, CR or CR LF; in
// UTF-16 with the code units of these values.
// bytes     at most 2^32-1
// Cost      one pass, four bytes a line
std::vector<std::uint32_t> lineStartsOf(std::string_view bytes, Encoding encoding);

// The line and the column of an offset, both from 1. Between CR and LF is still the line they end.
// starts    as above
// Cost      logarithmic in the number of lines
Position positionOf(const std::vector<std::uint32_t>& starts, std::uint32_t offset);

}  // namespace pagescan::internal

#endif
