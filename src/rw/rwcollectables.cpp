#include "rw/rwcollectables.h"

RWCollectable* RWCollectableString::newSpecies() const {
  return new RWCollectableString;
}
RWCollectable* RWCollectableString::copy() const {
  return new RWCollectableString(*this);
}
RWCollectableString::~RWCollectableString() = default;

int RWCollectableString::compareTo(const RWCollectable* other) const {
  const auto* text = dynamic_cast<const RWCollectableString*>(other);
  return text ? RWCString::compareTo(*text) : RWCollectable::compareTo(other);
}

unsigned RWCollectableString::hash() const {
  return RWCString::hash();
}

bool RWCollectableString::isEqual(const RWCollectable* other) const {
  const auto* text = dynamic_cast<const RWCollectableString*>(other);
  return text && static_cast<const RWCString&>(*this) == static_cast<const RWCString&>(*text);
}

RWCollectable* RWCollectableInt::newSpecies() const {
  return new RWCollectableInt;
}
RWCollectable* RWCollectableInt::copy() const {
  return new RWCollectableInt(*this);
}
RWCollectableInt::~RWCollectableInt() = default;

int RWCollectableInt::compareTo(const RWCollectable* other) const {
  const auto* number = dynamic_cast<const RWCollectableInt*>(other);
  if (!number) return RWCollectable::compareTo(other);
  return (value_ > number->value_) - (value_ < number->value_);
}

unsigned RWCollectableInt::hash() const {
  return static_cast<unsigned>(value_);
}

bool RWCollectableInt::isEqual(const RWCollectable* other) const {
  const auto* number = dynamic_cast<const RWCollectableInt*>(other);
  return number && number->value_ == value_;
}
