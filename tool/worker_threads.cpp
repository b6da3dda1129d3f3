#include "worker_threads.h"

#include <system_error>
#include <thread>
#include <vector>

namespace pagescan::tool {

void runOnThreads(std::size_t count, const std::function<void()>& work) {
  std::vector<std::jthread> threads;
  try {
    while (threads.size() + 1 < count) threads.emplace_back([&work] { work(); });
  } catch (const std::system_error&) {  // the threads that there are will do
  }
  work();
}

}  // namespace pagescan::tool
