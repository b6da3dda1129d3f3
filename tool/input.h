// Reading the inputs of a command: files, or standard input.
#ifndef PAGESCAN_TOOL_INPUT_H
#define PAGESCAN_TOOL_INPUT_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "exit_status.h"
#include "input_files.h"
#include "output/output.h"
#include "rw/rwcstring.h"

namespace pagescan::tool {

// The classic library counts bytes in an int, the page reader in 32 bits.
inline constexpr std::uint64_t kMostClassicBytes = 0x7FFF'FFFF;
inline constexpr std::uint64_t kMostInputBytes = 0xFFFF'FFFF;

struct InputContent {
  std::string_view bytes;
  std::string failure;  // why it could not be read; empty when it could
};

// Reads whole inputs, one after the other, into one block of memory.
class InputReader {
 public:
  // mostBytes  a longer input is refused
  explicit InputReader(std::uint64_t mostBytes) : mostBytes_(mostBytes) {}

  // All bytes of the file `name`, or of standard input for "-"; valid up to the next call.
  // Fails  std::bad_alloc
  InputContent read(const std::string& name);

  // Gives the memory back.
  void clear();

 private:
  std::string readFrom(int descriptor, std::size_t& size);
  void growBeyond(std::size_t size);

  std::uint64_t mostBytes_;
  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_ = 0;
};

// What a command does with one input; it may change the bytes. Returns whether that succeeded.
using UseInput = std::function<bool(const std::string& name, RWCString& bytes)>;

// Reads one input after the other and puts each to use. One that fails, in whatever way, is named
// in a message and does not stop those after it; an output that fails does.
ExitStatus forEachInput(const InputFiles& files, const Output& output, const UseInput& use);

// The same for inputs that are pages or other text of one byte a letter: one that looks like UTF-16
// or like no text at all fails.
ExitStatus forEachText(const InputFiles& files, const Output& output, const UseInput& use);

// Calls `work`, which returns why it failed, or nothing. Returns that, or what was thrown.
std::string whatStops(const std::function<std::string()>& work);

}  // namespace pagescan::tool

#endif
