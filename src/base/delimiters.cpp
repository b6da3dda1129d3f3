#include "base/delimiters.h"

namespace pagescan::internal {
namespace {

// One after the other.
Region findApart(const char* begin, const char* end, const CaselessText& open,
                 const CaselessText& close) {
  const char* closeAt = findIgnoringCase(begin, end, close);
  if (closeAt == end) return {};
  const auto left = static_cast<std::size_t>(end - closeAt);
  const char* limit = open.size() < left ? closeAt + open.size() : end;
  const char* openAt = findIgnoringCase(begin, limit, open);
  return {openAt == limit ? nullptr : openAt, closeAt};
}

}  // namespace

bool Delimiters::find(const char* begin, const char* end, Region& region) const {
  if (static_cast<std::size_t>(end - begin) < close_.size()) return false;
  region = rarity_ > 0 ? kernels().findRegion(begin, end, open_.needle(), close_.needle())
                       : findApart(begin, end, open_, close_);
  return region.open && region.close && region.open < region.close;
}

}  // namespace pagescan::internal
