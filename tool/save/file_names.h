// FileNames: names for what was fetched that every file system takes.
#ifndef PAGESCAN_TOOL_SAVE_FILE_NAMES_H
#define PAGESCAN_TOOL_SAVE_FILE_NAMES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "save/media_type.h"

namespace pagescan::tool {

// A name is made of the last segment of the URL's path and the extension of the media type. It has
// only the characters a-z, 0-9, "-", "_" and one "." before its extension, so that it is no path,
// needs no escape in a URL, and is the same name where case or forms of Unicode do not count. It
// has at most 80 characters, does not begin with "." or "-", and is no name that Windows keeps for
// devices. Nothing else of a URL and nothing of a header goes into it.
class FileNames {
 public:
  // A name that was not allotted before: "logo.png", "logo-2.png", ...
  // url   serialised by the URL Standard
  // Cost  linear in the URL, over all names together
  std::string allot(std::string_view url, const MediaType& type);

 private:
  std::unordered_set<std::string> taken_;
  std::unordered_map<std::string, std::size_t> next_;  // the number that a name gets next
};

}  // namespace pagescan::tool

#endif
