#include "output/progress.h"

#include <unistd.h>

#include <cstdio>

namespace pagescan::tool {

namespace {

constexpr std::chrono::milliseconds kFirst(1000);
constexpr std::chrono::milliseconds kStep(100);
constexpr char kClearLine[] = "\r\x1b[K";

}  // namespace

Progress::Progress(std::size_t total, bool isDataOnTerminal)
    : total_(total),
      isWanted_(total > 1 && !isDataOnTerminal && ::isatty(STDERR_FILENO) != 0),
      next_(Clock::now() + kFirst) {}

void Progress::advance() {
  ++done_;
  if (!isWanted_ || Clock::now() < next_) return;
  std::fprintf(stderr, "%s%zu of %zu inputs", kClearLine, done_, total_);
  isShown_ = true;
  next_ = Clock::now() + kStep;
}

void Progress::clear() {
  if (isShown_) std::fputs(kClearLine, stderr);
  isShown_ = false;
}

}  // namespace pagescan::tool
