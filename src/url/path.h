// Paths of segments, written into the text of a URL: each segment follows a "/" (URL Standard,
// 4.4 "URL parsing", the path state).
#ifndef PAGESCAN_URL_PATH_H
#define PAGESCAN_URL_PATH_H

#include <cstddef>
#include <string>
#include <string_view>

namespace pagescan::internal {

// A letter and ":" or "|" ("Windows drive letter").
bool isDriveLetter(std::string_view text);
// Whether a path goes on after one ("starts with a Windows drive letter").
bool startsWithDriveLetter(std::string_view text);
// Whether a path written by PathWriter begins with a drive letter as such a one is written: "/C:".
bool beginsWithNormalDriveLetter(std::string_view path);

class PathWriter {
 public:
  // The path is what `text` holds from `begin` on, and all that is appended.
  // text   must outlive the writer
  PathWriter(std::string& text, std::size_t begin, bool isFile)
      : text_(text), begin_(begin), isFile_(isFile) {}

  // Appends one segment, percent-encoded; "." and ".." and their encoded forms move instead.
  // isLast   whether the path ends after it; a dot segment then leaves an empty one
  void append(std::string_view segment, bool isLast);

  // Takes the last segment away ("shorten a URL's path"): the drive letter of a file URL stays.
  void shorten();

 private:
  std::string& text_;
  const std::size_t begin_;
  const bool isFile_;
};

}  // namespace pagescan::internal

#endif
