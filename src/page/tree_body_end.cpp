// End tags in the body, and the adoption agency (HTML Standard, 13.2.6.4.7).
#include <utility>

#include "page/body_rules.h"
#include "page/tree_builder.h"

namespace pagescan::internal {

TreeBuilder::Step TreeBuilder::endInBody(NameNumber name) {
  const EndRule rule = name < kElementCount ? kEndRules[name] : EndRule::other;
  switch (rule) {
    case EndRule::other:
      endOther(name);
      break;
    case EndRule::formatting:
      adopt(name);
      break;
    case EndRule::block:
      endBlock(name);
      break;
    case EndRule::p:
      endP();
      break;
    case EndRule::listItem:
      endListItem(name);
      break;
    case EndRule::form:
      endForm();
      break;
    case EndRule::heading:
      endHeading();
      break;
    case EndRule::marker:
      if (!open_.inScope(open_.newestNamed(name))) break;
      endBlock(name);
      clearToMarker();
      break;
    case EndRule::template_:
      endTemplate();
      break;
    case EndRule::body:
    case EndRule::html:
      if (!open_.inScope(Element::body)) break;
      mode_ = Mode::afterBody;
      return rule == EndRule::html ? Step::again : Step::done;
    case EndRule::br:
      reconstruct();
      framesetOk_ = false;
      break;
  }
  return Step::done;
}

void TreeBuilder::endBlock(NameNumber name) {
  if (!open_.inScope(open_.newestNamed(name))) return;
  generateImpliedEnds();
  popTo(open_.newestNamed(name));
}

void TreeBuilder::endP() {
  if (open_.inButtonScope(Element::p)) closeP();
}

void TreeBuilder::endListItem(NameNumber name) {
  const bool inScope = name == id(Element::li) ? open_.inListScope(Element::li)
                                               : open_.inScope(open_.newestNamed(name));
  if (!inScope) return;
  generateImpliedEnds(name);
  popTo(open_.newestNamed(name));
}

// Outside of templates the form that is open need not be the one that the pointer means, and what
// is open in it stays open.
void TreeBuilder::endForm() {
  if (open_.isOpen(Element::template_)) return endBlock(id(Element::form));
  const std::uint32_t slot = std::exchange(open_.form, kNone);
  if (slot == OpenElements::kFormClosed || !open_.inScope(slot)) return;
  generateImpliedEnds();
  open_.remove(slot);
}

void TreeBuilder::endHeading() {
  const std::uint32_t slot = open_.newestOfAny(
      {Element::h1, Element::h2, Element::h3, Element::h4, Element::h5, Element::h6});
  if (!open_.inScope(slot)) return;
  generateImpliedEnds();
  popTo(open_.newestOfAny(
      {Element::h1, Element::h2, Element::h3, Element::h4, Element::h5, Element::h6}));
}

// "Any other end tag": the newest element of the name, unless a special one stands above it.
void TreeBuilder::endOther(NameNumber name) {
  // A formatting element before the last marker may be in a run.
  if (formatting_.hasRuns() && name < kElementCount && formatting_.holds(name)) {
    spreadRunsAbove(open_.nearestSpecial());
  }
  const std::uint32_t slot = open_.newestNamed(name);
  if (slot == kNone || slot < open_.nearestSpecial()) return;
  popTo(slot);
}

// The adoption agency algorithm. True when it put another element in the place of the formatting
// element.
bool TreeBuilder::adopt(NameNumber name) {
  const OpenElement& current = open_.current();
  if (current.name == name && current.space == Namespace::html && current.formatting == kNone) {
    pop();
    return false;
  }
  constexpr int kMostRounds = 8;
  for (int round = 0; round < kMostRounds; ++round) {
    if (!adoptOnce(name)) return round > 0;
  }
  return true;
}

// One round of its outer loop; false when it was the last one.
bool TreeBuilder::adoptOnce(NameNumber name) {
  const std::uint32_t node = formatting_.lastNamed(name);
  if (node == kNone) {
    endOther(name);
    return false;
  }
  const std::uint32_t slot = slotOf(node);
  if (slot == kNone) {
    removeFormatting(node);
    return false;
  }
  if (!open_.inScope(slot)) return false;
  if (furthestBlock(slot) == kNone) {
    closeFormatting(node);
    formatting_.remove(node);
    return false;
  }
  if (formatting_.hasRuns()) {
    if (formatting_.runOf(node) != nullptr) spreadRunFrom(node);
    spreadRunsAbove(formatting_.at(node).slot);
  }
  liftFormatting(node, furthestBlock(formatting_.at(node).slot));
  return true;
}

// The special element next above an open one, or kNone.
std::uint32_t TreeBuilder::furthestBlock(std::uint32_t slot) const {
  std::uint32_t block = open_.above(slot);
  while (block != kNone && !open_.at(block).has(kSpecial)) block = open_.above(block);
  return block;
}

// Of the elements between the formatting element and the furthest block, those stay that are in
// the list, the three nearest to the block at most; the others close.
void TreeBuilder::liftFormatting(std::uint32_t node, std::uint32_t block) {
  constexpr std::size_t kMostKept = 3;
  const std::uint32_t formatting = formatting_.at(node).slot;
  std::uint32_t kept[kMostKept];
  std::size_t keptCount = 0;
  std::uint32_t bookmark = kNone;
  std::size_t walked = 0;
  for (std::uint32_t slot = open_.at(block).below; slot != formatting;) {
    const std::uint32_t below = open_.at(slot).below;
    std::uint32_t own = open_.at(slot).formatting;
    if (++walked > kMostKept && own != kNone) {
      formatting_.at(own).slot = slot;
      formatting_.remove(own);
      own = kNone;
    }
    if (own == kNone) {
      open_.remove(slot);
    } else {
      if (keptCount == 0) bookmark = own;
      kept[kMostKept - 1 - keptCount++] = slot;
    }
    slot = below;
  }
  std::uint32_t* const first = kept + kMostKept - keptCount;
  std::uint32_t newSlots[kMostKept];
  open_.lift(formatting, block, first, keptCount, newSlots);
  for (std::size_t i = 0; i < keptCount; ++i) {
    formatting_.at(open_.at(newSlots[i]).formatting).slot = newSlots[i];
  }
  formatting_.at(node).slot = block;
  open_.at(block).formatting = node;
  // Right after the first one that stays, if it stays directly below the block.
  if (bookmark != kNone) formatting_.moveAfter(node, bookmark);
}

}  // namespace pagescan::internal
