#include "page/url_lists.h"

#include <algorithm>
#include <cstdint>

#include "page/white_space.h"

namespace pagescan::internal {
namespace {

Span spanOf(std::size_t begin, std::size_t end) {
  return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

}  // namespace

std::optional<Span> UrlListReader::next() {
  const std::size_t begin = skipAll(value_, at_, kAsciiWhiteSpace);
  at_ = findIn(value_, begin, kAsciiWhiteSpace);
  if (begin == at_) return std::nullopt;
  return spanOf(begin, at_);
}

std::optional<Span> CommaListReader::next() {
  while (at_ < value_.size()) {
    const std::size_t begin = skipAll(value_, at_, kAsciiWhiteSpace);
    const std::size_t comma = std::min(value_.find(',', begin), value_.size());
    std::size_t end = comma;
    while (end > begin && kAsciiWhiteSpace.contains(value_[end - 1])) --end;
    at_ = comma + 1;
    if (begin < end) return spanOf(begin, end);
  }
  return std::nullopt;
}

}  // namespace pagescan::internal
