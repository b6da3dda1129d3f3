#include <optional>

#include "base/kernels.h"
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

template <typename Text>
std::optional<LineIndex> indexOfUtf16(const Text& text) {
  const auto encoding = internal::encodingForLabel(text.encoding());
  if (!encoding || !internal::isUtf16(*encoding)) return std::nullopt;
  return LineIndex(text);
}

}  // namespace

LineIndex::LineIndex(const Page& page) : lineStarts_(startsOf(page.bytes(), page.encoding())) {}

LineIndex::LineIndex(const StyleSheet& sheet)
    : lineStarts_(startsOf(sheet.bytes(), sheet.encoding())) {}

Position LineIndex::at(std::uint32_t offset) const {
  return internal::positionOf(lineStarts_, offset);
}

LineCounter::LineCounter(const Page& page) : bytes_(page.bytes()), index_(indexOfUtf16(page)) {}

LineCounter::LineCounter(const StyleSheet& sheet)
    : bytes_(sheet.bytes()), index_(indexOfUtf16(sheet)) {}

Position LineCounter::at(std::uint32_t offset) {
  if (index_) return index_->at(offset);
  if (offset < offset_) {
    offset_ = lineStart_ = 0;
    line_ = 1;
  }
  const char* const text = bytes_.data();
  const internal::LineEnds ends =
      internal::kernels().countLineEnds(text + offset_, text + offset, text + bytes_.size());
  line_ += static_cast<std::uint32_t>(ends.count);
  if (ends.last != nullptr) lineStart_ = static_cast<std::uint32_t>(ends.last + 1 - text);
  offset_ = offset;
  return {line_, offset - lineStart_ + 1};
}

}  // namespace pagescan
