#include "output/output.h"

#include <unistd.h>

#include <cstddef>

#include "output/write_all.h"

namespace pagescan::tool {

namespace {

constexpr std::size_t kBufferSize = 65536;

}  // namespace

Output::Output(int descriptor) : descriptor_(descriptor) {
  buffer_.reserve(kBufferSize);
}

void Output::write(std::string_view bytes) {
  if (buffer_.size() + bytes.size() > kBufferSize) flush();
  if (bytes.size() > kBufferSize) {
    send(bytes);
  } else {
    buffer_.append(bytes);
  }
}

void Output::flush() {
  send(buffer_);
  buffer_.clear();
}

bool Output::isTerminal() const {
  return ::isatty(descriptor_) != 0;
}

void Output::send(std::string_view bytes) {
  if (error_ == 0) error_ = writeAll(descriptor_, bytes);
}

}  // namespace pagescan::tool
