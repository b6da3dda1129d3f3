#include "page/unknown_names.h"

#include "page/tag_scanner.h"

namespace pagescan::internal {

std::uint32_t UnknownNames::add(std::string_view name) {
  const auto [found, isNew] = numbers_.try_emplace(tokenizedName(name), next_);
  if (isNew) ++next_;
  return found->second;
}

std::uint32_t UnknownNames::find(std::string_view name) const {
  if (numbers_.empty()) return 0;
  const auto found = numbers_.find(tokenizedName(name));
  return found == numbers_.end() ? 0 : found->second;
}

}  // namespace pagescan::internal
