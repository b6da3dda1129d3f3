// The list of active formatting elements (HTML Standard, 13.2.4.3).
//
// A doubly linked list of nodes with stable numbers. Nodes of one name are linked once more, so
// that "the last element of this name after the last marker" costs nothing. The three-of-a-kind
// rule ("Noah's Ark") compares attributes only where three elements of a name stand after the
// marker; then each gets the number of its kind, once. Costs are amortised constant, but for kinds:
// there, the logarithm of their count times the length of the tag.
#ifndef PAGESCAN_PAGE_FORMATTING_LIST_H
#define PAGESCAN_PAGE_FORMATTING_LIST_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "page/open_elements.h"
#include "page/tag_scanner.h"

namespace pagescan::internal {

struct alignas(64) FormattingNode {
  std::uint32_t begin = 0;         // of its start tag
  NameNumber name = kUnknownName;  // that one for a marker
  std::uint32_t slot = kNone;      // in the stack of open elements; of a marker, any
  std::uint32_t segment = 0;       // markers before it
  std::uint64_t order = 0;         // grows along the list
  std::uint32_t earlier = kNone, later = kNone;
  std::uint32_t earlierNamesake = kNone, laterNamesake = kNone;
  std::uint32_t kind = kNone;  // kNone: not asked for yet
  std::uint32_t earlierOfKind = kNone, laterOfKind = kNone;
  std::uint8_t note = 0;
  bool endsRun = false;
};

// Neighbours in the list that were reopened together. While open, they share one slot of the stack,
// which is that of the last of them; the others have none of their own. When that slot closes, all
// of them are closed, and they are reopened in one step.
struct FormattingRun {
  std::uint32_t first, last;
};

class FormattingList {
 public:
  // page  the bytes that FormattingNode::begin counts in; must outlive the list
  // open  knows of each open element its node here
  FormattingList(std::string_view page, OpenElements& open) : page_(page), open_(open) {
    nodes_[kNone].slot = OpenElements::kRoot;
  }

  std::uint32_t last() const { return last_; }
  FormattingNode& at(std::uint32_t node) { return unchecked(nodes_, node); }
  const FormattingNode& at(std::uint32_t node) const { return unchecked(nodes_, node); }
  bool isMarker(std::uint32_t node) const { return at(node).name == kUnknownName; }

  // Whether "reconstruct the active formatting elements" would open anything.
  bool needsReconstruction() const { return at(last_).slot == kNone; }

  // A new element, not yet in the list.
  std::uint32_t make(NameNumber name, std::uint32_t begin);
  // The earliest of three of its kind after the last marker, which has to go; or kNone.
  std::uint32_t excessOfKind(std::uint32_t node);
  // Appends a new element, which is open at `slot`.
  void append(std::uint32_t node, std::uint32_t slot);
  // Takes the last one out, which is in no run.
  void removeLast();
  void pushMarker();
  void removeMarker();
  // Takes an element out, which is in no run.
  void remove(std::uint32_t node);

  // --- runs ---
  // The run that a node is in, or null.
  const FormattingRun* runOf(std::uint32_t node) const;
  bool isOpen(const FormattingRun& run) const { return nodes_[run.last].slot != kNone; }
  bool hasRuns() const { return !runs_.empty(); }
  // Makes one run of the nodes from `first` to `last`, which are in none.
  void setRun(std::uint32_t first, std::uint32_t last);
  // Ends the run of `node` before it. The nodes after it are left alone, or a closed run if
  // `keepsRest`; so is the node itself.
  void splitRun(std::uint32_t node, bool keepsRest);
  // Makes all nodes from `first` on nodes of no run.
  void dissolveRuns(std::uint32_t first);
  // Whether any element of this name stands in the list, before the last marker too.
  bool holds(NameNumber name) const { return unchecked(newest_, name) != kNone; }

  // The last element of this name after the last marker, or kNone.
  std::uint32_t lastNamed(NameNumber name) const {
    const std::uint32_t node = unchecked(newest_, name);
    return at(node).segment == segment_ ? node : kNone;
  }

  // Moves a node to just after another one.
  void moveAfter(std::uint32_t node, std::uint32_t other);

 private:
  static constexpr std::uint64_t kOrderStep = std::uint64_t{1} << 32;

  std::uint32_t addNode();
  void free(std::uint32_t node) {
    at(node).later = firstFree_;
    firstFree_ = node;
  }
  void renumberRuns();
  void link(std::uint32_t node, std::uint32_t earlier);
  void unlink(std::uint32_t node);
  void setOrder(std::uint32_t node);
  void linkNamesake(std::uint32_t node, std::uint32_t earlier);
  void unlinkNamesake(std::uint32_t node);
  void findKinds(std::uint32_t newest, std::uint32_t node);
  void findKind(std::uint32_t node);
  void linkKind(std::uint32_t node, std::uint32_t earlier);
  void unlinkKind(std::uint32_t node);

  std::string_view page_;
  OpenElements& open_;
  std::vector<FormattingNode> nodes_ = std::vector<FormattingNode>(1);  // that of kNone
  std::uint32_t firstFree_ = kNone;                                     // linked by `later`
  std::uint32_t last_ = kNone;
  std::uint32_t segment_ = 0;
  std::vector<std::uint32_t> newest_ = std::vector<std::uint32_t>(kElementCount, kNone);  // by name
  std::map<std::string, std::uint32_t, std::less<>> kinds_;
  std::vector<std::uint32_t> newestOfKind_ = {kNone};  // kinds are counted from 1
  std::map<std::uint64_t, FormattingRun> runs_;        // by the order of their first node
};

// --- what nearly all formatting elements of a page go through ---

inline std::uint32_t FormattingList::make(NameNumber name, std::uint32_t begin) {
  std::uint32_t node = firstFree_;
  if (node == kNone) {
    node = addNode();
  } else {
    firstFree_ = at(node).later;
    at(node) = {};
  }
  FormattingNode& entry = at(node);
  entry.begin = begin;
  entry.name = name;
  entry.segment = segment_;
  return node;
}

inline void FormattingList::append(std::uint32_t node, std::uint32_t slot) {
  FormattingNode& entry = at(node);
  entry.slot = slot;
  open_.at(slot).formatting = node;
  entry.order = at(last_).order + kOrderStep;
  entry.earlier = last_;
  at(last_).later = node;
  last_ = node;
  std::uint32_t& newest = unchecked(newest_, entry.name);
  entry.earlierNamesake = newest;
  at(newest).laterNamesake = node;
  newest = node;
}

inline void FormattingList::removeLast() {
  const std::uint32_t node = last_;
  const FormattingNode& entry = at(node);
  open_.at(entry.slot).formatting = kNone;
  last_ = entry.earlier;
  at(entry.earlier).later = kNone;
  unchecked(newest_, entry.name) = entry.earlierNamesake;
  at(entry.earlierNamesake).laterNamesake = kNone;
  if (entry.kind != kNone) unlinkKind(node);
  free(node);
}

}  // namespace pagescan::internal

#endif
