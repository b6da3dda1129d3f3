#include "rw/rwcollectables.h"

#include <typeinfo>

namespace {

// The object as a T, or null. Most are just that, which is found out sooner than by a cast alone.
template <class T>
const T* as(const RWCollectable* object) {
  if (object && typeid(*object) == typeid(T)) return static_cast<const T*>(object);
  return dynamic_cast<const T*>(object);
}

}  // namespace

RWCollectable* RWCollectableString::newSpecies() const {
  return new RWCollectableString;
}
RWCollectable* RWCollectableString::copy() const {
  return new RWCollectableString(*this);
}
RWCollectableString::~RWCollectableString() = default;

int RWCollectableString::compareTo(const RWCollectable* other) const {
  const auto* text = as<RWCollectableString>(other);
  return text ? RWCString::compareTo(*text) : RWCollectable::compareTo(other);
}

unsigned RWCollectableString::hash() const {
  return RWCString::hash();
}

bool RWCollectableString::isEqual(const RWCollectable* other) const {
  const auto* text = as<RWCollectableString>(other);
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
  const auto* number = as<RWCollectableInt>(other);
  if (!number) return RWCollectable::compareTo(other);
  return (value_ > number->value_) - (value_ < number->value_);
}

unsigned RWCollectableInt::hash() const {
  return static_cast<unsigned>(value_);
}

bool RWCollectableInt::isEqual(const RWCollectable* other) const {
  const auto* number = as<RWCollectableInt>(other);
  return number && number->value_ == value_;
}
