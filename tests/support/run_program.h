// Runs a program as a user would: arguments and standard input in, status and both outputs back.
#ifndef PAGESCAN_TESTS_SUPPORT_RUN_PROGRAM_H
#define PAGESCAN_TESTS_SUPPORT_RUN_PROGRAM_H

#include <string>
#include <vector>

namespace pagescan::tests {

struct ProgramResult {
  int status;  // the exit status, or the negative number of the signal that ended the program
  std::string out;
  std::string err;
};

// `arguments` begins with the program. Standard output goes to `outputFile` instead when one is
// named; `out` is empty then.
ProgramResult runProgram(const std::vector<std::string>& arguments, const std::string& input = "",
                         const char* outputFile = nullptr);

// A folder of files that lives as long as the object.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::string& path() const { return path_; }

  // Writes a file and returns its path.
  std::string file(const std::string& name, const std::string& bytes) const;

 private:
  std::string path_;
};

// All bytes of a file.
std::string readFile(const std::string& path);

}  // namespace pagescan::tests

#endif
