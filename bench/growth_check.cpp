#include "growth_check.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <iostream>
#include <limits>
#include <string>

#include "growth_operations.h"
#include "hostile_shapes.h"
#include "table.h"

namespace pagescan::bench {
namespace {

constexpr std::size_t kSmall = std::size_t{64} << 10;
constexpr std::size_t kLarge = std::size_t{512} << 10;
constexpr double kSteepest = 1.5;
constexpr double kShortest = 50e-6;  // seconds on the largest text: what takes less is not judged
constexpr int kRounds = 2;
constexpr int kRoundsToConfirm = 8;
constexpr int kConfirmations = 4;

// Of all threads of the process: what other processes do counts little.
double processorSeconds() {
  timespec now;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double best(Operation run, const RWCString& text, int rounds) {
  double result = std::numeric_limits<double>::max();
  for (int round = 0; round < rounds; ++round) {
    const double before = processorSeconds();
    const Kept kept = run(text);
    result = std::min(result, processorSeconds() - before);
  }
  return result;
}

struct Texts {
  RWCString small;
  RWCString large;
};

// 0 when the time is too short to tell.
double slopeOf(const Texts& texts, Operation run, int rounds) {
  const double seconds = best(run, texts.large, rounds);
  if (seconds < kShortest) return 0;
  return std::log(seconds / best(run, texts.small, rounds)) /
         std::log(static_cast<double>(kLarge) / kSmall);
}

// What looks too steep is measured again, more thoroughly: a square is steep each time, while what
// other processes do to the caches comes and goes.
double confirmedSlopeOf(const Texts& texts, Operation run) {
  double slope = slopeOf(texts, run, kRounds);
  for (int again = 0; slope > kSteepest && again < kConfirmations; ++again) {
    slope = std::min(slope, slopeOf(texts, run, kRoundsToConfirm));
  }
  return slope;
}

RWCString stringOf(const Shape& shape, std::size_t size) {
  const std::string text = textOf(shape, size);
  return RWCString(text.data(), text.size());
}

}  // namespace

bool checkGrowth(std::ostream& out) {
  keepFreedMemory();
  std::size_t measured = 0;
  std::size_t steep = 0;
  for (const Shape& shape : hostileShapes()) {
    std::cerr << shape.name << '\n';
    const Texts texts = {stringOf(shape, kSmall), stringOf(shape, kLarge)};
    const bool isEndless = tqFindEndlessScript(texts.large) != RWCString::npos;
    for (const NamedOperation& operation : growthOperations()) {
      if (operation.blanksScripts && isEndless) continue;
      ++measured;
      const double slope = confirmedSlopeOf(texts, operation.run);
      if (slope <= kSteepest) continue;
      ++steep;
      out << operation.name << " on \"" << shape.name << "\": slope " << shortNumber(slope)
          << std::endl;
    }
  }
  out << steep << " of " << measured << " operations on a shape grow steeper than "
      << shortNumber(kSteepest) << '\n';
  return steep == 0;
}

}  // namespace pagescan::bench
