#include "rw/rwhashdictionary.h"

#include <algorithm>
#include <bit>
#include <memory>

// Up to this many pairs are found by a look at each hash; more get an index.
namespace {

constexpr std::size_t kScanned = 8;

}  // namespace

RWHashDictionary::RWHashDictionary(std::size_t buckets) noexcept
    : pairs_(few_),
      entries_(0),
      capacity_(kFew),
      hint_(buckets),
      index_(nullptr),
      indexMask_(0),
      few_() {}

RWHashDictionary::RWHashDictionary(const RWHashDictionary& other)
    : RWHashDictionary(other.entries_) {
  if (other.entries_ > capacity_) grow();
  std::copy_n(other.pairs_, other.entries_, pairs_);
  entries_ = other.entries_;
  if (index_) {
    for (std::size_t i = 0; i < entries_; ++i) enterInIndex(i);
  }
}

RWHashDictionary::~RWHashDictionary() {
  freeMemory();
}

void RWHashDictionary::freeMemory() noexcept {
  if (pairs_ != few_) delete[] pairs_;
  delete[] index_;
}

// Makes room for more pairs than there are, at least for as many as were announced.
void RWHashDictionary::grow() {
  const std::size_t capacity = std::max(2 * capacity_, hint_);
  auto pairs = std::make_unique_for_overwrite<Pair[]>(capacity);
  const std::size_t indexSize = capacity > kScanned ? std::bit_ceil(2 * capacity) : 0;
  auto index = indexSize > 0 ? std::make_unique<unsigned[]>(indexSize) : nullptr;
  std::copy_n(pairs_, entries_, pairs.get());
  freeMemory();
  pairs_ = pairs.release();
  capacity_ = capacity;
  index_ = index.release();
  indexMask_ = indexSize - 1;
  if (index_) {
    for (std::size_t i = 0; i < entries_; ++i) enterInIndex(i);
  }
}

void RWHashDictionary::enterInIndex(std::size_t pair) noexcept {
  std::size_t slot = pairs_[pair].hash & indexMask_;
  while (index_[slot] != 0) slot = (slot + 1) & indexMask_;
  index_[slot] = static_cast<unsigned>(pair + 1);
}

const RWHashDictionary::Pair* RWHashDictionary::lookUp(const RWCollectable* key,
                                                       unsigned hash) const {
  const auto fits = [&](const Pair& pair) { return pair.hash == hash && pair.key->isEqual(key); };
  if (!index_) {
    const Pair* found = std::find_if(pairs_, pairs_ + entries_, fits);
    return found == pairs_ + entries_ ? nullptr : found;
  }
  for (std::size_t slot = hash & indexMask_; index_[slot] != 0; slot = (slot + 1) & indexMask_) {
    const Pair& pair = pairs_[index_[slot] - 1];
    if (fits(pair)) return &pair;
  }
  return nullptr;
}

RWCollectable* RWHashDictionary::insertKeyAndValue(RWCollectable* key, RWCollectable* value) {
  if (!key) return nullptr;
  const unsigned hash = key->hash();
  if (lookUp(key, hash)) return nullptr;
  if (entries_ == capacity_) grow();
  pairs_[entries_] = {key, value, hash};
  if (index_) enterInIndex(entries_);
  ++entries_;
  return key;
}

RWCollectable* RWHashDictionary::findKeyAndValue(const RWCollectable* key,
                                                 RWCollectable*& value) const {
  const Pair* pair = key && entries_ > 0 ? lookUp(key, key->hash()) : nullptr;
  if (!pair) return nullptr;
  value = pair->value;
  return pair->key;
}

bool RWHashDictionary::contains(const RWCollectable* key) const {
  return find(key) != nullptr;
}

RWCollectable* RWHashDictionary::find(const RWCollectable* key) const {
  RWCollectable* value = nullptr;
  return findKeyAndValue(key, value);
}

RWCollectable* RWHashDictionary::findValue(const RWCollectable* key) const {
  RWCollectable* value = nullptr;
  findKeyAndValue(key, value);
  return value;
}

void RWHashDictionary::clear() noexcept {
  entries_ = 0;
  if (index_) std::fill_n(index_, indexMask_ + 1, 0U);
}

void RWHashDictionary::clearAndDestroy() {
  for (std::size_t i = 0; i < entries_; ++i) {
    delete pairs_[i].key;
    delete pairs_[i].value;
  }
  clear();
}

RWCollectable* RWHashDictionary::newSpecies() const {
  return new RWHashDictionary(hint_);
}
RWCollectable* RWHashDictionary::copy() const {
  return new RWHashDictionary(*this);
}

const RWHashDictionary::Pair* RWHashDictionaryIterator::current() const noexcept {
  if (next_ == 0 || next_ > dictionary_->entries_) return nullptr;
  return &dictionary_->pairs_[next_ - 1];
}

RWCollectable* RWHashDictionaryIterator::operator()() noexcept {
  if (next_ <= dictionary_->entries_) ++next_;
  return key();
}

RWCollectable* RWHashDictionaryIterator::key() const noexcept {
  const auto* pair = current();
  return pair ? pair->key : nullptr;
}

RWCollectable* RWHashDictionaryIterator::value() const noexcept {
  const auto* pair = current();
  return pair ? pair->value : nullptr;
}
