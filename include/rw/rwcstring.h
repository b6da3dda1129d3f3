// RWCString: a mutable, length-counted byte string with cheap copies.
//
// Bytes      Any, NUL included. Positions and lengths are byte counts, ranges half-open; a failed
//            search yields `npos`. The bytes are always followed by a NUL that does not count.
// Storage    Texts of up to 15 bytes stand in the object; longer ones stand in a heap buffer that
//            copies share until one of them is written to. Neither an empty string nor a copy of a
//            shareable string allocates.
// Case       Folding is per byte and of the ASCII letters alone, whatever the process's locale.
// Errors     std::bad_alloc; RWBoundsErr and std::out_of_range where an operation says so. A failed
//            operation leaves the string as it was.
// Threads    Distinct objects may be used on different threads at once, also when they share a
//            buffer; one object belongs to one thread at a time.
#ifndef PAGESCAN_RW_RWCSTRING_H
#define PAGESCAN_RW_RWCSTRING_H

#include <sys/single_threaded.h>

#include <atomic>
#include <cstddef>
#include <cstring>

#include "../pagescan_export.h"

class RWCRegexp;

class PAGESCAN_EXPORT RWCString {
 public:
  // How a search or comparison takes letters, and which runs strip takes off.
  enum caseCompare { exact = 0, ignoreCase = 1 };
  enum stripType { leading = 1, trailing = 2, both = 3 };

  // The result of a failed search.
  static constexpr std::size_t npos = static_cast<std::size_t>(-1);

  RWCString() noexcept : data_(local_), length_(0) { local_[0] = '\0'; }

  // Copies the bytes up to the closing NUL; a null pointer gives an empty string.
  RWCString(const char* text);

  // Copies `length` bytes; a null pointer gives an empty string.
  RWCString(const char* bytes, std::size_t length);

  // A copy shares the bytes, a string moved from is empty, a null pointer assigns an empty text.
  RWCString(const RWCString& other) { adoptFrom(other); }
  RWCString(RWCString&& other) noexcept { stealFrom(other); }
  RWCString& operator=(const RWCString& other) {
    if (this != &other) {
      RWCString taken(other);
      release();
      stealFrom(taken);
    }
    return *this;
  }
  RWCString& operator=(RWCString&& other) noexcept {
    if (this != &other) {
      release();
      stealFrom(other);
    }
    return *this;
  }
  RWCString& operator=(const char* text);
  ~RWCString() { release(); }

  // The number of bytes.
  std::size_t length() const noexcept { return length_; }

  // The bytes and their closing NUL, valid until the string changes or dies. Never copies.
  const char* data() const noexcept { return data_; }

  // Bounds-tested. Read through a const string, `index` may equal the length (the closing NUL).
  // Fails   RWBoundsErr when the index is out of range.
  char operator[](std::size_t index) const {
    if (index > length_) throwBounds(index, length_);
    return data_[index];
  }

  // A writable reference, valid until the string changes. It ends the sharing of this buffer for
  // good: copies made afterwards have bytes of their own. A string that is not const gives this one
  // also where a byte is only read: read through data().
  // Fails   RWBoundsErr when `index` is not below the length; std::bad_alloc while unsharing.
  // Cost    one copy of the bytes when they are shared.
  char& operator[](std::size_t index) {
    if (index >= length_) throwBounds(index, length_ == 0 ? 0 : length_ - 1);
    return writableByte(index);
  }

  // The same two without the test of the index.
  char operator()(std::size_t index) const noexcept { return data_[index]; }
  char& operator()(std::size_t index) { return writableByte(index); }

  // The bytes of the leftmost match, empty when there is none.
  RWCString operator()(const RWCRegexp& pattern) const;

  // The first occurrence at or after `start`, or npos; also npos when `start` lies beyond the
  // length. An empty pattern is found at `start`; a null one counts as empty.
  // Cost    linear in the text for patterns of a bounded length.
  std::size_t index(const char* pattern, std::size_t start = 0, caseCompare = exact) const noexcept;
  std::size_t index(const RWCString& pattern, std::size_t start = 0,
                    caseCompare = exact) const noexcept;
  std::size_t index(char byte, std::size_t start = 0) const noexcept;

