// How the time of every operation grows with its text, on shapes that strangers might send.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "growth_operations.h"
#include "hostile_shapes.h"
#include "sections.h"
#include "table.h"
#include "yardsticks.h"

namespace pagescan::bench {
namespace {

constexpr std::size_t kKiB = 1024;
constexpr std::array<std::size_t, 5> kSizes = {16 * kKiB, 64 * kKiB, 256 * kKiB, 1024 * kKiB,
                                               4096 * kKiB};
constexpr double kSteepest = 1.1;

// A shape in every size. There are as many texts of a size as make up the largest one, and the
// results of all are kept until the last one has had its turn, so that caches serve all sizes
// alike.
struct Samples {
  explicit Samples(const Shape& shape) {
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
      const std::string text = textOf(shape, kSizes[i]);
      for (std::size_t n = kSizes.back() / kSizes[i]; n > 0; --n) {
        texts[i].emplace_back(text.data(), text.size());
      }
    }
    isEndless = tqFindEndlessScript(texts.back().front()) != RWCString::npos;
  }

  std::array<Texts, kSizes.size()> texts;
  bool isEndless;
};

using Seconds = std::array<double, kSizes.size()>;

double slopeOf(const Seconds& seconds) {
  double sumX = 0, sumY = 0, sumXX = 0, sumXY = 0;
  for (std::size_t i = 0; i < kSizes.size(); ++i) {
    const double x = std::log(static_cast<double>(kSizes[i]));
    const double y = std::log(seconds[i]);
    sumX += x;
    sumY += y;
    sumXX += x * x;
    sumXY += x * y;
  }
  const auto count = static_cast<double>(kSizes.size());
  return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX);
}

Pass passOver(const Texts& texts, Operation run) {
  return [&texts, run] {
    std::vector<Kept> results;
    results.reserve(texts.size());
    for (const RWCString& text : texts) results.push_back(run(text));
    return results.size();
  };
}

// The best of a few rounds counts: what disturbs only ever adds time.
void takeBest(const NamedOperation& operation, const Samples& samples, int rounds, Seconds& best) {
  Job job(operation.name, operation.name, workOver(samples.texts.back(), "text"));
  for (std::size_t i = 0; i < kSizes.size(); ++i) {
    job.contender(std::to_string(i), passOver(samples.texts[i], operation.run));
  }
  const Timings timings = measure(job, {.count = rounds, .secondsEach = 0.0005});
  for (std::size_t i = 0; i < kSizes.size(); ++i) {
    const std::vector<double>& times = timings.at(std::to_string(i));
    const double seconds = *std::min_element(times.begin(), times.end());
    best[i] = std::min(best[i], seconds / static_cast<double>(samples.texts[i].size()));
  }
}

// A slope that looks too steep is measured more thoroughly.
Seconds secondsOf(const NamedOperation& operation, const Samples& samples) {
  Seconds seconds;
  seconds.fill(std::numeric_limits<double>::max());
  takeBest(operation, samples, 5, seconds);
  if (slopeOf(seconds) > kSteepest) takeBest(operation, samples, 25, seconds);
  return seconds;
}

// What caches take from long texts they take from copying, too: in its units they play no part.
Growth growthOf(const Shape& shape, const Seconds& seconds, const Seconds& copying) {
  Seconds units = seconds;
  for (std::size_t i = 0; i < units.size(); ++i) units[i] /= copying[i];
  return {.shape = shape.name,
          .slope = slopeOf(seconds),
          .besideCopying = 1 + slopeOf(units),
          .speed = static_cast<double>(kSizes.back()) / seconds.back()};
}

const Growth& steepestBesideCopying(const OperationGrowth& operation) {
  return *std::max_element(
      operation.growths.begin(), operation.growths.end(),
      [](const Growth& a, const Growth& b) { return a.besideCopying < b.besideCopying; });
}

const Growth& steepest(const OperationGrowth& operation) {
  return *std::max_element(operation.growths.begin(), operation.growths.end(),
                           [](const Growth& a, const Growth& b) { return a.slope < b.slope; });
}

const Growth& slowest(const OperationGrowth& operation) {
  return *std::min_element(operation.growths.begin(), operation.growths.end(),
                           [](const Growth& a, const Growth& b) { return a.speed < b.speed; });
}

std::string flagged(double slope) {
  return shortNumber(slope) + (slope > kSteepest ? " **above 1.1**" : "");
}

std::string speedOn(const Growth& growth) {
  constexpr double kBeyondMemory = 1e12;
  return growth.speed > kBeyondMemory ? "at once" : shortNumber(growth.speed / 1e6);
}

// Empty for a shape that the operation was not run on.
std::string slopeOn(const Shape& shape, const OperationGrowth& operation) {
  const auto growth = std::find_if(operation.growths.begin(), operation.growths.end(),
                                   [&](const Growth& each) { return each.shape == shape.name; });
  return growth == operation.growths.end() ? "" : shortNumber(growth->slope);
}

}  // namespace

std::vector<OperationGrowth> measureGrowth() {
  keepFreedMemory();
  std::vector<OperationGrowth> result = {{kPlainCopying.name, {}}};
  const std::span<const NamedOperation> operations = growthOperations();
  for (const NamedOperation& operation : operations) result.push_back({operation.name, {}});
  for (const Shape& shape : hostileShapes()) {
    const Samples samples(shape);
    const Seconds copying = secondsOf(kPlainCopying, samples);
    result.front().growths.push_back(growthOf(shape, copying, copying));
    for (std::size_t i = 0; i < operations.size(); ++i) {
      if (operations[i].blanksScripts && samples.isEndless) continue;
      const Seconds seconds = secondsOf(operations[i], samples);
      result[i + 1].growths.push_back(growthOf(shape, seconds, copying));
    }
  }
  return result;
}

void writeGrowth(std::ostream& out, const std::vector<OperationGrowth>& operations) {
  out << "### Growth\n\n";
  Table table({"operation", "steepest slope", "on", "beside copying", "on", "slowest, MB/s", "on"});
  for (const OperationGrowth& operation : operations) {
    const Growth& steep = steepest(operation);
    const Growth& beside = steepestBesideCopying(operation);
    const Growth& slow = slowest(operation);
    table.addRow({code(operation.operation), flagged(steep.slope), code(steep.shape),
                  flagged(beside.besideCopying), code(beside.shape), speedOn(slow),
                  code(slow.shape)});
  }
  out << table;
}

void writeSlopes(std::ostream& out, const std::vector<OperationGrowth>& operations) {
  out << "### Slopes\n\n";
  std::vector<std::string> header = {""};
  for (const Shape& shape : hostileShapes()) header.push_back(code(shape.name));
  Table table(std::move(header));
  for (const OperationGrowth& operation : operations) {
    std::vector<std::string> cells = {code(operation.operation)};
    for (const Shape& shape : hostileShapes()) cells.push_back(slopeOn(shape, operation));
    table.addRow(std::move(cells));
  }
  out << table;
}

}  // namespace pagescan::bench
