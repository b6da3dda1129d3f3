// The I/O queue of the Encoding Standard, 3 "Terminology", with all of its items there at once.
#ifndef PAGESCAN_TESTS_REFERENCE_ENCODING_QUEUE_H
#define PAGESCAN_TESTS_REFERENCE_ENCODING_QUEUE_H

#include <initializer_list>
#include <vector>

namespace reference {

// An item is a byte or a code point; kEndOfQueue is the last one and is never used up.
class Queue {
 public:
  static constexpr int kEndOfQueue = -1;

  template <typename Items>
  static Queue of(const Items& items) {
    Queue queue;
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
      queue.items_.push_back(static_cast<int>(*item));
    }
    return queue;
  }

  int read() {
    if (items_.empty()) return kEndOfQueue;
    const int item = items_.back();
    items_.pop_back();
    return item;
  }

  // Puts items at the beginning, in their order. The end of the queue is there anyway.
  void restore(std::initializer_list<int> items) {
    for (const int* item = items.end(); item != items.begin();) {
      if (*--item != kEndOfQueue) items_.push_back(*item);
    }
  }

 private:
  std::vector<int> items_;  // the next one last
};

}  // namespace reference

#endif
