// Runs of formatting elements that are reopened together.
#include <iterator>

#include "page/formatting_list.h"

namespace pagescan::internal {

const FormattingRun* FormattingList::runOf(std::uint32_t node) const {
  if (runs_.empty()) return nullptr;
  const std::uint64_t order = nodes_[node].order;
  auto found = runs_.upper_bound(order);
  if (found == runs_.begin()) return nullptr;
  --found;
  return order <= nodes_[found->second.last].order ? &found->second : nullptr;
}

void FormattingList::setRun(std::uint32_t first, std::uint32_t last) {
  nodes_[last].endsRun = true;
  runs_.insert_or_assign(nodes_[first].order, FormattingRun{first, last});
}

void FormattingList::splitRun(std::uint32_t node, bool keepsRest) {
  const FormattingRun run = *runOf(node);
  runs_.erase(nodes_[run.first].order);
  nodes_[run.last].endsRun = false;
  if (node != run.first) setRun(run.first, nodes_[node].earlier);
  if (keepsRest && node != run.last) setRun(nodes_[node].later, run.last);
}

void FormattingList::dissolveRuns(std::uint32_t first) {
  auto run = runs_.lower_bound(nodes_[first].order);
  while (run != runs_.end()) {
    nodes_[run->second.last].endsRun = false;
    run = runs_.erase(run);
  }
}

void FormattingList::renumberRuns() {
  std::map<std::uint64_t, FormattingRun> renumbered;
  for (const auto& [order, run] : runs_) renumbered.emplace(nodes_[run.first].order, run);
  runs_ = std::move(renumbered);
}

}  // namespace pagescan::internal
