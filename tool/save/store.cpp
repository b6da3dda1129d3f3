#include "save/store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "lines.h"
#include "save/sha256.h"
#include "save/whole_file.h"

namespace pagescan::tool {

namespace {

namespace fs = std::filesystem;

constexpr char kHead[] = "pagescan save 1\t";

std::string reason(int error) {
  return std::strerror(error);
}

std::vector<std::string> fieldsOf(std::string_view line) {
  std::vector<std::string> fields;
  forEachPiece(line, '\t', [&](std::string_view field) { fields.emplace_back(field); });
  return fields;
}

// Number, type, length, SHA-256, time, then the status and the URL of each hop. No field holds a
// tab or a line end: URLs are serialised, types are of tokens.
std::string lineOf(const Fetched& fetched) {
  std::string line = std::to_string(fetched.number) + "\t" + fetched.contentType + "\t" +
                     std::to_string(fetched.length) + "\t" + fetched.sha256 + "\t" + fetched.time;
  for (const Hop& hop : fetched.hops) line += "\t" + std::to_string(hop.status) + "\t" + hop.url;
  return line + "\n";
}

std::optional<Fetched> readLine(std::string_view line) {
  const std::vector<std::string> fields = fieldsOf(line);
  if (fields.size() < 7 || fields.size() % 2 == 0) return std::nullopt;
  Fetched fetched;
  fetched.number = std::strtoull(fields[0].c_str(), nullptr, 10);
  fetched.contentType = fields[1];
  fetched.length = std::strtoull(fields[2].c_str(), nullptr, 10);
  fetched.sha256 = fields[3];
  fetched.time = fields[4];
  for (std::size_t i = 5; i < fields.size(); i += 2) {
    fetched.hops.push_back({fields[i + 1], std::strtol(fields[i].c_str(), nullptr, 10)});
  }
  return fetched;
}

bool isIntact(const std::string& path, const Fetched& fetched) {
  std::string bytes;
  if (!readWhole(path, bytes) || bytes.size() != fetched.length) return false;
  Sha256 hash;
  hash.add(bytes);
  return hash.hex() == fetched.sha256;
}

}  // namespace

Store::~Store() {
  if (journal_ >= 0) ::close(journal_);
}

std::string Store::open(const std::string& folder, const std::string& url, bool isGoingOn) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) return error.message();
  path_ = folder + "/.saving";
  const bool hasRun = fs::is_directory(path_, error);
  if (!hasRun && !fs::is_empty(folder, error)) {
    return isGoingOn ? "holds no run that was stopped" : "is not empty";
  }
  if (hasRun && !isGoingOn) return "holds a run that was stopped: --continue goes on with it";
  fs::create_directory(path_, error);
  const std::string journal = path_ + "/journal";
  journal_ = ::open(journal.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0666);
  if (journal_ < 0) return reason(errno);
  if (::flock(journal_, LOCK_EX | LOCK_NB) != 0) return "another run is at work in it";
  return takeUp(url);
}

std::string Store::takeUp(const std::string& url) {
  const std::string head = kHead + url + "\n";
  std::string text;
  if (!readWhole(path_ + "/journal", text)) return reason(errno);
  text.resize(text.rfind('\n') + 1);  // a line that was being written does not count
  if (::ftruncate(journal_, static_cast<off_t>(text.size())) != 0) return reason(errno);
  if (text.empty()) {
    return ::write(journal_, head.data(), head.size()) == static_cast<ssize_t>(head.size())
               ? ""
               : reason(errno);
  }
  if (text.substr(0, head.size()) != head) return "holds a stopped run of another URL";
  forEachLine(std::string_view(text).substr(head.size()), [&](std::string_view line) {
    std::optional<Fetched> fetched = readLine(line);
    if (!fetched) return;
    next_ = std::max(next_, fetched->number + 1);
    if (isIntact(bodyPath(fetched->number), *fetched)) {
      kept_[fetched->hops.front().url] = std::move(*fetched);
    }
  });
  return "";
}

std::string Store::bodyPath(std::size_t number) const {
  return path_ + "/" + std::to_string(number);
}

bool Store::note(const Fetched& fetched) {
  const std::string line = lineOf(fetched);
  return ::write(journal_, line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

std::optional<Fetched> Store::find(const std::string& url) const {
  const auto found = kept_.find(url);
  if (found == kept_.end()) return std::nullopt;
  return found->second;
}

void Store::remove() {
  std::error_code error;
  fs::remove_all(path_, error);
}

}  // namespace pagescan::tool
