#include "input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "input_kind.h"
#include "output/messages.h"

namespace pagescan::tool {

namespace {

constexpr std::size_t kFirstCapacity = 262144;

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

  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

// The size of a regular file; 0 for what has none beforehand.
std::uint64_t sizeOf(int descriptor) {
  struct stat status {};
  const bool isRegular = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  return isRegular ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::string tooLarge(std::uint64_t mostBytes) {
  const std::uint64_t gibibytes = (mostBytes + 1) >> 30;
  return "too large: " + std::to_string(gibibytes) + " GiB or more";
}

// Why the input is not what a command for pages reads; empty when it may be.
std::string whyNoText(std::string_view bytes) {
  const std::string_view kind = looksLikeUtf16(bytes) ? "UTF-16" : binaryKindOf(bytes);
  return kind.empty() ? "" : "not read: it looks like " + std::string(kind);
}

using Objection = std::function<std::string(std::string_view bytes)>;

ExitStatus forEach(const InputFiles& files, const Output& output, const Objection& objection,
                   const UseInput& use) {
  bool isWhole = true;
  InputReader reader(kMostClassicBytes);
  for (const std::string& name : namesOf(files, isWhole)) {
    bool isUsed = true;
    const std::string failure = whatStops([&] {
      InputContent input = reader.read(name);
      if (input.failure.empty()) input.failure = objection(input.bytes);
      if (!input.failure.empty()) return input.failure;
      RWCString bytes(input.bytes.data(), input.bytes.size());
      reader.clear();
      isUsed = use(name, bytes);
      return input.failure;
    });
    if (!failure.empty()) tellAbout(name, failure);
    isWhole = isWhole && isUsed && failure.empty();
    if (output.error() != 0) break;
  }
  return isWhole ? kSuccess : kFailed;
}

}  // namespace

InputContent InputReader::read(const std::string& name) {
  const InputFile file(name);
  if (file.descriptor() < 0) return {{}, std::strerror(errno)};
  std::size_t size = 0;
  std::string failure = readFrom(file.descriptor(), size);
  if (!failure.empty()) return {{}, std::move(failure)};
  return {{buffer_.get(), size}, ""};
}

std::string InputReader::readFrom(int descriptor, std::size_t& size) {
  const std::uint64_t expected = sizeOf(descriptor);
  if (expected > mostBytes_) return tooLarge(mostBytes_);
  // One byte more than is there lets the first reading see the end.
  growBeyond(std::max<std::size_t>(kFirstCapacity - 1, expected));
  for (;;) {
    const ssize_t count = ::read(descriptor, buffer_.get() + size, capacity_ - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::strerror(errno);
    if (count == 0) return "";
    size += static_cast<std::size_t>(count);
    if (size > mostBytes_) return tooLarge(mostBytes_);
    if (size == capacity_) growBeyond(size);
  }
}

// Keeps the bytes, and at least doubles the room for them.
void InputReader::growBeyond(std::size_t size) {
  if (size < capacity_) return;
  const std::size_t capacity = std::max(size + 1, capacity_ * 2);
  auto grown = std::make_unique_for_overwrite<char[]>(capacity);
  std::copy_n(buffer_.get(), capacity_, grown.get());
  buffer_ = std::move(grown);
  capacity_ = capacity;
}

void InputReader::clear() {
  if (capacity_ <= kFirstCapacity) return;
  buffer_.reset();
  capacity_ = 0;
}

std::string whatStops(const std::function<std::string()>& work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return "out of memory";
  } catch (const std::exception& error) {
    return error.what();
  }
}

ExitStatus forEachInput(const InputFiles& files, const Output& output, const UseInput& use) {
  return forEach(
      files, output, [](std::string_view) { return ""; }, use);
}

ExitStatus forEachText(const InputFiles& files, const Output& output, const UseInput& use) {
  return forEach(files, output, whyNoText, use);
}

}  // namespace pagescan::tool
