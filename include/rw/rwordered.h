// RWOrdered: objects in the order in which they were put in.
//
// Owns none of its elements until clearAndDestroy is asked for: neither its destructor nor clear
// deletes them, and a copy holds the same elements. Two elements need no heap memory.
#ifndef PAGESCAN_RW_RWORDERED_H
#define PAGESCAN_RW_RWORDERED_H

#include <cstddef>

#include "rwcollectable.h"

class PAGESCAN_EXPORT RWOrdered : public RWCollectable {
 public:
  // Empty, or with the elements of another one.
  RWOrdered() noexcept : items_(few_), entries_(0), capacity_(kFew) {}
  RWOrdered(const RWOrdered& other);
  RWOrdered& operator=(const RWOrdered&) = delete;

  // Appends, and returns the element. Amortised constant time.
  RWCollectable* insert(RWCollectable* element);

  // Takes the memory for so many more elements now: the next `count` insertions do not fail.
  void makeRoom(std::size_t count = 1) {
    while (capacity_ - entries_ < count) grow();
  }

  // The number of elements.
  std::size_t entries() const noexcept { return entries_; }

  // Fails   RWBoundsErr when `index` is not below entries().
  RWCollectable* at(std::size_t index) const;

  // Forgets every element and deletes nothing.
  void clear() noexcept { entries_ = 0; }

  // Deletes every element and forgets them.
  void clearAndDestroy();

  RWCollectable* newSpecies() const override;
  RWCollectable* copy() const override;
  ~RWOrdered() override;

 private:
  static constexpr std::size_t kFew = 2;

  void grow();

  RWCollectable** items_;
  std::size_t entries_;
  std::size_t capacity_;
  RWCollectable* few_[kFew];
};

#endif
