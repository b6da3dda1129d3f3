// Progress: one line on a terminal that tells how far long work has come.
#ifndef PAGESCAN_TOOL_PROGRESS_H
#define PAGESCAN_TOOL_PROGRESS_H

#include <chrono>
#include <cstddef>

namespace pagescan::tool {

// Silent in the first second, where standard error is no terminal, and where the data goes to a
// terminal itself.
class Progress {
 public:
  // total  how many steps there are
  // noun   what is done in a step
  Progress(std::size_t total, bool isDataOnTerminal, const char* noun = "inputs");
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { clear(); }

  // One step more is done.
  void advance() { advanceTo(done_ + 1, total_); }

  // So many are done of so many that are known by now.
  void advanceTo(std::size_t done, std::size_t total);

  // Takes the line away, so that a message may be written in its place.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  std::size_t total_;
  const char* noun_;
  std::size_t done_ = 0;
  bool isShown_ = false;
  bool isWanted_;
  Clock::time_point next_;
};

}  // namespace pagescan::tool

#endif
