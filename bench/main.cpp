// Runs the benchmarks and writes their report.
#include <CLI/CLI.hpp>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "growth_check.h"
#include "input.h"
#include "jobs.h"
#include "measure.h"
#include "sections.h"
#include "table.h"

namespace pagescan::bench {
namespace {

constexpr char kRealPages[] = PAGESCAN_SHARED_DIR "/corpus";

struct Options {
  std::string pages;
  std::string report = "ratios.md";
  std::string only;
  Rounds rounds;
  bool checksGrowth = false;
};

Input inputOf(const Options& options) {
  if (!options.pages.empty()) return readInput(options.pages);
  return std::filesystem::is_directory(kRealPages) ? readInput(kRealPages) : generatedInput();
}

Jobs jobsOver(const Input& input) {
  Jobs jobs;
  addParseJobs(jobs, input);
  addPageJobs(jobs, input);
  addResolveJobs(jobs, input);
  addUrlJobs(jobs, input);
  addStyleJobs(jobs, input);
  addStyleTextJobs(jobs, input);
  addEncodeJobs(jobs, input);
  addCharsetJobs(jobs, input);
  addDecodingJobs(jobs);
  addScrubJobs(jobs, input);
  addStringJobs(jobs, input);
  return jobs;
}

bool isWanted(const std::string& name, const Options& options) {
  return name.find(options.only) != std::string::npos;
}

std::vector<Result> runJobs(const Jobs& jobs, const Options& options) {
  std::vector<Result> results;
  for (const Job& job : jobs) {
    if (!isWanted(job.id(), options) || job.work().items == 0) continue;
    std::cerr << job.id() << '\n';
    results.push_back({&job, measure(job, options.rounds)});
  }
  return results;
}

std::string processor() {
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line);) {
    if (line.find("model name") == 0) return line.substr(line.find(':') + 2);
  }
  return "unknown processor";
}

void writeReport(std::ostream& out, const Input& input, const std::vector<Result>& results,
                 const Options& options) {
  out << "## Measured\n\n"
      << workOver(input.pages, input.name + " page").description << "; " << processor() << "; "
      << PAGESCAN_COMPILER << "; " << options.rounds.count << " rounds.\n\n### Ratios\n\n";
  writeRatios(out, results);
  std::vector<OperationGrowth> growth;
  if (isWanted("growth", options)) {
    std::cerr << "growth\n";
    growth = measureGrowth();
    writeGrowth(out, growth);
  }
  if (isWanted("allocations", options)) writeAllocations(out, input);
  if (isWanted("program", options)) writeProgram(out, input, options.rounds);
  if (isWanted("threads", options)) writeThreads(out, input, options.rounds);
  out << "### Speeds\n\n";
  for (const Result& result : results) writeSpeeds(out, result);
  if (!growth.empty()) writeSlopes(out, growth);
}

void run(const Options& options) {
  const Input input = inputOf(options);
  std::ofstream report(options.report);
  if (!report) throw std::runtime_error(options.report + " cannot be written");
  const Jobs jobs = jobsOver(input);
  const std::vector<Result> results = runJobs(jobs, options);
  writeReport(report, input, results, options);
  writeRatios(std::cout, results);
  std::cout << targetsMissed(results) << " targets missed; all tables: " << options.report << '\n';
}

}  // namespace
}  // namespace pagescan::bench

int main(int argc, char** argv) {
  pagescan::bench::Options options;
  CLI::App app("Benchmarks of the library beside what a user would pick instead");
  app.add_option("--pages", options.pages,
                 "Folder of pages, or one with subfolders pages and css; default: the real pages "
                 "beside the project, else generated ones");
  app.add_option("--report", options.report, "File that receives the report");
  app.add_option("--only", options.only, "Only what has this in its name");
  app.add_option("--rounds", options.rounds.count, "Rounds of each job")
      ->check(CLI::Range(1, 1000));
  app.add_option("--seconds", options.rounds.secondsEach, "Seconds of each contender in a round");
  app.add_flag("--growth-check", options.checksGrowth,
               "Only look for operations whose time grows faster than their text; fails if there "
               "are any");
  CLI11_PARSE(app, argc, argv);
  try {
    if (options.checksGrowth) return pagescan::bench::checkGrowth(std::cout) ? 0 : 1;
    pagescan::bench::run(options);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
