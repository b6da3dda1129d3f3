// The measurements that are no comparisons of speed; each writes its part of the report.
#ifndef PAGESCAN_BENCH_SECTIONS_H
#define PAGESCAN_BENCH_SECTIONS_H

#include <ostream>

#include "input.h"
#include "measure.h"

namespace pagescan::bench {

// How the time of every operation grows with its text, on shapes that strangers might send.
void writeGrowth(std::ostream& out);

// What a page costs of the heap.
void writeAllocations(std::ostream& out, const Input& input);

// Many parsers on one thread and on two. Afterwards the process counts as one with threads, in
// which counts of shared strings are atomic: to be run last.
void writeThreads(std::ostream& out, const Input& input, const Rounds& rounds);

}  // namespace pagescan::bench

#endif
