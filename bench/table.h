// The measurements as Markdown.
#ifndef PAGESCAN_BENCH_TABLE_H
#define PAGESCAN_BENCH_TABLE_H

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "job.h"
#include "measure.h"

namespace pagescan::bench {

// A table with its header; all columns but the first are aligned to the right.
class Table {
 public:
  explicit Table(std::vector<std::string> header);
  void addRow(std::vector<std::string> cells);
  friend std::ostream& operator<<(std::ostream& out, const Table& table);

 private:
  std::vector<std::vector<std::string>> rows_;
};

// A number with three digits that count.
std::string shortNumber(double value);

// Text that is shown as it stands.
std::string code(std::string_view text);

struct Result {
  const Job* job;
  Timings timings;
};

// One row for each job: ratios, and what was to be reached.
void writeRatios(std::ostream& out, const std::vector<Result>& results);

// A table for each job: the speed of each contender.
void writeSpeeds(std::ostream& out, const Result& result);

// How many targets were missed.
std::size_t targetsMissed(const std::vector<Result>& results);

}  // namespace pagescan::bench

#endif
