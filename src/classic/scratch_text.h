// ScratchText: a byte buffer for building one text, on the stack while it is short.
#ifndef PAGESCAN_SCRATCH_TEXT_H
#define PAGESCAN_SCRATCH_TEXT_H

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace pagescan::internal {

// The room is fixed before the first byte: the caller knows the most that will come. Nothing is
// checked. Lives in one function on one thread.
class ScratchText {
 public:
  // Drops what was built and makes room.
  // Fails   std::bad_alloc.
  void start(std::size_t room) {
    if (room > sizeof short_) {
      long_.reset(new char[room]);
      begin_ = long_.get();
    } else {
      begin_ = short_;
    }
    end_ = begin_;
  }

  void append(std::string_view text) {
    if (!text.empty()) std::memcpy(end_, text.data(), text.size());
    end_ += text.size();
  }
  void append(char byte) { *end_++ = byte; }

  // Cuts the text back to `length` bytes.
  void shorten(std::size_t length) { end_ = begin_ + length; }

  char last() const { return end_[-1]; }
  bool empty() const { return end_ == begin_; }
  std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
  std::string_view text() const { return {begin_, size()}; }

 private:
  char short_[1024];
  std::unique_ptr<char[]> long_;
  char* begin_ = short_;
  char* end_ = short_;
};

}  // namespace pagescan::internal

#endif
