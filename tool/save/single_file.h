// SingleFile: a page with all that it loads in it, as data: URLs.
#ifndef PAGESCAN_TOOL_SAVE_SINGLE_FILE_H
#define PAGESCAN_TOOL_SAVE_SINGLE_FILE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "save/resources.h"

namespace pagescan::tool {

class SingleFile {
 public:
  using Tell = std::function<void(const Resource& resource, const std::string& message)>;

  // most  bytes that are made at most, those of inner pages and sheets counted again at each level
  SingleFile(Resources& resources, std::uint64_t most, Tell tell);

  // The page as one text. Frames and sheets that hold themselves end somewhere, as in a browser.
  // Returns  std::nullopt, and failure() tells why, when it would be too large or a body cannot be
  //          read
  std::optional<std::string> make(const Resource& page);

  const std::string& failure() const { return failure_; }

 private:
  std::string textOf(const Resource& resource);
  std::optional<std::string> embedded(const std::string& url, Kind kind);
  std::string dataUrl(const Resource& resource, const std::string& bytes) const;
  bool holdsItself(const Resource& resource) const;

  Resources& resources_;
  std::uint64_t most_;
  std::uint64_t made_ = 0;
  Tell tell_;
  std::string failure_;
  std::vector<const Resource*> around_;  // the pages and sheets that are being made
};

// Base64 as data: URLs have it, with padding.
std::string base64(std::string_view bytes);

}  // namespace pagescan::tool

#endif
