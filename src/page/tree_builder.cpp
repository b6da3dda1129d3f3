#include "page/tree_builder.h"

namespace pagescan::internal {

TreeBuilder::TreeBuilder(std::string_view page, const Options& options, NameNumber nameCount)
    : page_(page),
      options_(options),
      nameCount_(nameCount),
      open_(nameCount),
      formatting_(page, open_) {
  const FragmentContext& context = options.context;
  if (!context.isFragment) return;
  quirks_ = options.quirks ? QuirksMode::full : QuirksMode::none;
  pushHtml(id(Element::html), 0);
  if (context.space != Namespace::html) open_.current().traits |= kForeign;
  // Only a page with a body of its own asks for it.
  const bool isHtml = context.space == Namespace::html;
  framesetOk_ = isHtml && context.name == id(Element::html);
  if (isHtml && context.name == id(Element::template_)) templateModes_.push_back(Mode::inTemplate);
  resetMode();
}

const Verdict& TreeBuilder::startTag(const TagToken& tag) {
  endTextRun();
  tokenBegin_ = tag.begin;
  verdict_.kind = Verdict::dropped;
  verdict_.content = ContentState::data;
  verdict_.slot = kNone;
  verdict_.bodyLeaves = false;
  Step step = Step::again;
  if (mode_ == Mode::inBody && open_.current().space == Namespace::html && !atContext()) {
    step = startInBody(tag);  // what nearly all tags come to
  } else if (!open_.empty() && !takesHtmlRules(tag)) {
    step = startForeign(tag);
  }
  while (step == Step::again) step = startByMode(tag);
  return verdict_;
}

void TreeBuilder::endTag(NameNumber name, std::uint32_t begin) {
  endTextRun();
  tokenBegin_ = begin;
  Step step = Step::again;
  if (mode_ == Mode::inBody && open_.current().space == Namespace::html && !atContext()) {
    step = endInBody(name);
  } else if (!open_.empty() && currentIsForeign()) {
    step = endForeign(name);
  }
  while (step == Step::again) step = endByMode(name);
}

void TreeBuilder::doctype(const Doctype& doctype) {
  endTextRun();
  if (mode_ != Mode::initial) return;
  mode_ = Mode::beforeHtml;
  if (options_.iframeSrcdoc) return;
  if (meansQuirks(doctype)) {
    quirks_ = QuirksMode::full;
  } else if (meansLimitedQuirks(doctype)) {
    quirks_ = QuirksMode::limited;
  }
}

void TreeBuilder::endOfPage() {
  endTextRun();
  if (mode_ == Mode::initial) startInitial();
  while (!open_.empty()) pop();
}

// Of the adjusted current node, in foreign content.
ElementTraits TreeBuilder::adjustedTraits() const {
  if (!atContext()) return open_.current().traits;
  const FragmentContext& context = options_.context;
  if (context.space == Namespace::mathml) return mathmlTraits(context.name, false);
  return svgTraits(context.name);
}

// 13.2.6, the dispatcher: whether a start tag is looked at by the rules for HTML content.
bool TreeBuilder::takesHtmlRules(const TagToken& tag) const {
  if (!currentIsForeign()) return true;
  const ElementTraits traits = adjustedTraits();
  if ((traits & kHtmlPoint) != 0) return true;
  if ((traits & kMathTextPoint) != 0) {
    return tag.name != id(Element::mglyph) && tag.name != id(Element::malignmark);
  }
  // What is left of the special MathML elements is annotation-xml.
  return (traits & kSpecial) != 0 && tag.name == id(Element::svg);
}

TreeBuilder::Step TreeBuilder::startByMode(const TagToken& tag) {
  switch (mode_) {
    case Mode::initial:
      return startInitial();
    case Mode::beforeHtml:
      return startBeforeHtml(tag);
    case Mode::beforeHead:
      return startBeforeHead(tag);
    case Mode::inHead:
      return startInHead(tag);
    case Mode::inHeadNoscript:
      return startInHeadNoscript(tag);
    case Mode::afterHead:
      return startAfterHead(tag);
    case Mode::inBody:
      return startInBody(tag);
    case Mode::inTable:
      return startInTable(tag);
    case Mode::inCaption:
      return startInCaption(tag);
    case Mode::inColumnGroup:
      return startInColumnGroup(tag);
    case Mode::inTableBody:
      return startInTableBody(tag);
    case Mode::inRow:
      return startInRow(tag);
    case Mode::inCell:
      return startInCell(tag);
    case Mode::inTemplate:
      return startInTemplate(tag);
    case Mode::afterBody:
    case Mode::afterAfterBody:
      return startAfterBody(tag);
    case Mode::inFrameset:
      return startInFrameset(tag);
    case Mode::afterFrameset:
    case Mode::afterAfterFrameset:
      return startAfterFrameset(tag);
  }
  return Step::done;
}

TreeBuilder::Step TreeBuilder::endByMode(NameNumber name) {
  switch (mode_) {
    case Mode::initial:
      return startInitial();
    case Mode::beforeHtml:
      return endBeforeHtml(name);
    case Mode::beforeHead:
      return endBeforeHead(name);
    case Mode::inHead:
      return endInHead(name);
    case Mode::inHeadNoscript:
      return endInHeadNoscript(name);
    case Mode::afterHead:
      return endAfterHead(name);
    case Mode::inBody:
      return endInBody(name);
    case Mode::inTable:
      return endInTable(name);
    case Mode::inCaption:
      return endInCaption(name);
    case Mode::inColumnGroup:
      return endInColumnGroup(name);
    case Mode::inTableBody:
      return endInTableBody(name);
    case Mode::inRow:
      return endInRow(name);
    case Mode::inCell:
      return endInCell(name);
    case Mode::inTemplate:
      if (name == id(Element::template_)) endTemplate();
      return Step::done;
    case Mode::afterBody:
    case Mode::afterAfterBody:
      return endAfterBody(name);
    case Mode::inFrameset:
      return endInFrameset(name);
    case Mode::afterFrameset:
      if (name == id(Element::html)) mode_ = Mode::afterAfterFrameset;
      return Step::done;
    case Mode::afterAfterFrameset:
      return Step::done;
  }
  return Step::done;
}

void TreeBuilder::setNote(std::uint32_t slot, std::uint8_t note) {
  OpenElement& entry = open_.at(slot);
  entry.note = note;
  if (entry.formatting != kNone) formatting_.at(entry.formatting).note = note;
}

void TreeBuilder::reportElement(Namespace space, NameNumber name) {
  verdict_.kind = Verdict::element;
  verdict_.space = space;
  verdict_.name = name;
  if (open_.empty()) {
    verdict_.parentSpace = Namespace::html;
    verdict_.parentName = kUnknownName;
    verdict_.parentNote = 0;
    return;
  }
  const OpenElement& parent = open_.current();
  verdict_.parentSpace = parent.space;
  verdict_.parentName = parent.name;
  verdict_.parentNote = parent.note;
}

std::uint32_t TreeBuilder::pushHtml(NameNumber name, std::uint32_t begin) {
  if (name == id(Element::template_)) ++templates_;
  return open_.push(Namespace::html, name, begin, kHtmlTraits[rowOf(name)]);
}

std::uint32_t TreeBuilder::insertNamed(const TagToken& tag, NameNumber name) {
  reportElement(Namespace::html, name);
  return verdict_.slot = pushHtml(name, tag.begin);
}

// The element would close at the end of its text, before anything else happens: it is never open.
void TreeBuilder::insertRaw(const TagToken& tag, ContentState content) {
  insertVoid(tag);
  verdict_.content = content;
}

void TreeBuilder::insertImplied(Element element) {
  pushHtml(id(element), tokenBegin_);
}

// As written; empty where the tag has no such attribute.
std::string_view TreeBuilder::valueOf(const TagToken& tag, Attribute name) const {
  for (std::uint32_t i = 0; i < tag.attributeCount; ++i) {
    const TagAttribute& attribute = tag.attributes[i];
    if (attribute.name != id(name)) continue;
    return page_.substr(attribute.valueBegin, attribute.valueEnd - attribute.valueBegin);
  }
  return {};
}

void TreeBuilder::insertForeign(const TagToken& tag, Namespace space) {
  reportElement(space, tag.name);
  if (tag.selfClosing) return;
  ElementTraits traits = 0;
  if (space == Namespace::svg) {
    traits = svgTraits(tag.name);
  } else {
    const std::string_view encoding = valueOf(tag, Attribute::encoding);
    const bool isHtmlPoint =
        valueIs(encoding, "text/html") || valueIs(encoding, "application/xhtml+xml");
    traits = mathmlTraits(tag.name, isHtmlPoint);
  }
  verdict_.slot = open_.push(space, tag.name, tag.begin, traits);
}

bool TreeBuilder::isHiddenInput(const TagToken& tag) const {
  return valueIs(valueOf(tag, Attribute::type), "hidden");
}

void TreeBuilder::merge(std::uint32_t slot) {
  mergedSlot_ = slot;
  verdict_.kind = Verdict::merged;
  verdict_.space = Namespace::html;
  verdict_.name = open_.at(slot).name;
  verdict_.parentName = kUnknownName;
  verdict_.parentNote = 0;
}

void TreeBuilder::pop() {
  const OpenElement& entry = open_.current();
  if (entry.formatting != kNone) formatting_.at(entry.formatting).slot = kNone;
  if (entry.is(Element::template_)) {
    --templates_;
    if (entry.has(kShadowRoot)) --shadowTemplates_;
  }
  open_.pop();
}

void TreeBuilder::popTo(std::uint32_t slot) {
  if (slot == kNone) return;
  while (open_.top() >= slot) pop();
}

void TreeBuilder::generateImpliedEnds(NameNumber except) {
  while (open_.current().has(kImpliedEnd) && open_.current().name != except) pop();
}

void TreeBuilder::generateImpliedEndsThoroughly() {
  while (open_.current().has(kThoroughEnd)) pop();
}

void TreeBuilder::closeP() {
  generateImpliedEnds(id(Element::p));
  popUntil(Element::p);
}

void TreeBuilder::endTextRun() {
  skipsNewline_ = false;
  if (!inTableText_) return;
  inTableText_ = false;
  if (!tableTextShows_) return;
  tableTextShows_ = false;
  reconstruct();
  framesetOk_ = false;
}

// 13.2.4.1, "reset the insertion mode appropriately": the newest of the elements that decide.
void TreeBuilder::resetMode() {
  const std::uint32_t slot = open_.newestOfAny(
      {Element::td, Element::th, Element::tr, Element::tbody, Element::thead, Element::tfoot,
       Element::caption, Element::colgroup, Element::table, Element::template_, Element::head,
       Element::body, Element::frameset, Element::html});
  mode_ = modeAt(slot);
}

TreeBuilder::Mode TreeBuilder::modeAt(std::uint32_t slot) const {
  const bool isLast = slot == OpenElements::kRoot;
  Element element = static_cast<Element>(open_.at(slot).name);
  if (isLast && options_.context.isFragment) {
    if (options_.context.space != Namespace::html) return Mode::inBody;
    element = static_cast<Element>(options_.context.name);
  }
  switch (element) {
    case Element::td:
    case Element::th:
      return isLast ? Mode::inBody : Mode::inCell;
    case Element::tr:
      return Mode::inRow;
    case Element::tbody:
    case Element::thead:
    case Element::tfoot:
      return Mode::inTableBody;
    case Element::caption:
      return Mode::inCaption;
    case Element::colgroup:
      return Mode::inColumnGroup;
    case Element::table:
      return Mode::inTable;
    case Element::template_:
      return templateModes_.back();
    case Element::head:
      return isLast ? Mode::inBody : Mode::inHead;
    case Element::frameset:
      return Mode::inFrameset;
    case Element::html:
      return hasHead_ ? Mode::afterHead : Mode::beforeHead;
    default:
      return Mode::inBody;
  }
}

}  // namespace pagescan::internal
