#include "encoding/encoding.h"
#include "page/line_starts.h"
#include "pagescan/page.h"
#include "pagescan/style_sheet.h"

namespace pagescan {
namespace {

std::vector<std::uint32_t> startsOf(std::string_view bytes, std::string_view encoding) {
  using internal::Encoding;
  return internal::lineStartsOf(bytes,
                                internal::encodingForLabel(encoding).value_or(Encoding::utf8));
}

}  // namespace

LineIndex::LineIndex(const Page& page) : lineStarts_(startsOf(page.bytes(), page.encoding())) {}

LineIndex::LineIndex(const StyleSheet& sheet)
    : lineStarts_(startsOf(sheet.bytes(), sheet.encoding())) {}

Position LineIndex::at(std::uint32_t offset) const {
  return internal::positionOf(lineStarts_, offset);
}

}  // namespace pagescan
