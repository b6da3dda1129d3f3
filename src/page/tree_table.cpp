// The insertion modes of tables and templates (HTML Standard, 13.2.6.4.9 to 13.2.6.4.15 and
// 13.2.6.4.18).
#include "page/tree_builder.h"

namespace pagescan::internal {

namespace {

constexpr ElementSet kTableStructure = {Element::caption, Element::col,   Element::colgroup,
                                        Element::tbody,   Element::td,    Element::tfoot,
                                        Element::th,      Element::thead, Element::tr};

// End tags of what is around a table or its structure, dropped in it.
constexpr ElementSet kOuterEnds = {Element::body, Element::caption, Element::col, Element::colgroup,
                                   Element::html};

}  // namespace

// "Clear the stack back to a ... context": html and template end each of them.
void TreeBuilder::clearTo(std::initializer_list<Element> elements) {
  for (;;) {
    const OpenElement& current = open_.current();
    if (current.is(Element::html) || current.is(Element::template_)) return;
    for (const Element element : elements) {
      if (current.is(element)) return;
    }
    pop();
  }
}

// A part of a table, put right below it.
TreeBuilder::Step TreeBuilder::startTablePart(const TagToken& tag, Mode mode) {
  clearTo({Element::table});
  insert(tag);
  mode_ = mode;
  return Step::done;
}

// The same for a tag that has its part left out.
TreeBuilder::Step TreeBuilder::implyTablePart(Element part, Mode mode) {
  clearTo({Element::table});
  insertImplied(part);
  mode_ = mode;
  return Step::again;
}

TreeBuilder::Step TreeBuilder::startInTable(const TagToken& tag) {
  switch (static_cast<Element>(tag.name)) {
    case Element::caption:
      formatting_.pushMarker();
      return startTablePart(tag, Mode::inCaption);
    case Element::colgroup:
      return startTablePart(tag, Mode::inColumnGroup);
    case Element::col:
      return implyTablePart(Element::colgroup, Mode::inColumnGroup);
    case Element::tbody:
    case Element::tfoot:
    case Element::thead:
      return startTablePart(tag, Mode::inTableBody);
    case Element::td:
    case Element::th:
    case Element::tr:
      return implyTablePart(Element::tbody, Mode::inTableBody);
    case Element::table:
      if (!open_.inTableScope(Element::table)) return Step::done;
      popUntil(Element::table);
      resetMode();
      return Step::again;
    case Element::style:
    case Element::script:
    case Element::template_:
      startHeadContent(tag);
      return Step::done;
    case Element::input:
      if (!isHiddenInput(tag)) break;
      insertVoid(tag);
      return Step::done;
    case Element::form:
      startFormInTable(tag);
      return Step::done;
    default:
      break;
  }
  return startInBody(tag);
}

// Such a form is closed at once, but the pointer keeps it.
void TreeBuilder::startFormInTable(const TagToken& tag) {
  if (open_.isOpen(Element::template_) || open_.form != kNone) return;
  insertVoid(tag);
  open_.form = OpenElements::kFormClosed;
}

TreeBuilder::Step TreeBuilder::endInTable(NameNumber name) {
  switch (static_cast<Element>(name)) {
    case Element::table:
      if (!open_.inTableScope(Element::table)) return Step::done;
      popUntil(Element::table);
      resetMode();
      return Step::done;
    case Element::template_:
      endTemplate();
      return Step::done;
    default:
      break;
  }
  if (kOuterEnds.contains(name) || kTableStructure.contains(name)) return Step::done;
  return endInBody(name);
}

bool TreeBuilder::closeCaption() {
  if (!open_.inTableScope(Element::caption)) return false;
  generateImpliedEnds();
  popUntil(Element::caption);
  clearToMarker();
  mode_ = Mode::inTable;
  return true;
}

TreeBuilder::Step TreeBuilder::startInCaption(const TagToken& tag) {
  if (!kTableStructure.contains(tag.name)) return startInBody(tag);
  return closeCaption() ? Step::again : Step::done;
}

TreeBuilder::Step TreeBuilder::endInCaption(NameNumber name) {
  if (name == id(Element::caption)) {
    closeCaption();
    return Step::done;
  }
  if (name == id(Element::table)) return closeCaption() ? Step::again : Step::done;
  if (kOuterEnds.contains(name) || kTableStructure.contains(name)) return Step::done;
  return endInBody(name);
}

bool TreeBuilder::closeColumnGroup() {
  if (!open_.current().is(Element::colgroup)) return false;
  pop();
  mode_ = Mode::inTable;
  return true;
}

TreeBuilder::Step TreeBuilder::startInColumnGroup(const TagToken& tag) {
  switch (static_cast<Element>(tag.name)) {
    case Element::html:
      return startInBody(tag);
    case Element::col:
      insertVoid(tag);
      return Step::done;
    case Element::template_:
      startTemplate(tag);
      return Step::done;
    default:
      return closeColumnGroup() ? Step::again : Step::done;
  }
}

TreeBuilder::Step TreeBuilder::endInColumnGroup(NameNumber name) {
  switch (static_cast<Element>(name)) {
    case Element::colgroup:
      closeColumnGroup();
      return Step::done;
    case Element::col:
      return Step::done;
    case Element::template_:
      endTemplate();
      return Step::done;
    default:
      return closeColumnGroup() ? Step::again : Step::done;
  }
}

// Closes the tbody, thead or tfoot. False where none is in table scope.
bool TreeBuilder::closeTableBody() {
  const std::uint32_t slot = open_.newestOfAny({Element::tbody, Element::thead, Element::tfoot});
  if (!open_.inTableScope(slot)) return false;
  clearTo({Element::tbody, Element::thead, Element::tfoot});
  pop();
  mode_ = Mode::inTable;
  return true;
}

TreeBuilder::Step TreeBuilder::startInTableBody(const TagToken& tag) {
  switch (static_cast<Element>(tag.name)) {
    case Element::tr:
      clearTo({Element::tbody, Element::thead, Element::tfoot});
      insert(tag);
      mode_ = Mode::inRow;
      return Step::done;
    case Element::th:
    case Element::td:
      clearTo({Element::tbody, Element::thead, Element::tfoot});
      insertImplied(Element::tr);
      mode_ = Mode::inRow;
      return Step::again;
    case Element::caption:
    case Element::col:
    case Element::colgroup:
    case Element::tbody:
    case Element::tfoot:
    case Element::thead:
      return closeTableBody() ? Step::again : Step::done;
    default:
      return startInTable(tag);
  }
}

TreeBuilder::Step TreeBuilder::endInTableBody(NameNumber name) {
  switch (static_cast<Element>(name)) {
    case Element::tbody:
    case Element::tfoot:
    case Element::thead:
      if (!open_.inTableScope(open_.newestNamed(name))) return Step::done;
      closeTableBody();
      return Step::done;
    case Element::table:
      return closeTableBody() ? Step::again : Step::done;
    case Element::td:
    case Element::th:
    case Element::tr:
      return Step::done;
    default:
      return kOuterEnds.contains(name) ? Step::done : endInTable(name);
  }
}

bool TreeBuilder::closeRow() {
  if (!open_.inTableScope(Element::tr)) return false;
  clearTo({Element::tr});
  pop();
  mode_ = Mode::inTableBody;
  return true;
}

TreeBuilder::Step TreeBuilder::startInRow(const TagToken& tag) {
  switch (static_cast<Element>(tag.name)) {
    case Element::th:
    case Element::td:
      clearTo({Element::tr});
      insert(tag);
      mode_ = Mode::inCell;
      formatting_.pushMarker();
      return Step::done;
    case Element::caption:
    case Element::col:
    case Element::colgroup:
    case Element::tbody:
    case Element::tfoot:
    case Element::thead:
    case Element::tr:
      return closeRow() ? Step::again : Step::done;
    default:
      return startInTable(tag);
  }
}

TreeBuilder::Step TreeBuilder::endInRow(NameNumber name) {
  switch (static_cast<Element>(name)) {
    case Element::tr:
      closeRow();
      return Step::done;
    case Element::table:
      return closeRow() ? Step::again : Step::done;
    case Element::tbody:
    case Element::tfoot:
    case Element::thead:
      if (!open_.inTableScope(open_.newestNamed(name))) return Step::done;
      return closeRow() ? Step::again : Step::done;
    case Element::td:
    case Element::th:
      return Step::done;
    default:
      return kOuterEnds.contains(name) ? Step::done : endInTable(name);
  }
}

void TreeBuilder::closeCell() {
  generateImpliedEnds();
  popTo(open_.newestOfAny({Element::td, Element::th}));
  clearToMarker();
  mode_ = Mode::inRow;
}

TreeBuilder::Step TreeBuilder::startInCell(const TagToken& tag) {
  if (!kTableStructure.contains(tag.name)) return startInBody(tag);
  if (!open_.inTableScope(open_.newestOfAny({Element::td, Element::th}))) return Step::done;
  closeCell();
  return Step::again;
}

TreeBuilder::Step TreeBuilder::endInCell(NameNumber name) {
  switch (static_cast<Element>(name)) {
    case Element::td:
    case Element::th:
      if (!open_.inTableScope(open_.newestNamed(name))) return Step::done;
      generateImpliedEnds();
      popTo(open_.newestNamed(name));
      clearToMarker();
      mode_ = Mode::inRow;
      return Step::done;
    case Element::table:
    case Element::tbody:
    case Element::tfoot:
    case Element::thead:
    case Element::tr:
      if (!open_.inTableScope(open_.newestNamed(name))) return Step::done;
      closeCell();
      return Step::again;
    default:
      return kOuterEnds.contains(name) ? Step::done : endInBody(name);
  }
}

// What comes first tells as the content of which element a template is read.
TreeBuilder::Step TreeBuilder::startInTemplate(const TagToken& tag) {
  Mode mode = Mode::inBody;
  switch (static_cast<Element>(tag.name)) {
    case Element::caption:
    case Element::colgroup:
    case Element::tbody:
    case Element::tfoot:
    case Element::thead:
      mode = Mode::inTable;
      break;
    case Element::col:
      mode = Mode::inColumnGroup;
      break;
    case Element::tr:
      mode = Mode::inTableBody;
      break;
    case Element::td:
    case Element::th:
      mode = Mode::inRow;
      break;
    default:
      if (startHeadContent(tag)) return Step::done;
      break;
  }
  templateModes_.back() = mode;
  mode_ = mode;
  return Step::again;
}

}  // namespace pagescan::internal
