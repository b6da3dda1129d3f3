// Work shared by several threads.
#ifndef PAGESCAN_TOOL_WORKER_THREADS_H
#define PAGESCAN_TOOL_WORKER_THREADS_H

#include <cstddef>
#include <functional>

namespace pagescan::tool {

// Calls `work` on so many threads at once, this one among them, and returns when all have ended.
// Where the system has no more threads, those that there are do the work. `work` must not throw.
void runOnThreads(std::size_t count, const std::function<void()>& work);

}  // namespace pagescan::tool

#endif
