// RWHashDictionary: key/value pairs of objects, found by the key's hash and isEqual.
//
// Owns neither keys nor values until clearAndDestroy is asked for; a copy holds the same objects.
// Keys must not change while they are inside. Nothing is allocated while it is empty, nor for up
// to two pairs. Every lookup hashes its argument once and takes constant time on average, whatever
// strings a stranger chose as keys (see RWCString::hash).
#ifndef PAGESCAN_RW_RWHASHDICTIONARY_H
#define PAGESCAN_RW_RWHASHDICTIONARY_H

#include <cstddef>

#include "rwcollectable.h"

class PAGESCAN_EXPORT RWHashDictionary : public RWCollectable {
 public:
  RWHashDictionary() noexcept : RWHashDictionary(0) {}

  // `buckets` is a hint at the number of pairs to come; memory is taken at the first insertion.
  explicit RWHashDictionary(std::size_t buckets) noexcept;
  RWHashDictionary(const RWHashDictionary& other);
  RWHashDictionary& operator=(const RWHashDictionary&) = delete;

  // Returns `key`, or null when an equal key is present: then nothing is inserted and the caller
  // still owns both objects. The same holds when std::bad_alloc leaves it.
  RWCollectable* insertKeyAndValue(RWCollectable* key, RWCollectable* value);

  // Whether an equal key is stored.
  bool contains(const RWCollectable* key) const;

  // The stored key that equals `key`, or null.
  RWCollectable* find(const RWCollectable* key) const;

  // Its value, or null.
  RWCollectable* findValue(const RWCollectable* key) const;

  // The stored key, or null; `value` is set when there is one.
  RWCollectable* findKeyAndValue(const RWCollectable* key, RWCollectable*& value) const;

  // The number of pairs.
  std::size_t entries() const noexcept { return entries_; }

  // Forgets every pair and deletes nothing.
  void clear() noexcept;

  // Deletes every key and value and forgets them.
  void clearAndDestroy();

  RWCollectable* newSpecies() const override;
  RWCollectable* copy() const override;
  ~RWHashDictionary() override;

 private:
  friend class RWHashDictionaryIterator;

  struct Pair {
    RWCollectable* key;
    RWCollectable* value;
    unsigned hash;
  };
  static constexpr std::size_t kFew = 2;

  const Pair* lookUp(const RWCollectable* key, unsigned hash) const;
  void grow();
  void enterInIndex(std::size_t pair) noexcept;
  void freeMemory() noexcept;

  Pair* pairs_;  // in the order of insertion
  std::size_t entries_;
  std::size_t capacity_;
  std::size_t hint_;
  unsigned* index_;  // open addressing, pair number + 1 or 0; null while a scan is as quick
  std::size_t indexMask_;
  Pair few_[kFew];
};

// Visits every pair of a dictionary once, here in the order of insertion, which nothing in the
// library relies on; the dictionary must not change meanwhile.
class PAGESCAN_EXPORT RWHashDictionaryIterator {
 public:
  // Stands before the first pair.
  explicit RWHashDictionaryIterator(const RWHashDictionary& dictionary) noexcept
      : dictionary_(&dictionary), next_(0) {}

  // Advances and returns the next key, or null at the end.
  RWCollectable* operator()() noexcept;

  // The current pair; null before the first advance and after the end.
  RWCollectable* key() const noexcept;
  RWCollectable* value() const noexcept;

 private:
  const RWHashDictionary::Pair* current() const noexcept;

  const RWHashDictionary* dictionary_;
  std::size_t next_;
};

#endif
