// Output: bytes on their way to a file descriptor, buffered.
//
// The first write that fails ends the output: what follows is dropped, and error() tells why.
#ifndef PAGESCAN_TOOL_OUTPUT_H
#define PAGESCAN_TOOL_OUTPUT_H

#include <string>
#include <string_view>

namespace pagescan::tool {

class Output {
 public:
  explicit Output(int descriptor);

  // Allocates nothing: what is written out of memory is written all the same.
  void write(std::string_view bytes);
  void flush();

  // The errno of the write that failed, or 0.
  int error() const { return error_; }

  bool isTerminal() const;

 private:
  void send(std::string_view bytes);

  int descriptor_;
  int error_ = 0;
  std::string buffer_;
};

}  // namespace pagescan::tool

#endif
