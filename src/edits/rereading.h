// Compares what stands in a changed page with what should: the proof of every edit.
#ifndef PAGESCAN_EDITS_REREADING_H
#define PAGESCAN_EDITS_REREADING_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "edits/changes.h"
#include "page/names.h"
#include "pagescan/edits.h"
#include "pagescan/page.h"

namespace pagescan::internal {

// What is wrong with a change, by its index; the first reason of several in the order of the
// enumeration.
using Blame = std::vector<std::optional<EditRefusal>>;

// Compares a page or a style sheet before and after. `Document` is Page or StyleSheet.
template <typename Document>
class Rereading {
 public:
  // values   what the changes of references were to write, by change
  Rereading(const Document& before, const Document& after, const Changes& changes,
            const std::vector<const std::string*>& values)
      : before_(before),
        after_(after),
        changes_(changes),
        values_(values),
        blame_(changes.all().size()),
        changeOf_(before.references().size(), kNoChange) {
    for (std::size_t i = 0; i < blame_.size(); ++i) {
      const std::size_t reference = changes.all()[i].reference;
      if (reference != kNoReference) changeOf_[reference] = i;
    }
  }

  // Returns the changes that something is wrong with.
  Blame compare() {
    if (before_.encoding() != after_.encoding()) {
      return Blame(blame_.size(), EditRefusal::changesEncoding);
    }
    const std::vector<Reference>& olds = before_.references();
    const std::vector<Reference>& news = after_.references();
    std::size_t old = 0;
    std::size_t fresh = 0;
    while (old < olds.size() || fresh < news.size()) {
      const Place want = old < olds.size() ? placeOf(old) : kNowhere;
      const Place have = fresh < news.size() ? placeAt(news[fresh].span) : kNowhere;
      if (want == have) {
        if (!isSame(old, news[fresh])) blameReference(old);
        ++old;
        ++fresh;
      } else if (have < want) {
        if (!isInByteEdit(news[fresh].span)) blameAt(news[fresh].span.begin);
        ++fresh;
      } else {
        if (!changes_.touches(olds[old].span)) blameReference(old);
        ++old;
      }
    }
    return blame_;
  }

 private:
  using Place = std::pair<std::int64_t, std::int64_t>;  // begin and end
  static constexpr Place kNowhere = {INT64_MAX, INT64_MAX};
  static constexpr std::size_t kNoChange = static_cast<std::size_t>(-1);

  static Place placeAt(Span span) { return {span.begin, span.end}; }

  // Where a reference should stand afterwards.
  Place placeOf(std::size_t old) const {
    if (changeOf_[old] != kNoChange) return placeAt(changes_.valueAfter(changeOf_[old]));
    const Span span = before_.references()[old].span;
    const std::int64_t begin = changes_.beginAfter(span.begin);
    return {begin, std::max(begin, changes_.endAfter(span.end))};
  }

  // Whether a reference has become this one, as it should.
  bool isSame(std::size_t old, const Reference& fresh) const {
    const Reference& reference = before_.references()[old];
    const bool isMoved =
        changes_.beginAfter(reference.tag) == fresh.tag &&
        (reference.parent == kNoParent ? fresh.parent == kNoParent
                                       : changes_.beginAfter(reference.parent) == fresh.parent);
    const bool isSamePlace = isMoved && reference.element == fresh.element &&
                             reference.attribute == fresh.attribute && reference.slot == fresh.slot;
    if (!isSamePlace) return false;
    // The kind may follow the value: "#a" is a fragment.
    if (changeOf_[old] != kNoChange) return after_.value(fresh) == *values_[changeOf_[old]];
    if (reference.kind != fresh.kind || reference.flags != fresh.flags) return false;
    const bool isPlain = reference.attribute != kUnknownName;  // its bytes alone tell its value
    if (isPlain && before_.raw(reference) == after_.raw(fresh)) return true;
    return before_.value(reference) == after_.value(fresh);
  }

  bool isInByteEdit(Span span) const {
    const std::size_t change = changes_.nearest(span.begin);
    if (changes_.all()[change].reference != kNoReference) return false;
    const Span bytes = changes_.bytesAfter(change);
    return bytes.begin <= span.begin && span.end <= bytes.end;
  }

  void blameReference(std::size_t old) {
    if (changeOf_[old] != kNoChange) return blameFor(changeOf_[old], EditRefusal::split);
    const std::int64_t begin = changes_.beginAfter(before_.references()[old].span.begin);
    blameAt(static_cast<std::uint32_t>(begin));
  }
  void blameAt(std::uint32_t offsetAfter) {
    blameFor(changes_.nearest(offsetAfter), EditRefusal::changesOthers);
  }
  void blameFor(std::size_t change, EditRefusal reason) {
    blame_[change] = std::min(blame_[change].value_or(reason), reason);
  }

  const Document& before_;
  const Document& after_;
  const Changes& changes_;
  const std::vector<const std::string*>& values_;
  Blame blame_;
  std::vector<std::size_t> changeOf_;  // by reference
};

}  // namespace pagescan::internal

#endif
