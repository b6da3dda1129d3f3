// Times benchmarks in rounds and keeps what each round gave.
#ifndef PAGESCAN_BENCH_MEASURE_H
#define PAGESCAN_BENCH_MEASURE_H

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "job.h"

namespace pagescan::bench {

// Seconds that one pass took, round by round; under a benchmark's name.
using Timings = std::map<std::string, std::vector<double>>;

struct Rounds {
  int count = 9;
  double secondsEach = 0.03;  // of each contender, at the least
};

// Measures the contenders of a job, all of them in every round, one right after the other: what
// disturbs the machine for a while disturbs all of them alike.
Timings measure(const Job& job, const Rounds& rounds);

// What a pass over the whole input took when several threads made passes at once.
struct ThreadTimes {
  int threads;
  double clock;      // seconds that went by, for each pass
  double processor;  // seconds that the processors spent on it
};

// The medians for each number of threads, in rounds as above.
std::vector<ThreadTimes> measureThreads(const std::function<void(benchmark::State&)>& passes,
                                        const std::vector<int>& threadCounts, const Rounds& rounds);

double median(std::vector<double> values);

// How many times faster `contender` is than `than`: the median of the rounds' own ratios. 0 when
// one of the two was not measured.
double speedRatio(const Timings& timings, const std::string& contender, const std::string& than);

}  // namespace pagescan::bench

#endif