  // The leftmost match at or after `start`, the longest one from there, or npos. `matchLength`
  // receives its length and is left alone when there is no match.
  // Cost    linear in the text, whatever the text.
  std::size_t index(const RWCRegexp& pattern, std::size_t start = 0) const;
  std::size_t index(const RWCRegexp& pattern, std::size_t* matchLength,
                    std::size_t start = 0) const;

  // Editing in place. The bytes given may be the string's own.
  RWCString& append(const char* text) { return append(text, text ? std::strlen(text) : 0); }
  RWCString& append(const char* bytes, std::size_t length) {
    if (length == 0) return *this;
    char* const data = data_;
    const std::size_t before = length_;
    if (length > mostInPlace(before) - before) return appendAnew(bytes, length);
    const std::size_t sum = before + length;
    length_ = sum;
    std::memcpy(data + before, bytes, length);  // its own bytes end where these begin
    data[sum] = '\0';
    return *this;
  }
  RWCString& append(const RWCString& text) { return append(text.data_, text.length_); }
  RWCString& append(char byte) { return append(&byte, 1); }
  RWCString& operator+=(const RWCString& text) { return append(text.data_, text.length_); }
  RWCString& operator+=(const char* text) { return append(text); }
  RWCString& operator+=(char byte) { return append(&byte, 1); }

  // Fails   std::out_of_range when `position` lies beyond the length.
  RWCString& insert(std::size_t position, const char* text);
  RWCString& insert(std::size_t position, const char* bytes, std::size_t length);
  RWCString& insert(std::size_t position, const RWCString& text);

  // Removes up to `count` bytes; the count is cut to what is left.
  // Fails   std::out_of_range when `position` lies beyond the length.
  RWCString& remove(std::size_t position, std::size_t count = npos);

  // Cuts the string, or fills it up with `fill`.
  void resize(std::size_t length, char fill = '\0');

  // Exchanges the two texts in constant time.
  void swap(RWCString& other) noexcept;

  // Lower-cases the ASCII letters in place.
  void toLower();

  // The text without its leading, trailing or both runs of `byte`.
  RWCString strip(stripType type = trailing, char byte = ' ') const;

  // Below, at or above 0 as this text sorts before, with or after the other, by unsigned bytes.
  int compareTo(const char* other, caseCompare = exact) const noexcept;
  int compareTo(const RWCString& other, caseCompare = exact) const noexcept;

  // Equal strings have equal hashes within one process. Each process has hashes of its own, so that
  // no page can be made whose names all have the same one: they must not be stored.
  // Cost    linear in the text.
  unsigned hash() const noexcept;

 private:
  // The head of a heap buffer; the bytes follow it.
  class Buffer {
   public:
    explicit Buffer(std::size_t capacity) noexcept : owners_(1), capacity_(capacity) {}

    std::size_t capacity() const noexcept { return capacity_; }
    char* bytes() noexcept { return reinterpret_cast<char*>(this + 1); }

    // False when the buffer must not be shared; otherwise counts one more owner.
    bool share() noexcept {
      const std::size_t owners = owners_.load(std::memory_order_relaxed);
      if (owners == kNeverShared) return false;
      if (__libc_single_threaded) {
        owners_.store(owners + 1, std::memory_order_relaxed);
      } else {
        owners_.fetch_add(1, std::memory_order_relaxed);
      }
      return true;
    }

    // Counts one owner less; true when that was the last one.
    bool drop() noexcept {
      const std::size_t owners = owners_.load(std::memory_order_acquire);
      if (owners <= 1) return true;
      if (__libc_single_threaded) {
        owners_.store(owners - 1, std::memory_order_relaxed);
        return false;
      }
      return owners_.fetch_sub(1, std::memory_order_acq_rel) == 1;
    }

    bool isShared() const noexcept { return owners_.load(std::memory_order_acquire) > 1; }
    void endSharing() noexcept { owners_.store(kNeverShared, std::memory_order_relaxed); }

   private:
    static constexpr std::size_t kNeverShared = 0;  // one owner, who has given out a reference

