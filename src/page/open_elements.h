// The stack of open elements (HTML Standard, 13.2.4.2), in which no question costs a walk.
//
//   slot      0     1     2     3     4     5
//            html  body   b     x    div   div       `above` and `below` link the open ones;
//                               |                    a slot in the middle that closed stays unused
//   </b> takes b above the first div. x closes, div takes the slot of b, b that of div:
//            html  body  div           b   div
//
// - An open element has a slot; later ones have higher slots. Removal from the middle leaves a
// hole,
//   so slots above it stay valid.
// - The newest open element of a name is known, and from each the one before it of the same name,
//   so that "is in scope" compares two slots.
// - Each element knows the nearest at or below it that ends a scope, that is special, that ends the
//   search for a list item, and (of foreign elements) that is HTML. The last three may point at a
//   slot whose element has gone: then that slot's own answer is the answer.
// Costs are amortised constant; memory is linear in the depth.
#ifndef PAGESCAN_PAGE_OPEN_ELEMENTS_H
#define PAGESCAN_PAGE_OPEN_ELEMENTS_H

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "page/element_traits.h"

namespace pagescan::internal {

inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

// The name of an open element: a NameId, or above those a number of UnknownNames.
using NameNumber = std::uint32_t;

struct OpenElement {
  std::uint32_t begin;  // of its start tag; of an implied one, of the token that implied it
  NameNumber name;
  Namespace space;
  std::uint8_t note;
  ElementTraits traits;
  std::uint32_t below, above;
  std::uint32_t olderNamesake, newerNamesake;
  std::uint32_t scopeLimit, special, itemLimit;
  std::uint32_t html;        // of a foreign element: the nearest HTML element below
  std::uint32_t formatting;  // its node in the list of active formatting elements, or kNone

  bool is(Element element) const { return name == id(element) && space == Namespace::html; }
  bool has(ElementTraits trait) const { return (traits & trait) != 0; }
};

class OpenElements {
 public:
  // nameCount  the numbers of names that are known beforehand
  explicit OpenElements(std::size_t nameCount);

  bool empty() const { return top_ == kNone; }
  std::uint32_t top() const { return top_; }
  OpenElement& at(std::uint32_t slot) { return entries_[slot]; }
  const OpenElement& at(std::uint32_t slot) const { return entries_[slot]; }
  OpenElement& current() { return entries_[top_]; }
  const OpenElement& current() const { return entries_[top_]; }

  // Makes room for names below `count`.
  void reserveNames(std::size_t count);

  // Opens an element above all others and returns its slot.
  std::uint32_t push(Namespace space, NameNumber name, std::uint32_t begin, ElementTraits traits) {
    const std::uint32_t slot = top_ + 1;  // 0 in an empty stack
    if (slot == entries_.size()) entries_.resize(2 * entries_.size());
    OpenElement& entry = entries_[slot];
    entry.begin = begin;
    entry.name = name;
    entry.space = space;
    entry.note = 0;
    entry.traits = traits;
    entry.below = top_;
    entry.above = kNone;
    entry.formatting = kNone;
    if ((traits & kRun) == 0) {
      std::uint32_t& newest = newestOf(space, name);
      entry.olderNamesake = newest;
      entry.newerNamesake = kNone;
      if (newest != kNone) entries_[newest].newerNamesake = slot;
      newest = slot;
    }
    entry.scopeLimit = entry.special = entry.itemLimit = entry.html = slot;
    if (top_ != kNone) {
      OpenElement& below = entries_[top_];
      below.above = slot;
      if ((traits & kScopeLimit) == 0) entry.scopeLimit = below.scopeLimit;
      if ((traits & kSpecial) == 0) entry.special = below.special;
      if ((traits & kItemLimit) == 0) entry.itemLimit = below.itemLimit;
      if (space != Namespace::html) entry.html = below.html;
    }
    top_ = slot;
    return slot;
  }

  void pop() {
    const OpenElement& entry = entries_[top_];
    unlinkNamesake(entry);
    if (entry.has(kPopHook)) noteClosed(top_);
    top_ = entry.below;
    if (top_ != kNone) entries_[top_].above = kNone;
  }

  // Closes an element in the middle.
  void remove(std::uint32_t slot);

  // Takes this element and all above it off, to be pushed again; from the lowest to the highest.
  std::vector<OpenElement> takeFrom(std::uint32_t slot);

