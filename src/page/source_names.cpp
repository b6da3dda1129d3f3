#include "page/source_names.h"

#include <algorithm>

#include "page/reference_ids.h"
#include "page/tag_scanner.h"
#include "page/values.h"

namespace pagescan::internal {
namespace {

constexpr std::string_view kPrefixes[] = {"", "svg:", "math:"};

// Reads the name of a tag again, which stands before all that its attributes spell. So much of the
// tag is decoded as is needed: the name must end in the first half, so that where the piece is cut
// does not matter.
std::string nameInTag(const PageReading& page, const Reference& reference) {
  ValueReader values(page);
  const std::uint32_t most = reference.span.begin - reference.tag;
  for (std::uint32_t length = std::min(most, 256U);; length = std::min(most, 2 * length)) {
    const Span piece{reference.tag, reference.tag + length};
    std::string_view tag = values.readMarkup(piece, reference.parent);
    tag.remove_prefix(std::min<std::size_t>(1, tag.size()));
    const char* const end = tag.data() + tag.size();
    const auto size = static_cast<std::size_t>(skipTo(tag.data(), end, kTagNameEnd) - tag.data());
    if (length == most || size < tag.size() / 2) return tokenizedName(tag.substr(0, size));
  }
}

}  // namespace

std::string elementNameOf(const PageReading& page, const Reference& reference) {
  const Namespace space = spaceOf(reference.element);
  const NameId name = nameOfElement(reference.element);
  std::string result(kPrefixes[static_cast<std::size_t>(space)]);
  if (name == kUnknownName) {
    result += nameInTag(page, reference);
  } else if (name >= kElementCount) {
    result += page.own->elements.name(name);
  } else {
    result += space == Namespace::svg ? svgElementName(name) : elementName(name);
  }
  return result;
}

}  // namespace pagescan::internal
