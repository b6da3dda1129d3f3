#include "save/folder_writer.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "save/encoding_told.h"
#include "save/whole_file.h"

namespace pagescan::tool {

namespace {

constexpr std::string_view kFiles = "files/";

bool isInFiles(const std::string& name) {
  return name.compare(0, kFiles.size(), kFiles) == 0;
}

// As the copy `from` names the copy `to`. Names need no escape in a URL.
std::string relativeName(const std::string& from, const std::string& to) {
  if (!isInFiles(from)) return to;
  return isInFiles(to) ? to.substr(kFiles.size()) : "../" + to;
}

}  // namespace

FolderWriter::FolderWriter(std::string folder, Resources& resources, Tell tell)
    : folder_(std::move(folder)), resources_(resources), tell_(std::move(tell)) {}

std::string FolderWriter::write(const Resource& page) {
  std::error_code error;
  std::filesystem::create_directory(folder_ + "/files", error);
  if (error) return "files: " + error.message();
  if (!syncWith(folder_)) return std::strerror(errno);  // the bodies that will be moved
  given_[&page] = kPageName;
  waiting_.push_back(&page);
  while (!waiting_.empty()) {
    const Resource& resource = *waiting_.front();
    waiting_.pop_front();
    const std::string failure = writeOne(resource);
    if (!failure.empty()) return nameOf(resource) + ": " + failure;
  }
  return "";
}

std::string FolderWriter::nameOf(const Resource& resource) const {
  const auto found = given_.find(&resource);
  return found == given_.end() ? "" : found->second;
}

std::string FolderWriter::give(const Resource& resource) {
  const auto found = given_.find(&resource);
  if (found != given_.end()) return found->second;
  const std::string name = std::string(kFiles) + names_.allot(resource.url(), resource.type);
  waiting_.push_back(&resource);
  return given_[&resource] = name;
}

// A link to a page that is a copy, too, stays among the copies.
std::optional<std::string> FolderWriter::copyFor(const Resource& from, const std::string& url,
                                                 Kind kind) {
  const Resource* to = resources_.find(url);
  if (to == nullptr || !to->isComplete) return std::nullopt;
  if (kind != Kind::load && !to->isPage()) return std::nullopt;
  return relativeName(nameOf(from), give(*to));
}

std::string FolderWriter::writeOne(const Resource& resource) {
  const std::string path = folder_ + "/" + nameOf(resource);
  const bool isText = resource.isPage() || resource.isSheet();
  if (!isText && !(resource.type.isScript() && !resource.type.charset.empty())) {
    const std::string body = resources_.bodyPath(resource);
    return std::rename(body.c_str(), path.c_str()) == 0 ? "" : std::strerror(errno);
  }
  std::string bytes;
  const std::string failure = resources_.read(resource, bytes);
  return failure.empty() ? writeText(resource, bytes) : failure;
}

std::string FolderWriter::writeText(const Resource& resource, const std::string& bytes) {
  const Original original = Resources::originalOf(resource, bytes);
  const CopyOf copyOf = [&](const std::string& url, Kind kind) {
    return copyFor(resource, url, kind);
  };
  CopyText copy;
  if (resource.isPage()) {
    copy = rewritePage(original, copyOf);
  } else if (resource.isSheet()) {
    copy = rewriteSheet(original, copyOf);
  } else {
    copy.bytes = withEncodingOfScript(bytes, original.charset);
  }
  for (const std::string& message : copy.told) tell_(resource, message);
  WholeFile file(folder_ + "/" + nameOf(resource));
  file.write(copy.bytes);
  return file.commit() ? "" : std::strerror(file.error());
}

}  // namespace pagescan::tool
