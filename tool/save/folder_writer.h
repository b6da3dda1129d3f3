// FolderWriter: writes copies into a folder that opens without the server.
//
// The page is "index.html", everything else has a name of its own in "files/".
#ifndef PAGESCAN_TOOL_SAVE_FOLDER_WRITER_H
#define PAGESCAN_TOOL_SAVE_FOLDER_WRITER_H

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

#include "save/file_names.h"
#include "save/resources.h"

namespace pagescan::tool {

inline constexpr char kPageName[] = "index.html";

class FolderWriter {
 public:
  // Told what was taken off of a copy, or could not be done.
  using Tell = std::function<void(const Resource& resource, const std::string& message)>;

  FolderWriter(std::string folder, Resources& resources, Tell tell);

  // Writes the page and all copies that the written ones name. The bodies of what needs no
  // rewriting are moved. Memory holds one page or sheet at a time.
  // Returns  why a copy could not be written; empty when all could
  std::string write(const Resource& page);

  // The name of the copy of a resource, relative to the folder; empty where there is none.
  std::string nameOf(const Resource& resource) const;

 private:
  std::string give(const Resource& resource);
  std::string writeOne(const Resource& resource);
  std::string writeText(const Resource& resource, const std::string& bytes);
  std::optional<std::string> copyFor(const Resource& from, const std::string& url, Kind kind);

  std::string folder_;
  Resources& resources_;
  Tell tell_;
  FileNames names_;
  std::unordered_map<const Resource*, std::string> given_;
  std::deque<const Resource*> waiting_;  // named, and not yet written
};

}  // namespace pagescan::tool

#endif
