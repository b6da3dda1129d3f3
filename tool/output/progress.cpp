#include "output/progress.h"

#include <unistd.h>

#include <cstdio>

namespace pagescan::tool {

namespace {

constexpr std::chrono::milliseconds kFirst(1000);
constexpr std::chrono::milliseconds kStep(100);
constexpr char kClearLine[] = "\r\x1b[K";

}  // namespace

Progress::Progress(std::size_t total, bool isDataOnTerminal, const char* noun)
    : total_(total),
      noun_(noun),
      isWanted_(total > 1 && !isDataOnTerminal && ::isatty(STDERR_FILENO) != 0),
      next_(Clock::now() + kFirst) {}

void Progress::advanceTo(std::size_t done, std::size_t total) {
  done_ = done;
  total_ = total;
  if (!isWanted_ || Clock::now() < next_) return;
  std::fprintf(stderr, "%s%zu of %zu %s", kClearLine, done_, total_, noun_);
  isShown_ = true;
  next_ = Clock::now() + kStep;
}

void Progress::clear() {
  if (isShown_) std::fputs(kClearLine, stderr);
  isShown_ = false;
}

}  // namespace pagescan::tool
