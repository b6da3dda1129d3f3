// Character tokens (HTML Standard, 13.2.6), a run at a time.
#include "page/tree_builder.h"

namespace pagescan::internal {

void TreeBuilder::text(const char* begin, const char* end) {
  tokenBegin_ = static_cast<std::uint32_t>(begin - page_.data());
  TextUnits units(begin, end, true);
  if (skipsNewline_) units.skipNewline();
  skipsNewline_ = false;
  textByMode(units);
}

void TreeBuilder::cdata(const char* begin, const char* end) {
  skipsNewline_ = false;
  TextUnits units(begin, end, false);
  textByMode(units);
}

// In foreign content only "frameset-ok" may change, and NUL does not change it.
void TreeBuilder::textByMode(TextUnits& units) {
  while (!units.empty()) {
    if (!open_.empty() && currentIsForeign()) {
      if ((adjustedTraits() & (kHtmlPoint | kMathTextPoint)) == 0) {
        if (units.rest() == TextUnits::Content::more) framesetOk_ = false;
        return;
      }
    }
    if (mode_ <= Mode::afterHead) {
      textBeforeBody(units);
      continue;
    }
    switch (mode_) {
      case Mode::inTable:
      case Mode::inTableBody:
      case Mode::inRow:
        return tableText(units);
      case Mode::inColumnGroup:
        units.skipWhiteSpace();
        if (units.empty() || !closeColumnGroup()) return;
        break;
      case Mode::afterBody:
      case Mode::afterAfterBody: {
        TextUnits left = units;
        left.skipWhiteSpace();
        if (left.empty()) return flowText(units);
        mode_ = Mode::inBody;
        break;
      }
      case Mode::inFrameset:
      case Mode::afterFrameset:
        return;
      case Mode::afterAfterFrameset:
        if (units.holdsWhiteSpace()) reconstruct();
        return;
      default:
        return flowText(units);
    }
  }
}

// These modes pass white space, and end with any other character.
void TreeBuilder::textBeforeBody(TextUnits& units) {
  units.skipWhiteSpace();
  if (units.empty()) return;
  switch (mode_) {
    case Mode::initial:
      startInitial();
      break;
    case Mode::beforeHtml:
      insertImplied(Element::html);
      mode_ = Mode::beforeHead;
      break;
    case Mode::beforeHead:
      insertImplied(Element::head);
      hasHead_ = true;
      mode_ = Mode::inHead;
      break;
    case Mode::inHead:
      popHead();
      break;
    case Mode::inHeadNoscript:
      pop();
      mode_ = Mode::inHead;
      break;
    default:
      insertImplied(Element::body);
      mode_ = Mode::inBody;
      break;
  }
}

void TreeBuilder::flowText(TextUnits& units) {
  const TextUnits::Content content = units.rest();
  if (content == TextUnits::Content::nothing) return;
  reconstruct();
  if (content == TextUnits::Content::more) framesetOk_ = false;
}

// 13.2.6.4.9 and 13.2.6.4.10: what the text comes to shows at its end.
void TreeBuilder::tableText(TextUnits& units) {
  if (!inTableText_ && !isTablePart()) return flowText(units);
  inTableText_ = true;
  if (units.rest() == TextUnits::Content::more) tableTextShows_ = true;
}

bool TreeBuilder::isTablePart() const {
  static constexpr ElementSet kTableParts = {Element::table, Element::tbody, Element::template_,
                                             Element::tfoot, Element::thead, Element::tr};
  const OpenElement& current = open_.current();
  return current.space == Namespace::html && kTableParts.contains(current.name);
}

}  // namespace pagescan::internal
