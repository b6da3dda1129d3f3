#include "save/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <utility>

#include "output/write_all.h"

namespace pagescan::tool {

WholeFile::WholeFile(std::string path) : path_(std::move(path)), descriptor_(-1) {
  ::unlink(partPath().c_str());  // what a run left that was stopped
  descriptor_ =
      ::open(partPath().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
  if (descriptor_ < 0) error_ = errno;
}

WholeFile::~WholeFile() {
  if (descriptor_ < 0) return;
  close();
  ::unlink(partPath().c_str());
}

void WholeFile::close() {
  if (::close(descriptor_) != 0 && error_ == 0) error_ = errno;
  descriptor_ = -1;
}

void WholeFile::write(std::string_view bytes) {
  if (error_ == 0) error_ = writeAll(descriptor_, bytes);
}

bool WholeFile::commit(bool isDurable) {
  if (descriptor_ < 0) return false;
  if (isDurable && error_ == 0 && ::fsync(descriptor_) != 0) error_ = errno;
  close();
  if (error_ == 0 && std::rename(partPath().c_str(), path_.c_str()) != 0) error_ = errno;
  if (error_ != 0) ::unlink(partPath().c_str());
  return error_ == 0;
}

bool syncWith(const std::string& folder) {
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool isSynced = ::syncfs(descriptor) == 0;
  const int error = errno;
  ::close(descriptor);
  errno = error;
  return isSynced;
}

bool readWhole(const std::string& path, std::string& bytes) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  struct stat facts = {};
  bool isRead = ::fstat(descriptor, &facts) == 0;
  if (isRead) bytes.resize(static_cast<std::size_t>(facts.st_size));
  std::size_t size = 0;
  while (isRead && size < bytes.size()) {
    const ssize_t count = ::read(descriptor, bytes.data() + size, bytes.size() - size);
    if (count == 0) break;
    if (count > 0) size += static_cast<std::size_t>(count);
    if (count < 0 && errno != EINTR) isRead = false;
  }
  const int error = errno;
  ::close(descriptor);
  errno = error;
  if (isRead) bytes.resize(size);
  return isRead;
}

}  // namespace pagescan::tool
