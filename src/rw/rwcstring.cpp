#include "rw/rwcstring.h"

#include <algorithm>
#include <new>
#include <string_view>

#include "base/byte_class.h"
#include "base/keyed_hash.h"
#include "base/search.h"
#include "rw/rwbounds.h"

namespace {

// A length that no allocation can give; sums of two lengths below it do not overflow.
constexpr std::size_t kTooLong = static_cast<std::size_t>(-1) / 4;

std::size_t lengthOf(const char* text) {
  return text ? std::strlen(text) : 0;
}

std::size_t checkedSum(std::size_t a, std::size_t b) {
  if (a >= kTooLong || b >= kTooLong) throw std::bad_alloc();
  return a + b;
}

// memcpy that may be given null for nothing.
char* put(char* to, const char* from, std::size_t length) {
  if (length > 0) std::memcpy(to, from, length);
  return to + length;
}

void checkPosition(std::size_t position, std::size_t length) {
  if (position > length) throw std::out_of_range("position beyond the end of the string");
}

int compareFolded(const char* a, const char* b, std::size_t length) {
  for (std::size_t i = 0; i < length; ++i) {
    const int difference = pagescan::internal::toByte(pagescan::internal::toLower(a[i])) -
                           pagescan::internal::toByte(pagescan::internal::toLower(b[i]));
    if (difference != 0) return difference;
  }
  return 0;
}

std::size_t offsetOr(const char* found, const char* end, const char* begin) {
  return found == end ? RWCString::npos : static_cast<std::size_t>(found - begin);
}

std::size_t indexOf(std::string_view text, std::string_view pattern, std::size_t start,
                    RWCString::caseCompare cmp) noexcept {
  if (start > text.size()) return RWCString::npos;
  if (pattern.empty()) return start;
  const char* begin = text.data() + start;
  const char* end = text.data() + text.size();
  const char* found = cmp == RWCString::ignoreCase
                          ? pagescan::internal::findIgnoringCase(begin, end, pattern)
                          : pagescan::internal::findText(begin, end, pattern);
  return offsetOr(found, end, text.data());
}

int compare(std::string_view a, std::string_view b, RWCString::caseCompare cmp) noexcept {
  const std::size_t common = std::min(a.size(), b.size());
  const int difference = cmp == RWCString::ignoreCase
                             ? compareFolded(a.data(), b.data(), common)
                             : (common == 0 ? 0 : std::memcmp(a.data(), b.data(), common));
  if (difference != 0) return difference;
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

}  // namespace

// --- Storage ----------------------------------------------------------------------------------

RWCString::Buffer* RWCString::newBuffer(std::size_t capacity) {
  if (capacity >= 2 * kTooLong) throw std::bad_alloc();
  void* memory = ::operator new(sizeof(Buffer) + capacity + 1);
  return ::new (memory) Buffer(capacity);
}

void RWCString::freeBuffer(Buffer* buffer) noexcept {
  buffer->~Buffer();
  ::operator delete(buffer);
}

void RWCString::throwBounds(std::size_t index, std::size_t lastValid) {
  throw RWBoundsErr(index, lastValid);
}

// Takes a copy of the bytes into fresh storage; what the object held is not looked at.
void RWCString::copyBytes(const char* bytes, std::size_t length) {
  if (length <= kLocalCapacity) {
    data_ = local_;
  } else {
    buffer_ = newBuffer(length);
    data_ = buffer_->bytes();
  }
  put(data_, bytes, length);
  setLength(length);
}

// Puts the pieces, which may be the string's own bytes, into fresh storage for `capacity` bytes.
void RWCString::rebuild(std::size_t capacity, Piece head, Piece middle, Piece tail) {
  const auto putAll = [&](char* to) {
    put(put(put(to, head.bytes, head.length), middle.bytes, middle.length), tail.bytes,
        tail.length);
  };
  const std::size_t length = head.length + middle.length + tail.length;
  if (capacity <= kLocalCapacity) {
    char bytes[kLocalCapacity + 1];
    putAll(bytes);
    release();
    data_ = local_;
    put(local_, bytes, length);
  } else {
    Buffer* fresh = newBuffer(capacity);
    putAll(fresh->bytes());
    release();
    buffer_ = fresh;
    data_ = fresh->bytes();
  }
  setLength(length);
}

// Doubling, so that appending costs constant time a byte; a text that outgrows the object gets some
// more.
std::size_t RWCString::capacityFor(std::size_t length) const noexcept {
  constexpr std::size_t kFirstHeapCapacity = 63;
  return length <= capacity() ? capacity() : std::max({length, 2 * capacity(), kFirstHeapCapacity});
}

void RWCString::unshare() {
  if (isShared()) rebuild(length_, {data_, length_}, {}, {});
}

char& RWCString::writableByte(std::size_t index) {
  unshare();
  if (!isLocal()) buffer_->endSharing();
  return data_[index];
}

// --- Construction and assignment --------------------------------------------------------------

RWCString::RWCString(const char* text) {
  copyBytes(text, lengthOf(text));
}

RWCString::RWCString(const char* bytes, std::size_t length) {
  copyBytes(bytes, bytes ? length : 0);
}

RWCString& RWCString::operator=(const char* text) {
  const std::size_t length = lengthOf(text);
  if (canHold(length)) {
    if (length > 0) std::memmove(data_, text, length);
    setLength(length);
  } else {
    rebuild(length, {text, length}, {}, {});
  }
  return *this;
}

void RWCString::swap(RWCString& other) noexcept {
  if (this == &other) return;
  RWCString mine(static_cast<RWCString&&>(*this));
  stealFrom(other);
  other.stealFrom(mine);
}

// --- Editing ----------------------------------------------------------------------------------

// Appends to a copy of the text in fresh storage, there being no room where it stands.
RWCString& RWCString::appendAnew(const char* bytes, std::size_t length) {
  const std::size_t sum = checkedSum(length_, length);
  Buffer* fresh = newBuffer(capacityFor(sum));
  put(put(fresh->bytes(), data_, length_), bytes, length);
  release();
  buffer_ = fresh;
  data_ = fresh->bytes();
  setLength(sum);
  return *this;
}

RWCString& RWCString::insert(std::size_t position, const char* text) {
  return insert(position, text, lengthOf(text));
}

RWCString& RWCString::insert(std::size_t position, const RWCString& text) {
  return insert(position, text.data_, text.length_);
}

RWCString& RWCString::insert(std::size_t position, const char* bytes, std::size_t length) {
  checkPosition(position, length_);
  if (length == 0) return *this;
  const std::size_t sum = checkedSum(length_, length);
  const Piece tail{data_ + position, length_ - position};
  const bool isOwn = bytes >= data_ && bytes <= data_ + length_;
  if (canHold(sum) && !isOwn) {
    std::memmove(data_ + position + length, tail.bytes, tail.length);
    std::memcpy(data_ + position, bytes, length);
    setLength(sum);
  } else {
    rebuild(capacityFor(sum), {data_, position}, {bytes, length}, tail);
  }
  return *this;
}

RWCString& RWCString::remove(std::size_t position, std::size_t count) {
  checkPosition(position, length_);
  count = std::min(count, length_ - position);
  if (count == 0) return *this;
  const Piece tail{data_ + position + count, length_ - position - count};
  if (isShared()) {
    rebuild(position + tail.length, {data_, position}, {}, tail);
  } else {
    std::memmove(data_ + position, tail.bytes, tail.length);
    setLength(position + tail.length);
  }
  return *this;
}

void RWCString::resize(std::size_t length, char fill) {
  if (length <= length_) {
    remove(length);
    return;
  }
  if (!canHold(length)) rebuild(length, {data_, length_}, {}, {});
  std::memset(data_ + length_, pagescan::internal::toByte(fill), length - length_);
  setLength(length);
}

void RWCString::toLower() {
  const char* first =
      pagescan::internal::findFirstOf(data_, data_ + length_, pagescan::internal::kUpper);
  const auto start = static_cast<std::size_t>(first - data_);
  if (start == length_) return;
  unshare();
  std::transform(data_ + start, data_ + length_, data_ + start, pagescan::internal::toLower);
}

RWCString RWCString::strip(stripType type, char byte) const {
  const char* begin = data_;
  const char* end = data_ + length_;
  if ((type & leading) != 0) {
    while (begin < end && *begin == byte) ++begin;
  }
  if ((type & trailing) != 0) {
    while (end > begin && end[-1] == byte) --end;
  }
  const auto left = static_cast<std::size_t>(end - begin);
  return left == length_ ? *this : RWCString(begin, left);
}

// --- Searching and comparing ------------------------------------------------------------------

std::size_t RWCString::index(const char* pattern, std::size_t start,
                             caseCompare cmp) const noexcept {
  return indexOf({data_, length_}, {pattern, lengthOf(pattern)}, start, cmp);
}

std::size_t RWCString::index(const RWCString& pattern, std::size_t start,
                             caseCompare cmp) const noexcept {
  return indexOf({data_, length_}, {pattern.data_, pattern.length_}, start, cmp);
}

std::size_t RWCString::index(char byte, std::size_t start) const noexcept {
  if (start >= length_) return npos;
  const char* end = data_ + length_;
  return offsetOr(pagescan::internal::findByte(data_ + start, end, byte), end, data_);
}

int RWCString::compareTo(const char* other, caseCompare cmp) const noexcept {
  return compare({data_, length_}, {other, lengthOf(other)}, cmp);
}

int RWCString::compareTo(const RWCString& other, caseCompare cmp) const noexcept {
  return compare({data_, length_}, {other.data_, other.length_}, cmp);
}

unsigned RWCString::hash() const noexcept {
  return pagescan::internal::keyedHash({data_, length_});
}

bool operator==(const RWCString& a, const RWCString& b) noexcept {
  return a.length() == b.length() &&
         (a.data() == b.data() || std::memcmp(a.data(), b.data(), a.length()) == 0);
}

bool operator==(const RWCString& a, const char* b) noexcept {
  return a.compareTo(b) == 0;
}

// --- Concatenation ----------------------------------------------------------------------------

RWCString RWCString::joined(Piece head, Piece tail) {
  RWCString result;
  result.rebuild(checkedSum(head.length, tail.length), head, tail, {});
  return result;
}

RWCString operator+(const RWCString& s, const char* cs) {
  const std::size_t length = lengthOf(cs);
  return length == 0 ? s : RWCString::joined({s.data_, s.length_}, {cs, length});
}

RWCString operator+(const char* cs, const RWCString& s) {
  const std::size_t length = lengthOf(cs);
  return length == 0 ? s : RWCString::joined({cs, length}, {s.data_, s.length_});
}

RWCString operator+(const RWCString& a, const RWCString& b) {
  if (b.length_ == 0) return a;
  return a.length_ == 0 ? b : RWCString::joined({a.data_, a.length_}, {b.data_, b.length_});
}
