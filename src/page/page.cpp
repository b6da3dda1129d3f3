// The references of a page.
#include "pagescan/page.h"

#include <limits>

#include "pagescan/style_sheet.h"

namespace pagescan {

// Stub: holds the bytes, finds nothing yet.
struct Page::State {
  std::string_view bytes;
  std::string base;
  std::vector<Reference> references;
};

struct Places::Table {};

Places::Places() = default;
std::optional<Places> Places::parse(std::string_view, std::string*) {
  return Places();
}

Page::Page(std::string_view bytes, const PageOptions& options)
    : state_(new State{bytes, std::string(options.url), {}}) {}
Page::Page(Page&&) noexcept = default;
Page& Page::operator=(Page&&) noexcept = default;
Page::~Page() = default;

std::string_view Page::error() const {
  return state_->bytes.size() > std::numeric_limits<std::uint32_t>::max()
             ? "the page has more than 4294967295 bytes"
             : "";
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
  return std::string(raw(reference));
}
std::optional<std::string> Page::url(const Reference&) const {
  return std::nullopt;
}
bool Page::urlInto(const Reference&, std::string& result) const {
  result.clear();
  return false;
}
std::string Page::element(const Reference&) const {
  return {};
}
std::string_view Page::attribute(const Reference&) const {
  return {};
}
std::string_view Page::encoding() const {
  return "windows-1252";
}
const std::string& Page::base() const {
  return state_->base;
}

struct StyleSheet::State {
  std::string_view bytes;
  std::vector<Reference> references;
};

StyleSheet::StyleSheet(std::string_view bytes, const StyleSheetOptions&)
    : state_(new State{bytes, {}}) {}
StyleSheet::StyleSheet(StyleSheet&&) noexcept = default;
StyleSheet& StyleSheet::operator=(StyleSheet&&) noexcept = default;
StyleSheet::~StyleSheet() = default;
std::string_view StyleSheet::error() const {
  return {};
}
std::string_view StyleSheet::bytes() const {
  return state_->bytes;
}
const std::vector<Reference>& StyleSheet::references() const {
  return state_->references;
}
std::string_view StyleSheet::raw(const Reference& reference) const {
  return state_->bytes.substr(reference.span.begin, reference.span.end - reference.span.begin);
}
std::string StyleSheet::value(const Reference& reference) const {
  return std::string(raw(reference));
}
std::optional<std::string> StyleSheet::url(const Reference&) const {
  return std::nullopt;
}
bool StyleSheet::urlInto(const Reference&, std::string& result) const {
  result.clear();
  return false;
}
std::string_view StyleSheet::encoding() const {
  return "UTF-8";
}

LineIndex::LineIndex(const Page&) {}
LineIndex::LineIndex(const StyleSheet&) {}
Position LineIndex::at(std::uint32_t offset) const {
  return {static_cast<std::uint32_t>(lineStarts_.size()) + 1, offset + 1};
}

}  // namespace pagescan
