#include "measure.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace pagescan::bench {
namespace {

using Run = benchmark::BenchmarkReporter::Run;

// Hands on what Google Benchmark measures, instead of showing it.
class Collector : public benchmark::BenchmarkReporter {
 public:
  explicit Collector(std::function<void(const Run&)> take) : take_(std::move(take)) {}

  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) take_(run);
  }

 private:
  std::function<void(const Run&)> take_;
};

void runRounds(int count, Collector collector) {
  for (int round = 0; round < count; ++round) {
    benchmark::RunSpecifiedBenchmarks(&collector, "all");
  }
}

}  // namespace

Timings measure(const Job& job, const Rounds& rounds) {
  benchmark::ClearRegisteredBenchmarks();
  for (const Contender& contender : job.contenders()) {
    const auto run = [&contender](benchmark::State& state) {
      for (auto _ : state) benchmark::DoNotOptimize(contender.pass());
    };
    benchmark::RegisterBenchmark(contender.name.c_str(), run)->MinTime(rounds.secondsEach);
  }
  Timings timings;
  runRounds(rounds.count, Collector([&timings](const Run& run) {
              const double passes = static_cast<double>(run.iterations);
              timings[run.run_name.function_name].push_back(run.cpu_accumulated_time / passes);
            }));
  return timings;
}

std::vector<ThreadTimes> measureThreads(const std::function<void(benchmark::State&)>& passes,
                                        const std::vector<int>& threadCounts,
                                        const Rounds& rounds) {
  benchmark::ClearRegisteredBenchmarks();
  for (const int threads : threadCounts) {
    benchmark::RegisterBenchmark("threads", passes)
        ->Threads(threads)
        ->UseRealTime()
        ->MinTime(rounds.secondsEach);
  }
  std::map<int, std::vector<double>> clock;
  std::map<int, std::vector<double>> processor;
  runRounds(
      rounds.count, Collector([&](const Run& run) {
        const double passesDone = static_cast<double>(run.iterations);  // of all threads
        clock[static_cast<int>(run.threads)].push_back(run.real_accumulated_time / passesDone);
        processor[static_cast<int>(run.threads)].push_back(run.cpu_accumulated_time / passesDone);
      }));
  std::vector<ThreadTimes> result;
  for (const int threads : threadCounts) {
    result.push_back({threads, median(clock[threads]), median(processor[threads])});
  }
  return result;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  if (values.size() % 2 == 1) return values[middle];
  return (values[middle - 1] + values[middle]) / 2;
}

double speedRatio(const Timings& timings, const std::string& contender, const std::string& than) {
  const auto own = timings.find(contender);
  const auto other = timings.find(than);
  if (own == timings.end() || other == timings.end()) return 0;
  std::vector<double> ratios;
  for (std::size_t round = 0; round < own->second.size(); ++round) {
    ratios.push_back(other->second[round] / own->second[round]);
  }
  return median(ratios);
}

}  // namespace pagescan::bench
