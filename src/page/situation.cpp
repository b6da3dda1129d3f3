#include "page/situation.h"

namespace pagescan::internal {

std::string_view Situation::textOf(const TagAttribute& attribute) const {
  const std::string_view raw = rawOf(attribute);
  if (raw.find('&') == std::string_view::npos) return raw;
  // Bytes beyond ASCII decide nothing.
  decodeText(raw, TextForm::attributeValue, Encoding::windows1252, scratch_);
  return scratch_.text();
}

std::optional<std::string_view> Situation::text(Attribute attribute) const {
  const TagAttribute* const found = tag_.find(attribute);
  if (found == nullptr) return std::nullopt;
  return textOf(*found);
}

bool Situation::is(Attribute attribute, std::string_view word) const {
  const TagAttribute* const found = tag_.find(attribute);
  return found != nullptr && valueIs(rawOf(*found), word);
}

bool Situation::isFilled(Attribute attribute) const {
  const TagAttribute* const found = tag_.find(attribute);
  return found != nullptr && found->valueBegin != found->valueEnd;
}

}  // namespace pagescan::internal
