// One page or style sheet, rewritten in memory.
#ifndef PAGESCAN_TOOL_REWRITTEN_H
#define PAGESCAN_TOOL_REWRITTEN_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "commands/rewrite_run.h"
#include "output/unified_diff.h"

namespace pagescan::tool {

// What is wrong with an input, or with one edit of it.
struct Problem {
  std::string place;  // "12:5", line and column; empty: all of the input
  std::string text;
  std::uint32_t offset = 0;  // where that is
};

struct Rewritten {
  std::string bytes;
  std::vector<ChangedBytes> changes;
  std::vector<Problem> problems;  // in the order of the input; empty: all is done
};

// Rewrites `bytes`, the input `name`.
// edits    those that are listed for it; nullptr: the rules of the options hold
Rewritten rewritten(std::string_view bytes, const std::string& name, const RewriteOptions& options,
                    const std::vector<ListedEdit>* edits);

}  // namespace pagescan::tool

#endif
