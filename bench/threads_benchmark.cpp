// Many parsers on one thread and on two.
#include <benchmark/benchmark.h>

#include <string>
#include <thread>

#include "sections.h"
#include "table.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::bench {
namespace {

constexpr char kPageUrl[] = "http://www.example.com/news/2024/index.html";

// Each thread parses every page, with a parser of its own for each.
void parsePages(benchmark::State& state, const Texts& pages) {
  for (auto _ : state) {
    for (const RWCString& page : pages) {
      CHTMLOffsetParser parser(kPageUrl);
      parser.ParseHTML(page.data(), page.length());
    }
  }
}

}  // namespace

void writeThreads(std::ostream& out, const Input& input, const Rounds& rounds) {
  // From here on the process counts as one with threads, for both rows.
  std::thread([] {}).join();
  const auto parse = [&input](benchmark::State& state) { parsePages(state, input.pages); };
  const double bytes = static_cast<double>(bytesOf(input.pages));
  const std::vector<ThreadTimes> times = measureThreads(parse, {1, 2}, rounds);
  out << "### Threads\n\nOver " << workOver(input.pages, "page").description
      << ", on a machine with " << std::thread::hardware_concurrency() << " cores.\n\n";
  Table table({"threads", "MB/s by the clock", "times one", "processor's ns per KB"});
  for (const ThreadTimes& run : times) {
    const double speed = bytes / run.clock / 1e6;
    table.addRow({std::to_string(run.threads), shortNumber(speed),
                  shortNumber(times.front().clock / run.clock),
                  shortNumber(run.processor / bytes * 1e12)});
  }
  out << table;
}

}  // namespace pagescan::bench
