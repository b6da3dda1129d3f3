// Tokens in foreign content (HTML Standard, 13.2.6.5).
#include "page/tree_builder.h"

namespace pagescan::internal {

namespace {

// HTML that does not stay in SVG or MathML.
constexpr ElementSet kBreakouts = {
    Element::b,      Element::big,    Element::blockquote, Element::body,  Element::br,
    Element::center, Element::code,   Element::dd,         Element::div,   Element::dl,
    Element::dt,     Element::em,     Element::embed,      Element::h1,    Element::h2,
    Element::h3,     Element::h4,     Element::h5,         Element::h6,    Element::head,
    Element::hr,     Element::i,      Element::img,        Element::li,    Element::listing,
    Element::menu,   Element::meta,   Element::nobr,       Element::ol,    Element::p,
    Element::pre,    Element::ruby,   Element::s,          Element::small, Element::span,
    Element::strong, Element::strike, Element::sub,        Element::sup,   Element::table,
    Element::tt,     Element::u,      Element::ul,         Element::var};

bool isHtmlFont(const TagToken& tag) {
  if (tag.name != id(Element::font)) return false;
  for (std::uint32_t i = 0; i < tag.attributeCount; ++i) {
    const NameId name = tag.attributes[i].name;
    if (name == id(Attribute::color) || name == id(Attribute::face) ||
        name == id(Attribute::size)) {
      return true;
    }
  }
  return false;
}

}  // namespace

TreeBuilder::Step TreeBuilder::startForeign(const TagToken& tag) {
  if (kBreakouts.contains(tag.name) || isHtmlFont(tag)) {
    leaveForeign();
    return Step::again;
  }
  const Namespace space = atContext() ? options_.context.space : open_.current().space;
  insertForeign(tag, space);
  return Step::done;
}

void TreeBuilder::leaveForeign() {
  while (open_.current().space != Namespace::html && !open_.current().has(kHtmlPoint) &&
         !open_.current().has(kMathTextPoint)) {
    pop();
  }
}

// A "br" or "p" leaves; any other end tag closes the nearest foreign element of its name above the
// nearest HTML element, or is one for the HTML below.
TreeBuilder::Step TreeBuilder::endForeign(NameNumber name) {
  if (name == id(Element::br) || name == id(Element::p)) {
    leaveForeign();
    return Step::again;
  }
  if (open_.top() == OpenElements::kRoot) return Step::done;
  const std::uint32_t slot = open_.newestForeign(name);
  if (slot == kNone || slot < open_.nearestHtml()) return Step::again;
  popTo(slot);
  return Step::done;
}

}  // namespace pagescan::internal
