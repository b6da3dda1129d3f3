// Whether the time of any operation grows faster than its text: a quick check, where the report
// measures thoroughly.
#ifndef PAGESCAN_BENCH_GROWTH_CHECK_H
#define PAGESCAN_BENCH_GROWTH_CHECK_H

#include <ostream>

namespace pagescan::bench {

// Runs every operation on every hostile shape and writes a line for each that is too steep, then
// a line with the counts. Returns whether there was none.
bool checkGrowth(std::ostream& out);

}  // namespace pagescan::bench

#endif
