#include "output/replacement.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "output/write_all.h"

namespace pagescan::tool {

namespace {

std::string reason() {
  return std::strerror(errno);
}

// The file that a name leads to, through all links; the name itself where there is none.
std::string fileOf(const std::string& name) {
  char* const path = ::realpath(name.c_str(), nullptr);
  if (path == nullptr) return name;
  std::string file = path;
  std::free(path);
  return file;
}

bool isSameMoment(const timespec& a, const timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

// The mode of a new file.
mode_t usualMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

}  // namespace

Replacement& Replacement::operator=(Replacement&& other) noexcept {
  discard();
  name_ = std::move(other.name_);
  waiting_ = std::exchange(other.waiting_, "");
  suffix_ = std::move(other.suffix_);
  exists_ = other.exists_;
  status_ = other.status_;
  return *this;
}

void Replacement::discard() {
  if (!waiting_.empty()) ::unlink(waiting_.c_str());
  waiting_.clear();
}

std::string Replacement::prepare(const std::string& name, std::string_view bytes,
                                 const std::string& suffix) {
  name_ = fileOf(name);
  suffix_ = suffix;
  exists_ = true;
  if (::stat(name_.c_str(), &status_) != 0) return reason();
  if (!S_ISREG(status_.st_mode)) return "not a file that can be replaced";
  return writeBeside(bytes, true);
}

std::string Replacement::prepareNew(const std::string& name, std::string_view bytes) {
  name_ = fileOf(name);
  exists_ = ::stat(name_.c_str(), &status_) == 0;
  if (exists_ && !S_ISREG(status_.st_mode)) return "not a file that can be replaced";
  return writeBeside(bytes, false);
}

std::string Replacement::writeBeside(std::string_view bytes, bool keepsTimes) {
  const std::size_t folder = name_.rfind('/') + 1;  // 0 where there is none
  std::string waiting = name_.substr(0, folder) + ".pagescan-XXXXXX";
  const int descriptor = ::mkostemp(waiting.data(), O_CLOEXEC);
  if (descriptor < 0) return "cannot write beside it: " + reason();
  waiting_ = std::move(waiting);
  std::string failure = write(descriptor, bytes, keepsTimes);
  if (::close(descriptor) != 0 && failure.empty()) failure = reason();
  if (!failure.empty()) discard();
  return failure;
}

std::string Replacement::write(int descriptor, std::string_view bytes, bool keepsTimes) const {
  if (const int error = writeAll(descriptor, bytes); error != 0) return std::strerror(error);
  const bool isOthers = exists_ && (status_.st_uid != ::geteuid() || status_.st_gid != ::getegid());
  if (isOthers && ::fchown(descriptor, status_.st_uid, status_.st_gid) != 0) {
    return "cannot keep its owner: " + reason();
  }
  const mode_t mode = exists_ ? status_.st_mode & 07777 : usualMode();
  if (::fchmod(descriptor, mode) != 0) return "cannot keep its mode: " + reason();
  if (keepsTimes) {
    const timespec times[] = {status_.st_atim, status_.st_mtim};
    if (::futimens(descriptor, times) != 0) return "cannot keep its times: " + reason();
  }
  return ::fsync(descriptor) == 0 ? "" : reason();
}

std::string Replacement::commit() {
  struct stat now {};
  const bool isThere = ::stat(name_.c_str(), &now) == 0;
  const bool isSame =
      !exists_ || (isThere && now.st_ino == status_.st_ino && now.st_dev == status_.st_dev &&
                   now.st_size == status_.st_size && isSameMoment(now.st_mtim, status_.st_mtim));
  if (!isSame) return "not replaced: it has changed meanwhile";
  if (std::string failure = keepOld(); !failure.empty()) return failure;
  if (::rename(waiting_.c_str(), name_.c_str()) != 0) return reason();
  waiting_.clear();
  return "";
}

// A second name for the old file, which takes the place of an older one at once.
std::string Replacement::keepOld() const {
  if (suffix_.empty()) return "";
  const std::string kept = name_ + suffix_;
  const std::string link = waiting_ + "-old";
  if (::link(name_.c_str(), link.c_str()) != 0 || ::rename(link.c_str(), kept.c_str()) != 0) {
    return "cannot keep the old one as " + kept + ": " + reason();
  }
  return "";
}

}  // namespace pagescan::tool
