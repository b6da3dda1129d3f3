// WholeFile: a file that appears under its name when it is complete, or not at all.
#ifndef PAGESCAN_TOOL_SAVE_WHOLE_FILE_H
#define PAGESCAN_TOOL_SAVE_WHOLE_FILE_H

#include <string>
#include <string_view>

namespace pagescan::tool {

// The bytes go to a file beside it, whose name ends in ".part". Once a call fails, those after it
// do nothing.
class WholeFile {
 public:
  explicit WholeFile(std::string path);
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;
  // Without commit() there is no file.
  ~WholeFile();

  void write(std::string_view bytes);

  // Puts the file under its name, in the place of an older one.
  // isDurable  whether its bytes are on the disk before; else syncWith() does it for many at once
  // Returns    whether all went well
  bool commit(bool isDurable = true);

  // The errno of the first call that failed, or 0.
  int error() const { return error_; }

 private:
  std::string partPath() const { return path_ + ".part"; }
  void close();

  std::string path_;
  int descriptor_;
  int error_ = 0;
};

// Puts all that was written to the file system of a folder on the disk; false, and errno, when that
// fails. A hundred times faster than commit() for each of many files.
bool syncWith(const std::string& folder);

// The bytes of a file in a text; false, and errno, when it cannot be read.
bool readWhole(const std::string& path, std::string& bytes);

}  // namespace pagescan::tool

#endif
