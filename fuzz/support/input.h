// What the fuzz targets share: how an input is read, and how a broken promise is reported.
//
// An input is text, so that seeds can be written by hand. Its first byte chooses the version of the
// kernels; then come numbers, one byte each, and texts, each ended by a byte 255 or by the end of
// the input. What the library is given stands in a block of exactly its size.
#ifndef PAGESCAN_FUZZ_SUPPORT_INPUT_H
#define PAGESCAN_FUZZ_SUPPORT_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "base/kernels.h"
#include "rw/rwcstring.h"

namespace fuzz {

// Ends the program when a promise does not hold.
inline void check(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

// A heap block of exactly the bytes of a text.
class Block {
 public:
  explicit Block(std::string_view text) : size_(text.size()), bytes_(new char[text.size()]) {
    std::copy(text.begin(), text.end(), bytes_.get());
  }

  const char* data() const { return bytes_.get(); }
  std::size_t size() const { return size_; }
  int length() const { return static_cast<int>(size_); }

 private:
  std::size_t size_;
  std::unique_ptr<char[]> bytes_;
};

// The same with a closing NUL, which is the block's last byte. The text ends at its first NUL.
class CString : public Block {
 public:
  explicit CString(std::string_view text)
      : Block(std::string(text.substr(0, text.find('\0'))) + '\0') {}
};

inline RWCString stringOf(std::string_view text) {
  const Block block(text);
  return {block.data(), block.size()};
}

inline std::string textOf(const RWCString& text) {
  check(text.data()[text.length()] == '\0', "a closing NUL follows a string");
  return {text.data(), text.length()};
}

class Input {
 public:
  // A version of the kernels that the machine lacks is replaced by the portable one, so that an
  // input does the same whatever ran before it.
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {
    using pagescan::internal::KernelLevel;
    constexpr KernelLevel kLevels[] = {KernelLevel::portable, KernelLevel::sse2, KernelLevel::avx2,
                                       KernelLevel::avx512};
    if (!pagescan::internal::useKernels(kLevels[number(std::size(kLevels))])) {
      pagescan::internal::useKernels(KernelLevel::portable);
    }
  }

  bool isEmpty() const { return rest_.empty(); }

  // A number below `below`, which is at most 256. The digits, and then the letters, are the numbers
  // from 0 on; 0 at the end of the input.
  std::size_t number(std::size_t below) {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return (byte + 256U - '0') % 256U % below;
  }

  bool flag() { return number(2) != 0; }

  // Up to the next byte 255.
  std::string_view text() {
    const std::size_t end = std::min(rest_.find('\xFF'), rest_.size());
    const std::string_view result = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return result;
  }

  // All that is left.
  std::string_view rest() {
    const std::string_view result = rest_;
    rest_ = {};
    return result;
  }

 private:
  std::string_view rest_;
};

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

#endif
