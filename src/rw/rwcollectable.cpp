#include "rw/rwcollectable.h"

#include <cstdint>
#include <functional>

RWCollectable* RWCollectable::newSpecies() const {
  return new RWCollectable;
}
RWCollectable* RWCollectable::copy() const {
  return new RWCollectable(*this);
}
RWClassID RWCollectable::isA() const {
  return 0;
}
RWCollectable::~RWCollectable() = default;
RWspace RWCollectable::binaryStoreSize() const {
  return 0;
}

int RWCollectable::compareTo(const RWCollectable* other) const {
  if (this == other) return 0;
  return std::less<>()(this, other) ? -1 : 1;
}

// Objects do not stand closer together than 16 bytes: the bits below say nothing.
unsigned RWCollectable::hash() const {
  return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(this) >> 4U);
}

bool RWCollectable::isEqual(const RWCollectable* other) const {
  return this == other;
}
void RWCollectable::restoreGuts(RWFile&) {}
void RWCollectable::restoreGuts(RWvistream&) {}
void RWCollectable::saveGuts(RWFile&) const {}
void RWCollectable::saveGuts(RWvostream&) const {}
