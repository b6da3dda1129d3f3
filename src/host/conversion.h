// What the stand-alone conversion routines share: a source of given or open length, and a
// destination of fixed size that always ends with a NUL.
#ifndef PAGESCAN_HOST_CONVERSION_H
#define PAGESCAN_HOST_CONVERSION_H

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "base/byte_class.h"
#include "base/kernels.h"

namespace pagescan::internal {

class Conversion {
 public:
  // A negative `sourceLength` means up to the closing NUL; `destinationSize` is at least 1.
  Conversion(const char* source, int sourceLength, char* destination, int destinationSize)
      : source_(source),
        sourceEnd_(source + (sourceLength < 0 ? std::strlen(source)
                                              : static_cast<std::size_t>(sourceLength))),
        destination_(destination),
        out_(destination),
        outEnd_(destination + destinationSize - 1) {}

  const char* source() const { return source_; }
  const char* sourceEnd() const { return sourceEnd_; }

  // Copies what is the same in both character sets. Returns whether another byte follows for which
  // the destination has room.
  bool copyAscii() {
    const std::ptrdiff_t most = std::min(sourceEnd_ - source_, room());
    const char* copied = kernels().copyAscii(source_, source_ + most, out_);
    out_ += copied - source_;
    source_ = copied;
    return source_ < sourceEnd_ && room() > 0;
  }

  // Whether the next byte is not an ASCII one: such bytes come in runs.
  bool isAtOther() const { return source_ < sourceEnd_ && toByte(*source_) >= 0x80; }

  std::ptrdiff_t room() const { return outEnd_ - out_; }
  void put(char byte) { *out_++ = byte; }
  void skip(std::ptrdiff_t bytes) { source_ += bytes; }

  // Closes the result and returns its length.
  int finish() {
    *out_ = '\0';
    return static_cast<int>(out_ - destination_);
  }

 private:
  const char* source_;
  const char* sourceEnd_;
  char* destination_;
  char* out_;
  char* outEnd_;
};

}  // namespace pagescan::internal

#endif
