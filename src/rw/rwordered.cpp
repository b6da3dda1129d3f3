#include "rw/rwordered.h"

#include <algorithm>

#include "rw/rwbounds.h"

RWOrdered::RWOrdered(const RWOrdered& other) : RWOrdered() {
  if (other.entries_ > capacity_) {
    items_ = new RWCollectable*[other.entries_];
    capacity_ = other.entries_;
  }
  std::copy_n(other.items_, other.entries_, items_);
  entries_ = other.entries_;
}

RWOrdered::~RWOrdered() {
  if (items_ != few_) delete[] items_;
}

void RWOrdered::grow() {
  auto** more = new RWCollectable*[2 * capacity_];
  std::copy_n(items_, entries_, more);
  if (items_ != few_) delete[] items_;
  items_ = more;
  capacity_ *= 2;
}

RWCollectable* RWOrdered::insert(RWCollectable* element) {
  makeRoom();
  items_[entries_++] = element;
  return element;
}

RWCollectable* RWOrdered::at(std::size_t index) const {
  if (index >= entries_) throw RWBoundsErr(index, entries_ == 0 ? 0 : entries_ - 1);
  return items_[index];
}

void RWOrdered::clearAndDestroy() {
  for (std::size_t i = 0; i < entries_; ++i) delete items_[i];
  entries_ = 0;
}

RWCollectable* RWOrdered::newSpecies() const {
  return new RWOrdered;
}
RWCollectable* RWOrdered::copy() const {
  return new RWOrdered(*this);
}