    std::atomic<std::size_t> owners_;
    std::size_t capacity_;
  };

  struct Piece {
    const char* bytes;
    std::size_t length;
  };

  static constexpr std::size_t kLocalCapacity = 15;

  bool isLocal() const noexcept { return data_ == local_; }
  bool isShared() const noexcept { return !isLocal() && buffer_->isShared(); }
  std::size_t capacity() const noexcept { return isLocal() ? kLocalCapacity : buffer_->capacity(); }
  bool canHold(std::size_t length) const noexcept { return !isShared() && length <= capacity(); }
  // The most bytes that a text of `length` may grow to where it stands: a shared buffer is full.
  std::size_t mostInPlace(std::size_t length) const noexcept {
    if (isLocal()) return kLocalCapacity;
    const Buffer& buffer = *buffer_;
    return buffer.isShared() ? length : buffer.capacity();
  }
  void release() noexcept {
    if (!isLocal() && buffer_->drop()) freeBuffer(buffer_);
  }
  void setLength(std::size_t length) noexcept {
    length_ = length;
    data_[length] = '\0';
  }
  void adoptFrom(const RWCString& other) {
    length_ = other.length_;
    if (other.isLocal()) {
      data_ = local_;
      std::memcpy(local_, other.local_, sizeof local_);
    } else if (other.buffer_->share()) {
      data_ = other.data_;
      buffer_ = other.buffer_;
    } else {
      copyBytes(other.data_, other.length_);
    }
  }
  void stealFrom(RWCString& other) noexcept {
    length_ = other.length_;
    if (other.isLocal()) {
      data_ = local_;
      std::memcpy(local_, other.local_, sizeof local_);
    } else {
      data_ = other.data_;
      buffer_ = other.buffer_;
      other.data_ = other.local_;
    }
    other.setLength(0);
  }

  static Buffer* newBuffer(std::size_t capacity);
  static void freeBuffer(Buffer* buffer) noexcept;
  [[noreturn]] static void throwBounds(std::size_t index, std::size_t lastValid);

  friend PAGESCAN_EXPORT RWCString operator+(const RWCString& s, const char* cs);
  friend PAGESCAN_EXPORT RWCString operator+(const char* cs, const RWCString& s);
  friend PAGESCAN_EXPORT RWCString operator+(const RWCString& a, const RWCString& b);

  static RWCString joined(Piece head, Piece tail);
  std::size_t capacityFor(std::size_t length) const noexcept;
  RWCString& appendAnew(const char* bytes, std::size_t length);
  void copyBytes(const char* bytes, std::size_t length);
  void rebuild(std::size_t capacity, Piece head, Piece middle, Piece tail);
  void unshare();
  char& writableByte(std::size_t index);

  char* data_;  // the bytes: local_, or those of *buffer_
  std::size_t length_;
  union {
    char local_[kLocalCapacity + 1];
    Buffer* buffer_;
  };
};

// Comparison by bytes, case-sensitive; a null pointer counts as an empty text.
PAGESCAN_EXPORT bool operator==(const RWCString& a, const RWCString& b) noexcept;
PAGESCAN_EXPORT bool operator==(const RWCString& a, const char* b) noexcept;
inline bool operator==(const char* a, const RWCString& b) noexcept {
  return b == a;
}
inline bool operator!=(const RWCString& a, const RWCString& b) noexcept {
  return !(a == b);
}
inline bool operator!=(const RWCString& a, const char* b) noexcept {
  return !(a == b);
}
inline bool operator!=(const char* a, const RWCString& b) noexcept {
  return !(b == a);
}
inline bool operator<(const RWCString& a, const RWCString& b) noexcept {
  return a.compareTo(b) < 0;
}

// Both texts in order, in a new string. An empty operand yields a copy of the other.
// Cost    one allocation at the most.
PAGESCAN_EXPORT RWCString operator+(const RWCString& s, const char* cs);
PAGESCAN_EXPORT RWCString operator+(const char* cs, const RWCString& s);
PAGESCAN_EXPORT RWCString operator+(const RWCString& a, const RWCString& b);

#endif
