// The public face of a page's reading.
#include "pagescan/page.h"

#include <limits>
#include <utility>

#include "page/page_state.h"
#include "page/reference_ids.h"
#include "page/resolving.h"
#include "page/source_names.h"
#include "page/values.h"

namespace pagescan {

Page::Page(std::string_view bytes, const PageOptions& options) : state_(std::make_unique<State>()) {
  state_->bytes = bytes;
  state_->url = options.url;
  state_->charset = options.charset;
  state_->scripting = options.scripting;
  state_->profiles = options.profiles;
  state_->hasPlaces = options.places != nullptr;
  if (options.places != nullptr) state_->places = *options.places;
  const PageOptions used = internal::optionsOf(*state_);
  const bool isTooLarge = bytes.size() > std::numeric_limits<std::uint32_t>::max();
  state_->reading = internal::readPage(isTooLarge ? std::string_view() : bytes, used);
  state_->references = state_->reading->references.take();
  const Url* const base = state_->reading->documents.linkBase().url();
  if (base != nullptr) state_->base = base->href();
}

Page::Page(Page&&) noexcept = default;
Page& Page::operator=(Page&&) noexcept = default;
Page::~Page() = default;

std::string_view Page::error() const {
  const bool isTooLarge = state_->bytes.size() > std::numeric_limits<std::uint32_t>::max();
  return isTooLarge ? "the page has more than 4294967295 bytes" : "";
}

std::string_view Page::bytes() const {
  return state_->bytes;
}

const std::vector<Reference>& Page::references() const {
  return state_->references;
}

std::string_view Page::raw(const Reference& reference) const {
  return state_->bytes.substr(reference.span.begin, reference.span.end - reference.span.begin);
}

std::string Page::value(const Reference& reference) const {
  return std::string(internal::ValueReader(*state_->reading).read(reference));
}

void Page::valueInto(const Reference& reference, std::string& result) const {
  result = internal::ValueReader(*state_->reading).read(reference);
}

std::optional<std::string> Page::url(const Reference& reference) const {
  std::string result;
  if (!urlInto(reference, result)) return std::nullopt;
  return result;
}

bool Page::urlInto(const Reference& reference, std::string& result) const {
  if (internal::resolveReference(*state_->reading, reference, result)) return true;
  result.clear();
  return false;
}

std::string Page::base(const Reference& reference) const {
  Base storage;
  const Url* const url = internal::baseOf(*state_->reading, reference, storage).url();
  return url == nullptr ? std::string() : url->href();
}

std::string Page::element(const Reference& reference) const {
  return internal::elementNameOf(*state_->reading, reference);
}

std::string_view Page::attribute(const Reference& reference) const {
  const internal::NameId name = reference.attribute;
  if (name < internal::kAttributeCount) return internal::attributeName(name);
  return state_->places.table()->attributes.name(name);
}

std::string_view Page::encoding() const {
  return internal::nameOf(state_->reading->encoding);
}

const std::string& Page::base() const {
  return state_->base;
}

}  // namespace pagescan
