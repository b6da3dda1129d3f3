#include "page/open_elements.h"

namespace pagescan::internal {

OpenElements::OpenElements(std::size_t nameCount)
    : entries_(64), newestHtml_(nameCount, kNone), newestForeign_(nameCount, kNone) {}

void OpenElements::reserveNames(std::size_t count) {
  if (count <= newestHtml_.size()) return;
  newestHtml_.resize(count, kNone);
  newestForeign_.resize(count, kNone);
}

void OpenElements::grow() {
  entries_.resize(2 * entries_.size());
}

void OpenElements::unlinkNamesake(std::uint32_t slot) {
  const OpenElement& entry = at(slot);
  if (entry.has(kRun)) return;
  const std::uint32_t newer = newerNamesake(slot);
  (newer == kNone ? newestOf(entry.space, entry.name) : at(newer).olderNamesake) =
      entry.olderNamesake;
  at(entry.olderNamesake).newerNamesake = newer;
}

// A removed slot answers for those who point at it with the answer of the element below.
void OpenElements::remove(std::uint32_t slot) {
  if (slot == top_) return pop();
  OpenElement& entry = entries_[slot];
  unlinkNamesake(slot);
  if (entry.has(kPopHook)) noteClosed(slot);
  const OpenElement& below = entries_[entry.below];
  entries_[entry.below].above = entry.above;
  entries_[entry.above].below = entry.below;
  entry.special = below.special;
  entry.itemLimit = below.itemLimit;
  entry.html = below.html;
}

void OpenElements::noteClosed(std::uint32_t slot) {
  if (form == slot) form = kFormClosed;
  const OpenElement& entry = entries_[slot];
  if (entry.has(kStyleText)) closedStyles_.push_back(entry.begin);
}

// What only closing does (the form pointer, the ends of svg:style) is left out.
std::vector<OpenElement> OpenElements::takeFrom(std::uint32_t slot) {
  std::vector<OpenElement> taken;
  while (top_ >= slot) {
    taken.push_back(entries_[top_]);
    unlinkNamesake(top_);
    top_ = entries_[top_].below;
  }
  std::reverse(taken.begin(), taken.end());
  return taken;
}

// Moves an element down to a free slot. `special` and `itemLimit` are the nearest ones below it.
void OpenElements::relocate(std::uint32_t from, std::uint32_t to, std::uint32_t special,
                            std::uint32_t itemLimit) {
  OpenElement& entry = entries_[to] = entries_[from];
  entry.special = entry.has(kSpecial) ? to : special;
  entry.itemLimit = entry.has(kItemLimit) ? to : itemLimit;
  entry.html = to;
  if (from == to) return;
  const std::uint32_t newer = newerNamesake(from);
  (newer == kNone ? newestOf(entry.space, entry.name) : entries_[newer].olderNamesake) = to;
  entries_[entry.olderNamesake].newerNamesake = to;
  if (form == from) form = to;
}

std::uint32_t OpenElements::lift(std::uint32_t formatting, std::uint32_t block,
                                 const std::uint32_t* kept, std::size_t keptCount,
                                 std::uint32_t* newSlots) {
  OpenElement lifted = entries_[formatting];
  const std::uint32_t below = lifted.below;
  const std::uint32_t above = this->above(block);
  const std::uint32_t special = nearest(&OpenElement::special, formatting);
  const std::uint32_t itemLimit = nearest(&OpenElement::itemLimit, formatting);
  std::uint32_t newer = newerNamesake(formatting);
  unlinkNamesake(formatting);
  while (newer != kNone && newer <= block) newer = newerNamesake(newer);

  std::uint32_t lower = below;
  const auto place = [&](std::uint32_t from, std::uint32_t slot) {
    relocate(from, slot, special, itemLimit);
    entries_[slot].below = lower;
    entries_[lower].above = slot;
    lower = slot;
  };
  // From the lowest free slot up, so that none is overwritten that is still to move.
  std::uint32_t to = formatting;
  for (std::size_t i = 0; i < keptCount; ++i) {
    newSlots[i] = to;
    place(kept[i], to++);
  }
  const std::uint32_t blockSlot = to;
  place(block, blockSlot);

  lifted.special = entries_[blockSlot].special;
  lifted.itemLimit = entries_[blockSlot].itemLimit;
  lifted.html = block;
  lifted.below = blockSlot;
  lifted.above = above;
  lifted.newerNamesake = newer;
  std::uint32_t& upper =
      newer == kNone ? newestOf(lifted.space, lifted.name) : entries_[newer].olderNamesake;
  lifted.olderNamesake = upper;
  upper = block;
  entries_[lifted.olderNamesake].newerNamesake = block;
  entries_[block] = lifted;
  entries_[blockSlot].above = block;
  if (above == kNone) {
    top_ = block;
  } else {
    entries_[above].below = block;
  }
  return blockSlot;
}

}  // namespace pagescan::internal
