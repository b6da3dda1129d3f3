#include "input.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "output/messages.h"

namespace pagescan::tool {

namespace {

constexpr std::size_t kChunkSize = 262144;

// An open file; standard input stays open.
class InputFile {
 public:
  explicit InputFile(const std::string& name)
      : descriptor_(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC)) {}
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile() {
    if (descriptor_ > STDIN_FILENO) ::close(descriptor_);
  }

  bool isOpen() const { return descriptor_ >= 0; }

  // Whether everything up to the end could be read; errno tells why not.
  bool readAll(RWCString& bytes) const {
    std::string chunk(kChunkSize, '\0');
    for (;;) {
      const ssize_t count = ::read(descriptor_, chunk.data(), chunk.size());
      if (count == 0) return true;
      if (count > 0) {
        bytes.append(chunk.data(), static_cast<std::size_t>(count));
      } else if (errno != EINTR) {
        return false;
      }
    }
  }

 private:
  int descriptor_;
};

}  // namespace

std::optional<RWCString> readInput(const std::string& name) {
  const InputFile file(name);
  RWCString bytes;
  if (file.isOpen() && file.readAll(bytes)) return bytes;
  tellAbout(name, std::strerror(errno));
  return std::nullopt;
}

ExitStatus forEachInput(const Names& names, const Output& output, const UseInput& use) {
  ExitStatus status = kSuccess;
  for (const std::string& name : names.empty() ? Names{"-"} : names) {
    std::optional<RWCString> bytes = readInput(name);
    if (!bytes || !use(name, *bytes)) status = kFailed;
    if (output.error() != 0) break;
  }
  return status;
}

}  // namespace pagescan::tool
