// Strings and integers that can be put into collections.
#ifndef PAGESCAN_RW_RWCOLLECTABLES_H
#define PAGESCAN_RW_RWCOLLECTABLES_H

#include "rwcollectable.h"
#include "rwcstring.h"

// A string; hash, equality and order are those of its bytes, case-sensitive. It never equals an
// object of another kind.
class PAGESCAN_EXPORT RWCollectableString : public RWCollectable, public RWCString {
 public:
  // A string with the text given, empty without one.
  RWCollectableString() = default;
  RWCollectableString(const char* text) : RWCString(text) {}
  RWCollectableString(const RWCString& text) : RWCString(text) {}
  RWCollectableString(RWCString&& text) noexcept : RWCString(static_cast<RWCString&&>(text)) {}
  RWCollectableString(const RWCollectableString&) = default;
  RWCollectableString& operator=(const RWCollectableString&) = default;

  using RWCString::compareTo;

  RWCollectable* newSpecies() const override;
  RWCollectable* copy() const override;
  ~RWCollectableString() override;
  int compareTo(const RWCollectable* other) const override;
  unsigned hash() const override;
  bool isEqual(const RWCollectable* other) const override;
};

// One int; hash, equality and order are those of the number.
class PAGESCAN_EXPORT RWCollectableInt : public RWCollectable {
 public:
  // Holds `value`, for good.
  explicit RWCollectableInt(int value = 0) : value_(value) {}
  int value() const noexcept { return value_; }

  RWCollectable* newSpecies() const override;
  RWCollectable* copy() const override;
  ~RWCollectableInt() override;
  int compareTo(const RWCollectable* other) const override;
  unsigned hash() const override;
  bool isEqual(const RWCollectable* other) const override;

 private:
  int value_;
};

#endif
