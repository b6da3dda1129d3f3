// Saving is a program of its own, pagescan-save: libcurl and what it needs are thirty libraries,
// whose loading would cost each of the other commands more than it takes for a small page.
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "output/messages.h"
#include "output/utf8_text.h"
#include "save/save_run.h"

namespace pagescan::tool {

namespace {

// The words of this program's own command line, each with a NUL after it.
std::string commandLine() {
  std::ifstream file("/proc/self/cmdline", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<char*> wordsOf(std::string& line) {
  std::vector<char*> words;
  for (std::size_t begin = 0; begin < line.size(); begin = line.find('\0', begin) + 1) {
    words.push_back(line.data() + begin);
  }
  words.push_back(nullptr);
  return words;
}

}  // namespace

// The options were right; the other program reads them again.
ExitStatus runSave(const SaveOptions& /*options*/, Output& /*output*/) {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::string saver = (self.parent_path() / PAGESCAN_SAVER).lexically_normal();
  std::string line = commandLine();
  execv(saver.c_str(), wordsOf(line).data());
  if (errno == ENOENT) {
    tell("save: " + printable(saver) + " is not there: built without libcurl, which fetches");
  } else {
    tell("save: cannot start " + printable(saver) + ": " + std::strerror(errno));
  }
  return kFailed;
}

}  // namespace pagescan::tool
