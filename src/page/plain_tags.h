// The rows of plain tags: those that, in most of a page, do nothing but open an element, or make
// one that is never open. Nearly all tags are such, and a row tells all about them.
//
//   <li>   in body, cell, caption; where no p is open and the current node is a ul, say:
//          an element opens
//   <img>  ... where no formatting element waits to be reopened: an element without content
//
// Where a row does not hold, and for tags without one, the rules of the insertion modes decide;
// they would come to the same where it does.
#ifndef PAGESCAN_PAGE_PLAIN_TAGS_H
#define PAGESCAN_PAGE_PLAIN_TAGS_H

#include "base/unchecked.h"
#include "page/body_rules.h"
#include "page/element_traits.h"
#include "page/insertion_mode.h"
#include "page/raw_text.h"

namespace pagescan::internal {

// The modes that leave what is not about their table to "in body".
inline constexpr InsertionModes kBodyModes = {InsertionMode::inBody, InsertionMode::inCell,
                                              InsertionMode::inCaption};

struct PlainTag {
  InsertionModes modes = {};     // where the row holds
  ElementTraits notUnder = 0;    // not under a current node with one of these
  ElementTraits traits = 0;      // of the element
  bool endsP = false;            // not where a p is open
  bool reopens = false;          // not where formatting elements wait to be reopened
  bool isFormatting = false;     // not where the list has one of the name
  bool hasContent = false;       // it stays open
  bool leavesFramesetOk = true;  // it does not show anything
  ContentState content = ContentState::data;
};

constexpr PlainTag plainBodyTag(Element element) {
  PlainTag row;
  row.modes = kBodyModes;
  row.traits = htmlTraits(element);
  row.notUnder = kForeign;
  return row;
}

// Elements in the head, and all their text: never open.
constexpr PlainTag plainHeadTag(Element element) {
  PlainTag row;
  if (element == Element::template_) return row;
  row = plainBodyTag(element);
  row.modes = {InsertionMode::inBody, InsertionMode::inCell, InsertionMode::inCaption,
               InsertionMode::inHead};
  if (element == Element::script) row.content = ContentState::script;
  if (element == Element::title) row.content = ContentState::rcdata;
  if (element == Element::style || element == Element::noframes) {
    row.content = ContentState::rawtext;
  }
  return row;
}

constexpr PlainTag plainTag(Element element) {
  PlainTag row = plainBodyTag(element);
  row.hasContent = true;
  switch (kStartRules[id(element)]) {
    case StartRule::ordinary:
      row.reopens = true;
      return row;
    case StartRule::formatting:
    case StartRule::a:
      row.reopens = row.isFormatting = true;
      return row;
    case StartRule::block:
      row.endsP = true;
      return row;
    case StartRule::heading:
      row.endsP = true;
      row.notUnder |= kHeading;
      return row;
    case StartRule::listItem:
      row.endsP = true;
      row.notUnder |= kPassesItems | kRun;
      row.leavesFramesetOk = false;
      return row;
    case StartRule::void_:
      row.reopens = true;
      row.hasContent = row.leavesFramesetOk = false;
      return row;
    case StartRule::voidPlain:
      row.hasContent = false;
      return row;
    case StartRule::head:
      return plainHeadTag(element);
    default:
      return {};
  }
}

// By name; the row of kUnknownName holds for all names that are not in it.
struct PlainTagTable {
  constexpr PlainTagTable() {
    for (NameId name = 0; name < kElementCount; ++name) {
      rows[name] = plainTag(static_cast<Element>(name));
    }
  }
  const PlainTag& of(std::uint32_t name) const {
    return unchecked(rows, name < kElementCount ? name : kUnknownName);
  }

  std::array<PlainTag, kElementCount> rows;
};
inline constexpr PlainTagTable kPlainTags;

}  // namespace pagescan::internal

#endif
