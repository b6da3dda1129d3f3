// The list of active formatting elements and the stack together (HTML Standard, 13.2.4.3).
//
// Reopening many formatting elements, over and over, is the one place where the standard makes more
// elements than the page has tags. From some number on they go onto the stack as one entry, a run,
// which looks like its last element. What has to tell the elements of a run apart (an end tag in
// the middle of it that a block has to be taken out of, say) spreads it into single entries first,
// from the element on that it asks for.
#include "page/tree_builder.h"

namespace pagescan::internal {

// "Reconstruct the active formatting elements", where there are some to open.
void TreeBuilder::reopen() {
  std::uint32_t first = formatting_.last();
  for (;;) {
    if (formatting_.at(first).endsRun) first = formatting_.runOf(first)->first;
    const std::uint32_t earlier = formatting_.at(first).earlier;
    if (earlier == kNone || formatting_.isMarker(earlier)) break;
    if (formatting_.at(earlier).slot != kNone) break;
    first = earlier;
  }
  formatting_.dissolveRuns(first);
  // nobr is looked for in the stack itself, so it stays out of runs.
  std::vector<std::uint32_t> apart;
  for (std::uint32_t node = formatting_.lastNamed(id(Element::nobr));
       node != kNone && formatting_.at(node).order >= formatting_.at(first).order;
       node = formatting_.at(node).earlierNamesake) {
    apart.push_back(node);
  }
  for (; !apart.empty(); apart.pop_back()) {
    const std::uint32_t node = apart.back();
    if (node != first) reopenStretch(first, formatting_.at(node).earlier);
    pushFormatting(node);
    first = formatting_.at(node).later;
  }
  if (first != kNone) reopenStretch(first, formatting_.last());
}

// As one run, if they are many.
void TreeBuilder::reopenStretch(std::uint32_t first, std::uint32_t last) {
  std::uint32_t count = 1;
  for (std::uint32_t node = first; node != last && count < options_.fewestInRun; ++count) {
    node = formatting_.at(node).later;
  }
  if (count >= options_.fewestInRun) {
    pushRun(last);
    return formatting_.setRun(first, last);
  }
  for (std::uint32_t node = first;; node = formatting_.at(node).later) {
    pushFormatting(node);
    if (node == last) return;
  }
}

void TreeBuilder::pushFormatting(std::uint32_t node) {
  FormattingNode& entry = formatting_.at(node);
  entry.slot = pushHtml(entry.name, entry.begin);
  open_.at(entry.slot).note = entry.note;
  open_.at(entry.slot).formatting = node;
}

// The entry of a run that ends with `last`.
void TreeBuilder::pushRun(std::uint32_t last) {
  FormattingNode& entry = formatting_.at(last);
  entry.slot = open_.pushRun(entry.name, entry.begin);
  open_.at(entry.slot).note = entry.note;
  open_.at(entry.slot).formatting = last;
}

void TreeBuilder::clearToMarker() {
  while (formatting_.last() != kNone) {
    const std::uint32_t node = formatting_.last();
    if (formatting_.isMarker(node)) return formatting_.removeMarker();
    removeFormatting(node);
  }
}

// Takes an element out of the list; open, it stays so.
void TreeBuilder::removeFormatting(std::uint32_t node) {
  if (const FormattingRun* run = formatting_.runOf(node)) {
    if (formatting_.isOpen(*run)) {
      spreadRunFrom(node);
    } else {
      formatting_.splitRun(node, true);
    }
  }
  formatting_.remove(node);
}

// Where an element of the list is open, alone or in a run, or kNone.
std::uint32_t TreeBuilder::slotOf(std::uint32_t node) {
  const FormattingRun* run = formatting_.runOf(node);
  return formatting_.at(run == nullptr ? node : run->last).slot;
}

// Closes an open element of the list with all above it.
void TreeBuilder::closeFormatting(std::uint32_t node) {
  const FormattingRun* run = formatting_.runOf(node);
  const std::uint32_t slot = slotOf(node);
  const bool leavesSome = run != nullptr && run->first != node;
  popTo(slot);
  if (run == nullptr) return;
  formatting_.splitRun(node, true);
  // What is left of the run stays open.
  if (leavesSome) pushRun(formatting_.at(node).earlier);
}

// Gives each element of an open run, from `node` on, an entry of its own. What stands above the run
// is pushed again. Slots change; nothing opens or closes.
void TreeBuilder::spreadRunFrom(std::uint32_t node) {
  const FormattingRun run = *formatting_.runOf(node);
  const std::uint32_t form = open_.form;
  const std::uint32_t slot = formatting_.at(run.last).slot;
  std::vector<std::uint32_t> slots;  // of what was above
  for (std::uint32_t at = slot; at != kNone; at = open_.above(at)) slots.push_back(at);
  const std::vector<OpenElement> taken = open_.takeFrom(slot);
  formatting_.at(run.last).slot = kNone;
  formatting_.splitRun(node, false);
  if (node != run.first) pushRun(formatting_.at(node).earlier);
  for (std::uint32_t at = node;; at = formatting_.at(at).later) {
    pushFormatting(at);
    if (at == run.last) break;
  }
  for (std::size_t i = 1; i < taken.size(); ++i) {
    const OpenElement& old = taken[i];
    const std::uint32_t pushed = old.has(kRun)
                                     ? open_.pushRun(old.name, old.begin)
                                     : open_.push(old.space, old.name, old.begin, old.traits);
    open_.at(pushed).note = old.note;
    open_.at(pushed).formatting = old.formatting;
    if (old.formatting != kNone) formatting_.at(old.formatting).slot = pushed;
    if (form == slots[i]) open_.form = pushed;
  }
}

// Spreads the runs between an open element and the special one next above it.
void TreeBuilder::spreadRunsAbove(std::uint32_t slot) {
  std::uint32_t below = slot;
  for (;;) {
    const std::uint32_t at = open_.above(below);
    if (at == kNone || open_.at(at).has(kSpecial)) return;
    if (open_.at(at).has(kRun)) spreadRunFrom(formatting_.runOf(open_.at(at).formatting)->first);
    below = open_.above(below);
  }
}

}  // namespace pagescan::internal
