// The operations of both libraries, each as one call on one text.
#ifndef PAGESCAN_BENCH_GROWTH_OPERATIONS_H
#define PAGESCAN_BENCH_GROWTH_OPERATIONS_H

#include <memory>
#include <span>

#include "pagescan.h"

namespace pagescan::bench {

// An operation's result, which is kept while the other texts of a size have their turn. The text
// must outlive it.
using Kept = std::shared_ptr<void>;
using Operation = Kept (*)(const RWCString& text);

struct NamedOperation {
  const char* name;
  Operation run;
  bool blanksScripts = false;  // and does not return on a text whose script tag does not end
};

// All of them, in the order of the report.
std::span<const NamedOperation> growthOperations();

// What the caches make of the conversions' way: into a block three times as large, and back.
extern const NamedOperation kPlainCopying;

// From here on what is freed stays with the process: what the system takes to hand out large blocks
// afresh is not the library's.
void keepFreedMemory();

}  // namespace pagescan::bench

#endif
