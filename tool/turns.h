// Turns: lets threads that work on numbered inputs speak in the order of the numbers.
#ifndef PAGESCAN_TOOL_TURNS_H
#define PAGESCAN_TOOL_TURNS_H

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace pagescan::tool {

// Every number from 0 on must be passed once, by the thread that waited for it.
class Turns {
 public:
  // Returns when all lower numbers have been passed. May be called again before pass().
  void waitFor(std::size_t number) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return current_ == number; });
  }

  // Ends the turn of the current number.
  void pass() {
    const std::lock_guard lock(mutex_);
    ++current_;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t current_ = 0;
};

}  // namespace pagescan::tool

#endif
