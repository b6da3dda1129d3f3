// Differences between two texts, in the form that patch(1) reads.
#ifndef PAGESCAN_TOOL_UNIFIED_DIFF_H
#define PAGESCAN_TOOL_UNIFIED_DIFF_H

#include <string>
#include <string_view>
#include <vector>

#include "pagescan/page.h"

namespace pagescan::tool {

// Bytes of the first text, and what stands in their place in the second one.
struct ChangedBytes {
  Span before, after;
};

// The diff, with three lines around each change; empty for equal texts.
// name          of the file, as both sides are called
// changes       all places where the texts differ, in order; what is beside them on a line may
//               differ, too
// isForPeople   control characters are shown, so that a page cannot act on a terminal
// Cost          linear in both texts
std::string unifiedDiff(const std::string& name, std::string_view before, std::string_view after,
                        const std::vector<ChangedBytes>& changes, bool isForPeople);

}  // namespace pagescan::tool

#endif
