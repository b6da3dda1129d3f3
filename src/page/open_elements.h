// The stack of open elements (HTML Standard, 13.2.4.2), in which no question costs a walk.
//
//   slot      1     2     3     4     5     6
//            html  body   b     x    div   div       `above` and `below` link the open ones;
//                               |                    a slot in the middle that closed stays unused
//   </b> takes b above the first div. x closes, div takes the slot of b, b that of div:
//            html  body  div           b   div
//
// - An open element has a slot; later ones have higher slots. Removal from the middle leaves a
//   hole, so slots above it stay valid.
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

#include "base/unchecked.h"
#include "page/element_traits.h"

namespace pagescan::internal {

// No slot, no node of the list of active formatting elements. There is an entry of this number,
// which is never open: what links would have to look for first, it takes.
inline constexpr std::uint32_t kNone = 0;

// The name of an open element: a NameId, or above those a number of UnknownNames.
using NameNumber = std::uint32_t;

struct alignas(64) OpenElement {
  std::uint32_t begin = 0;  // of its start tag; of an implied one, of the token that implied it
  NameNumber name = kUnknownName;
  ElementTraits traits = 0;
  Namespace space = Namespace::html;
  std::uint8_t note = 0;
  std::uint32_t below = kNone;
  std::uint32_t above = kNone;  // not of the top
  std::uint32_t olderNamesake = kNone;
  std::uint32_t newerNamesake = kNone;  // not of the newest
  std::uint32_t scopeLimit = kNone, special = kNone, itemLimit = kNone;
  std::uint32_t html = kNone;        // of a foreign element: the nearest HTML element below
  std::uint32_t formatting = kNone;  // its node in the list of active formatting elements

  bool is(Element element) const { return name == id(element) && space == Namespace::html; }
  bool has(ElementTraits trait) const { return (traits & trait) != 0; }
};

class OpenElements {
 public:
  // nameCount  the numbers of names that are known beforehand
  explicit OpenElements(std::size_t nameCount);

  bool empty() const { return top_ == kNone; }
  std::uint32_t top() const { return top_; }
  OpenElement& at(std::uint32_t slot) { return unchecked(entries_, slot); }
  const OpenElement& at(std::uint32_t slot) const { return unchecked(entries_, slot); }
  OpenElement& current() { return at(top_); }
  const OpenElement& current() const { return at(top_); }
  // The slot of the first element that was opened.
  static constexpr std::uint32_t kRoot = 1;
  // The open element next above another, or kNone.
  std::uint32_t above(std::uint32_t slot) const { return slot == top_ ? kNone : at(slot).above; }

  // Makes room for names below `count`.
  void reserveNames(std::size_t count);

  // Opens an element above all others and returns its slot.
  std::uint32_t push(Namespace space, NameNumber name, std::uint32_t begin, ElementTraits traits) {
    const std::uint32_t slot = pushUnnamed(space, name, begin, traits);
    std::uint32_t& newest = newestOf(space, name);
    at(slot).olderNamesake = newest;
    at(newest).newerNamesake = slot;
    newest = slot;
    return slot;
  }
  // The same for a run, which is no element of its name.
  std::uint32_t pushRun(NameNumber name, std::uint32_t begin) {
    return pushUnnamed(Namespace::html, name, begin, kRun);
  }

  void pop() {
    if (!current().has(kRun)) newestOf(current().space, current().name) = current().olderNamesake;
    if (current().has(kPopHook)) noteClosed(top_);
    top_ = current().below;
  }
  // The same, where it has neither kRun nor kPopHook.
  void popPlain() {
    newestOf(current().space, current().name) = current().olderNamesake;
    top_ = current().below;
  }

  // Closes an element in the middle.
  void remove(std::uint32_t slot);

  // Takes this element and all above it off, to be pushed again; from the lowest to the highest.
  std::vector<OpenElement> takeFrom(std::uint32_t slot);

  // The newest open element of a name, or kNone.
  std::uint32_t newest(Element element) const { return unchecked(newestHtml_, id(element)); }
  std::uint32_t newestNamed(NameNumber name) const {
    return name < newestHtml_.size() ? unchecked(newestHtml_, name) : kNone;
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
    std::uint32_t found = kNone;
    for (const Element element : elements) found = std::max(found, newest(element));
    return found;
  }

  // Whether an open element, or kNone, is in the scope (13.2.4.2).
  bool inScope(std::uint32_t slot) const { return slot >= current().scopeLimit; }
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
  static constexpr std::uint32_t kFormClosed = 0xFFFFFFFF;  // set, but no longer open
  std::uint32_t form = kNone;

  // Starts of the svg:style elements that closed since the last call of takeClosedStyles.
  bool hasClosedStyles() const { return !closedStyles_.empty(); }
  std::vector<std::uint32_t> takeClosedStyles() { return std::exchange(closedStyles_, {}); }

 private:
  std::uint32_t& newestOf(Namespace space, NameNumber name) {
    return unchecked(space == Namespace::html ? newestHtml_ : newestForeign_, name);
  }
  // Whether `slot` is at or above the newest open element of a name.
  bool isAbove(std::uint32_t slot, Element element) const { return slot >= newest(element); }

  // Without a branch: nothing tells beforehand which it will be.
  static std::uint32_t either(bool first, std::uint32_t a, std::uint32_t b) {
    return b ^ ((a ^ b) & (0U - static_cast<std::uint32_t>(first)));
  }

  std::uint32_t pushUnnamed(Namespace space, NameNumber name, std::uint32_t begin,
                            ElementTraits traits) {
    const std::uint32_t slot = top_ + 1;
    if (slot == entries_.size()) grow();
    OpenElement& below = at(top_);
    OpenElement& entry = at(slot);
    below.above = slot;
    entry.begin = begin;
    entry.name = name;
    entry.traits = traits;
    entry.space = space;
    entry.note = 0;
    entry.below = top_;
    entry.scopeLimit = (traits & kScopeLimit) != 0 ? slot : below.scopeLimit;
    entry.special = either((traits & kSpecial) != 0, slot, below.special);
    entry.itemLimit = either((traits & kItemLimit) != 0, slot, below.itemLimit);
    entry.html = space == Namespace::html ? slot : below.html;
    entry.formatting = kNone;
    top_ = slot;
    return slot;
  }

  // The open element of the same name that was opened next after it, or kNone.
  std::uint32_t newerNamesake(std::uint32_t slot) {
    return newestOf(at(slot).space, at(slot).name) == slot ? kNone : at(slot).newerNamesake;
  }
  void unlinkNamesake(std::uint32_t slot);

  using Link = std::uint32_t OpenElement::*;
  std::uint32_t nearest(Link link, std::uint32_t from) {
    std::uint32_t found = at(from).*link;
    while (at(found).*link != found) found = at(found).*link;
    // Later questions go there at once.
    for (std::uint32_t slot = from; at(slot).*link != found;) {
      const std::uint32_t next = at(slot).*link;
      at(slot).*link = found;
      slot = next;
    }
    return found;
  }

  void grow();
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
