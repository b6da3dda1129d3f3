#include "page/documents.h"

#include <algorithm>

namespace pagescan::internal {

Documents::Documents(std::string_view url) {
  documents_.push_back(Document{.parent = kNoParent, .outer = 0, .owner = 0});
  bases_.push_back(Base::parse(url).value_or(Base()));
}

std::uint32_t Documents::addFragment(std::uint32_t parent, std::uint32_t outer) {
  const Document& around = documents_[outer];
  Document document{.parent = parent, .outer = outer, .owner = around.owner};
  document.srcdocs = around.srcdocs;
  document.depth = static_cast<std::uint8_t>(around.depth + 1);
  documents_.push_back(document);
  return static_cast<std::uint32_t>(documents_.size() - 1);
}

std::uint32_t Documents::addSrcdoc(std::uint32_t parent, std::uint32_t outer) {
  const std::uint32_t added = addFragment(parent, outer);
  documents_[added].owner = added;
  ++documents_[added].srcdocs;
  return added;
}

const Document& Documents::of(std::uint32_t parent) const {
  if (parent == kNoParent) return documents_.front();
  const auto found = std::lower_bound(
      documents_.begin() + 1, documents_.end(), parent,
      [](const Document& document, std::uint32_t wanted) { return document.parent < wanted; });
  return found == documents_.end() ? documents_.front() : *found;
}

std::uint32_t Documents::urlInForceAt(std::uint32_t tag, std::uint32_t document) const {
  const Document& owner = documents_[documents_[document].owner];
  return owner.hasBase && tag >= owner.base.tag ? owner.url : owner.ownUrl;
}

// Source   HTML Standard, 4.2.3 "set the frozen base URL"
std::optional<Url> Documents::parsed(const Base& own, std::string_view href) {
  std::optional<Url> url = own.url() != nullptr ? Url::parse(href, *own.url()) : Url::parse(href);
  if (url && (url->scheme() == "data" || url->scheme() == "javascript")) url.reset();
  return url;
}

bool Documents::takeRoom(const Document& document, std::size_t& room) const {
  if ((document.ownUrl & kLater) != 0) return false;
  const Url* const own = bases_[document.ownUrl].url();
  const Span href = document.base.span;
  const std::size_t size = (own == nullptr ? 0 : own->href().size()) + (href.end - href.begin);
  if (size > room) return false;
  room -= size;
  return true;
}

}  // namespace pagescan::internal
