// Replaces a file as a whole: at every moment it has its old content or its new one.
#ifndef PAGESCAN_TOOL_REPLACEMENT_H
#define PAGESCAN_TOOL_REPLACEMENT_H

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace pagescan::tool {

// The new content, written to disk beside the file, which it replaces when commit() is called. If
// that never happens, nothing has changed. A link to a file stays a link: the file is replaced.
class Replacement {
 public:
  Replacement() = default;
  Replacement(Replacement&& other) noexcept { *this = std::move(other); }
  Replacement& operator=(Replacement&& other) noexcept;
  ~Replacement() { discard(); }

  // Writes `bytes` for a file that there is. It keeps the file's mode, owner and times.
  // suffix    the old file is kept under its name and this; empty: it is not
  // Returns   why it failed, or nothing
  std::string prepare(const std::string& name, std::string_view bytes, const std::string& suffix);

  // The same for a file that need not be there: of one that is, the mode and the owner stay.
  std::string prepareNew(const std::string& name, std::string_view bytes);

  // Puts it in the file's place, unless the file has changed meanwhile.
  // Returns   why it failed, or nothing
  std::string commit();

 private:
  void discard();
  std::string writeBeside(std::string_view bytes, bool keepsTimes);
  std::string write(int descriptor, std::string_view bytes, bool keepsTimes) const;
  std::string keepOld() const;

  std::string name_;     // of the file itself, no link
  std::string waiting_;  // the name of the new content; empty: there is none
  std::string suffix_;
  bool exists_ = false;
  struct stat status_ {};  // of the file, where it exists
};

}  // namespace pagescan::tool

#endif
