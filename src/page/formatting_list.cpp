#include "page/formatting_list.h"

#include <utility>

namespace pagescan::internal {

namespace {

constexpr std::size_t kMostOfAKind = 3;

}  // namespace

std::uint32_t FormattingList::addNode() {
  nodes_.emplace_back();
  return static_cast<std::uint32_t>(nodes_.size() - 1);
}

void FormattingList::link(std::uint32_t node, std::uint32_t earlier) {
  FormattingNode& entry = nodes_[node];
  entry.earlier = earlier;
  entry.later = earlier == kNone ? kNone : nodes_[earlier].later;
  if (earlier != kNone) nodes_[earlier].later = node;
  if (entry.later == kNone) {
    last_ = node;
  } else {
    nodes_[entry.later].earlier = node;
  }
  setOrder(node);
}

// Between its neighbours; where no number is left between them, all get new ones.
void FormattingList::setOrder(std::uint32_t node) {
  FormattingNode& entry = nodes_[node];
  const std::uint64_t before = entry.earlier == kNone ? 0 : nodes_[entry.earlier].order;
  if (entry.later == kNone) {
    entry.order = before + kOrderStep;
    return;
  }
  entry.order = before + (nodes_[entry.later].order - before) / 2;
  if (entry.order != before) return;
  std::uint32_t first = node;
  while (nodes_[first].earlier != kNone) first = nodes_[first].earlier;
  std::uint64_t order = 0;
  for (std::uint32_t at = first; at != kNone; at = nodes_[at].later) {
    nodes_[at].order = order += kOrderStep;
  }
  renumberRuns();
}

void FormattingList::unlink(std::uint32_t node) {
  const FormattingNode& entry = nodes_[node];
  if (entry.earlier != kNone) nodes_[entry.earlier].later = entry.later;
  if (entry.later == kNone) {
    last_ = entry.earlier;
  } else {
    nodes_[entry.later].earlier = entry.earlier;
  }
}

void FormattingList::linkNamesake(std::uint32_t node, std::uint32_t earlier) {
  FormattingNode& entry = nodes_[node];
  entry.earlierNamesake = earlier;
  if (earlier != kNone) {
    entry.laterNamesake = nodes_[earlier].laterNamesake;
  } else {
    std::uint32_t oldest = newest_[entry.name];
    while (oldest != kNone && nodes_[oldest].earlierNamesake != kNone) {
      oldest = nodes_[oldest].earlierNamesake;
    }
    entry.laterNamesake = oldest;
  }
  if (earlier != kNone) nodes_[earlier].laterNamesake = node;
  if (entry.laterNamesake == kNone) {
    newest_[entry.name] = node;
  } else {
    nodes_[entry.laterNamesake].earlierNamesake = node;
  }
}

void FormattingList::unlinkNamesake(std::uint32_t node) {
  const FormattingNode& entry = nodes_[node];
  if (entry.earlierNamesake != kNone) {
    nodes_[entry.earlierNamesake].laterNamesake = entry.laterNamesake;
  }
  if (entry.laterNamesake == kNone) {
    newest_[entry.name] = entry.earlierNamesake;
  } else {
    nodes_[entry.laterNamesake].earlierNamesake = entry.earlierNamesake;
  }
}

void FormattingList::pushMarker() {
  ++segment_;
  const std::uint32_t node = make(kUnknownName, 0);
  at(node).slot = OpenElements::kRoot;  // it is never to be reopened
  link(node, last_);
}

void FormattingList::removeMarker() {
  const std::uint32_t node = last_;
  unlink(node);
  free(node);
  --segment_;
}

void FormattingList::remove(std::uint32_t node) {
  open_.at(nodes_[node].slot).formatting = kNone;
  unlink(node);
  unlinkNamesake(node);
  unlinkKind(node);
  free(node);
}

// Elements of its own name or kind that come to stand after it are passed, which pages hardly do.
void FormattingList::moveAfter(std::uint32_t node, std::uint32_t other) {
  if (other == node || nodes_[other].later == node) return;
  unlink(node);
  nodes_[node].segment = nodes_[other].segment;
  link(node, other);
  const auto isLater = [&](std::uint32_t at) {
    return at != kNone && nodes_[at].order > nodes_[node].order;
  };
  std::uint32_t namesake = nodes_[node].earlierNamesake;
  if (isLater(namesake)) {
    unlinkNamesake(node);
    while (isLater(namesake)) namesake = nodes_[namesake].earlierNamesake;
    linkNamesake(node, namesake);
  }
  std::uint32_t likeIt = nodes_[node].earlierOfKind;
  if (nodes_[node].kind != kNone && isLater(likeIt)) {
    const std::uint32_t kind = nodes_[node].kind;
    unlinkKind(node);
    nodes_[node].kind = kind;
    while (isLater(likeIt)) likeIt = nodes_[likeIt].earlierOfKind;
    linkKind(node, likeIt);
  }
}

// Only where three of a name stand after the marker there can be three of a kind.
std::uint32_t FormattingList::excessOfKind(std::uint32_t node) {
  const std::uint32_t newest = lastNamed(nodes_[node].name);
  std::size_t count = 0;
  for (std::uint32_t at = newest; at != kNone && count < kMostOfAKind; ++count) {
    if (nodes_[at].segment != segment_) break;
    at = nodes_[at].earlierNamesake;
  }
  if (count < kMostOfAKind) return kNone;
  findKinds(newest, node);
  std::uint32_t earliest = kNone;
  count = 0;
  for (std::uint32_t at = nodes_[node].earlierOfKind; at != kNone; at = nodes_[at].earlierOfKind) {
    if (nodes_[at].segment != segment_) break;
    earliest = at;
    ++count;
  }
  return count < kMostOfAKind ? kNone : earliest;
}

// Gives each element of a name after the marker its kind, in their order, and then `node`. Those
// that have none yet are the newest ones.
void FormattingList::findKinds(std::uint32_t newest, std::uint32_t node) {
  const auto lacksKind = [this](std::uint32_t at) {
    return at != kNone && nodes_[at].kind == kNone && nodes_[at].segment == segment_;
  };
  std::uint32_t at = newest;
  if (lacksKind(at)) {
    while (lacksKind(nodes_[at].earlierNamesake)) at = nodes_[at].earlierNamesake;
    for (; at != kNone; at = nodes_[at].laterNamesake) findKind(at);
  }
  findKind(node);
}

void FormattingList::findKind(std::uint32_t node) {
  std::string kind = tagKind(page_.substr(nodes_[node].begin));
  const auto [found, isNew] =
      kinds_.try_emplace(std::move(kind), static_cast<std::uint32_t>(newestOfKind_.size()));
  if (isNew) newestOfKind_.push_back(kNone);
  nodes_[node].kind = found->second;
  linkKind(node, newestOfKind_[found->second]);
}

void FormattingList::linkKind(std::uint32_t node, std::uint32_t earlier) {
  FormattingNode& entry = nodes_[node];
  std::uint32_t& newest = newestOfKind_[entry.kind];
  entry.earlierOfKind = earlier;
  if (earlier == newest) {
    entry.laterOfKind = kNone;
    newest = node;
  } else if (earlier != kNone) {
    entry.laterOfKind = nodes_[earlier].laterOfKind;
    nodes_[entry.laterOfKind].earlierOfKind = node;
  } else {
    std::uint32_t oldest = newest;
    while (nodes_[oldest].earlierOfKind != kNone) oldest = nodes_[oldest].earlierOfKind;
    entry.laterOfKind = oldest;
    nodes_[oldest].earlierOfKind = node;
  }
  if (earlier != kNone) nodes_[earlier].laterOfKind = node;
}

void FormattingList::unlinkKind(std::uint32_t node) {
  FormattingNode& entry = nodes_[node];
  if (entry.kind == kNone) return;
  if (entry.earlierOfKind != kNone) nodes_[entry.earlierOfKind].laterOfKind = entry.laterOfKind;
  if (entry.laterOfKind == kNone) {
    newestOfKind_[entry.kind] = entry.earlierOfKind;
  } else {
    nodes_[entry.laterOfKind].earlierOfKind = entry.earlierOfKind;
  }
  entry.kind = kNone;
}

}  // namespace pagescan::internal
