#include "page/resolving.h"

#include "page/reference_ids.h"
#include "page/values.h"
#include "page/white_space.h"
#include "url/plain_links.h"
#include "url/resolver.h"

namespace pagescan::internal {
namespace {

bool isStyle(Slot slot) {
  return slot == Slot::cssUrl || slot == Slot::cssString;
}

bool isOfBase(const Reference& reference) {
  return reference.element == elementId(Namespace::html, id(Element::base)) &&
         reference.attribute == id(Attribute::href);
}

// What is loaded while the page is read knows only the base elements before it. A link that is
// followed later knows them all.
bool resolvesAtItsTag(const Reference& reference) {
  return reference.kind == Kind::load || reference.slot == Slot::refresh || isStyle(reference.slot);
}

// The number of the URL that a reference resolves against.
std::uint32_t numberOfBase(const Documents& documents, const Reference& reference) {
  const Document& document = documents.of(reference.parent);
  const Document& owner = documents[document.owner];
  if (isOfBase(reference)) return owner.ownUrl;
  if (resolvesAtItsTag(reference)) return documents.urlInForceAt(reference.tag, document.owner);
  return owner.url;
}

// Source   HTML Standard, 2.4.2 "encoding-parsing a URL"; CSS and JSON are UTF-8 whatever the page
Encoding queryEncodingOf(const PageReading& page, const Reference& reference) {
  const bool isUtf8 = isStyle(reference.slot) || reference.slot == Slot::json ||
                      isOfBase(reference) || page.documents.of(reference.parent).srcdocs > 0;
  return isUtf8 ? Encoding::utf8 : outputEncodingOf(page.encoding);
}

// An empty action stands for the document's own URL, which is no address in a srcdoc.
// Source   HTML Standard, 4.10.22.3 "Form submission algorithm"
bool writeOwnUrl(const PageReading& page, const Reference& reference, std::string& out) {
  if (page.documents.of(reference.parent).srcdocs > 0) return false;
  const Url* const url = page.documents.ownBase().url();
  if (url == nullptr) return false;
  out.assign(url->href(), 0, url->offsets().fragmentBegin);
  return true;
}

// For what is not plain as it is written.
bool resolveValue(const PageReading& page, const Reference& reference, const Base& base,
                  std::string& out) {
  ValueReader values(page);
  const std::string_view value = values.read(reference);
  if (reference.kind == Kind::form && isBlank(value)) return writeOwnUrl(page, reference, out);
  return resolveInto(out, value, base, queryEncodingOf(page, reference));
}

}  // namespace

const Base& baseOf(const PageReading& page, const Reference& reference, Base& storage) {
  return page.documents.base(
      numberOfBase(page.documents, reference),
      [&page](const Reference& element) { return std::string(ValueReader(page).read(element)); },
      storage);
}

bool resolveReference(const PageReading& page, const Reference& reference, std::string& out) {
  Base storage;
  const Base& base = baseOf(page, reference, storage);
  const std::string_view written = writtenAt(page, reference.span);
  const bool isWhole = reference.kind != Kind::form && !isOfSvgStyle(reference);
  if (isWhole && PlainLinks(base).resolveWritten(out, written)) return true;
  return resolveValue(page, reference, base, out);
}

}  // namespace pagescan::internal