  // The newest open element of a name, or kNone.
  std::uint32_t newest(Element element) const { return newestHtml_[id(element)]; }
  std::uint32_t newestNamed(NameNumber name) const {
    return name < newestHtml_.size() ? newestHtml_[name] : kNone;
  }
  std::uint32_t newestForeign(NameNumber name) const {
    return name < newestForeign_.size() ? newestForeign_[name] : kNone;
  }
  bool isOpen(Element element) const { return newest(element) != kNone; }
  // Whether one is open that does not begin at `tag`, as the newest may.
  bool isOpenAround(Element element, std::uint32_t tag) const {
    const std::uint32_t slot = newest(element);
    return slot != kNone && (at(slot).begin != tag || at(slot).olderNamesake != kNone);
  }

  std::uint32_t newestOfAny(std::initializer_list<Element> elements) const {
    std::uint32_t found = 0;  // one more than the slot
    for (const Element element : elements) found = std::max(found, newest(element) + 1);
    return found - 1;
  }

  // Whether an open element, or kNone, is in the scope (13.2.4.2).
  bool inScope(std::uint32_t slot) const {
    return slot != kNone && slot >= entries_[top_].scopeLimit;
  }
  bool inScope(Element element) const { return inScope(newest(element)); }
  bool inButtonScope(Element element) const {
    const std::uint32_t slot = newest(element);
    return inScope(slot) && isAbove(slot, Element::button);
  }
  bool inListScope(Element element) const {
    const std::uint32_t slot = newest(element);
    return inScope(slot) && isAbove(slot, Element::ol) && isAbove(slot, Element::ul);
  }
  bool inTableScope(std::uint32_t slot) const {
    return slot != kNone && isAbove(slot, Element::table) && isAbove(slot, Element::template_);
  }
  bool inTableScope(Element element) const { return inTableScope(newest(element)); }

  // The nearest open element at or below the current one that is special; that ends the search for
  // a list item; that is HTML.
  std::uint32_t nearestSpecial() { return nearest(&OpenElement::special, top_); }
  std::uint32_t nearestItemLimit() { return nearest(&OpenElement::itemLimit, top_); }
  std::uint32_t nearestHtml() { return nearest(&OpenElement::html, top_); }

  // What the adoption agency does to the stack: `formatting` goes to just above `block`; of the
  // elements between them the `kept` ones stay, in ascending order, all others were removed.
  // Returns the new slot of `block`; that of `formatting` is the old one of `block`.
  std::uint32_t lift(std::uint32_t formatting, std::uint32_t block, const std::uint32_t* kept,
                     std::size_t keptCount, std::uint32_t* newSlots);

  // The form element pointer follows its element about.
  static constexpr std::uint32_t kFormClosed = kNone - 1;  // set, but no longer open
  std::uint32_t form = kNone;

  // Starts of the svg:style elements that closed since the last call of takeClosedStyles.
  bool hasClosedStyles() const { return !closedStyles_.empty(); }
  std::vector<std::uint32_t> takeClosedStyles() { return std::exchange(closedStyles_, {}); }

 private:
  std::uint32_t& newestOf(Namespace space, NameNumber name) {
    return space == Namespace::html ? newestHtml_[name] : newestForeign_[name];
  }
  // Whether `slot` is at or above the newest open element of a name.
  bool isAbove(std::uint32_t slot, Element element) const {
    return slot + 1 >= newest(element) + 1;
  }

  void unlinkNamesake(const OpenElement& entry) {
    if (entry.has(kRun)) return;
    if (entry.newerNamesake == kNone) {
      newestOf(entry.space, entry.name) = entry.olderNamesake;
    } else {
      entries_[entry.newerNamesake].olderNamesake = entry.olderNamesake;
    }
    if (entry.olderNamesake != kNone) {
      entries_[entry.olderNamesake].newerNamesake = entry.newerNamesake;
    }
  }

  using Link = std::uint32_t OpenElement::*;
  std::uint32_t nearest(Link link, std::uint32_t from) {
    std::uint32_t found = entries_[from].*link;
    while (entries_[found].*link != found) found = entries_[found].*link;
    // Later questions go there at once.
    for (std::uint32_t slot = from; entries_[slot].*link != found;) {
      const std::uint32_t next = entries_[slot].*link;
      entries_[slot].*link = found;
      slot = next;
    }
    return found;
  }

  void noteClosed(std::uint32_t slot);
  void relocate(std::uint32_t from, std::uint32_t to, std::uint32_t special,
                std::uint32_t itemLimit);

  std::vector<OpenElement> entries_;  // those above the top are free
  std::uint32_t top_ = kNone;
  std::vector<std::uint32_t> newestHtml_;     // by name
  std::vector<std::uint32_t> newestForeign_;  // of SVG and MathML together
  std::vector<std::uint32_t> closedStyles_;
};

}  // namespace pagescan::internal

#endif
