// Labels and names of the encodings.
#include "encoding/encoding.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "encoding/ascii.h"
#include "encoding/generated/labels.h"

namespace pagescan::internal {
namespace {

// Longer texts are no labels.
constexpr std::size_t kLongestLabel = [] {
  std::size_t longest = 0;
  for (const LabelRow& row : kLabels) longest = std::max(longest, row.label.size());
  return longest;
}();

std::string_view withoutWhiteSpaceAround(std::string_view text) {
  while (!text.empty() && kAsciiWhiteSpace.contains(text.front())) text.remove_prefix(1);
  while (!text.empty() && kAsciiWhiteSpace.contains(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace

std::optional<Encoding> encodingForLabel(std::string_view label) {
  label = withoutWhiteSpaceAround(label);
  if (label.empty() || label.size() > kLongestLabel) return std::nullopt;
  char lower[kLongestLabel];
  std::transform(label.begin(), label.end(), lower, toLower);
  const std::string_view wanted(lower, label.size());
  const auto* const row =
      std::lower_bound(std::begin(kLabels), std::end(kLabels), wanted,
                       [](const LabelRow& one, std::string_view text) { return one.label < text; });
  if (row == std::end(kLabels) || row->label != wanted) return std::nullopt;
  return row->encoding;
}

std::string_view nameOf(Encoding encoding) {
  return kNames[static_cast<std::size_t>(encoding)];
}

}  // namespace pagescan::internal
