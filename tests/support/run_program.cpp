#include "support/run_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace pagescan::tests {

namespace {

void require(bool succeeded, const char* what) {
  if (!succeeded) throw std::system_error(errno, std::generic_category(), what);
}

// A file without a name, which never blocks a program as a full pipe would.
class MemoryFile {
 public:
  explicit MemoryFile(const std::string& bytes = "")
      : descriptor_(::memfd_create("stream", MFD_CLOEXEC)) {
    require(descriptor_ >= 0, "memfd_create");
    require(
        ::pwrite(descriptor_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()),
        "pwrite");
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { ::close(descriptor_); }

  int descriptor() const { return descriptor_; }
  std::string content() const { return readFile("/proc/self/fd/" + std::to_string(descriptor_)); }

 private:
  int descriptor_;
};

int spawnAndWait(const std::vector<std::string>& arguments, posix_spawn_file_actions_t& streams) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  pid_t child = 0;
  errno = ::posix_spawnp(&child, argv[0], &streams, nullptr, argv.data(), environ);
  require(errno == 0, argv[0]);
  int status = 0;
  require(::waitpid(child, &status, 0) == child, "waitpid");
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace

ProgramResult runProgram(const std::vector<std::string>& arguments, const std::string& input,
                         const char* outputFile) {
  const MemoryFile in(input);
  const MemoryFile out;
  const MemoryFile err;
  posix_spawn_file_actions_t streams;
  ::posix_spawn_file_actions_init(&streams);
  ::posix_spawn_file_actions_adddup2(&streams, in.descriptor(), STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&streams, out.descriptor(), STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&streams, err.descriptor(), STDERR_FILENO);
  if (outputFile != nullptr) {
    ::posix_spawn_file_actions_addopen(&streams, STDOUT_FILENO, outputFile, O_WRONLY, 0);
  }
  const int status = spawnAndWait(arguments, streams);
  ::posix_spawn_file_actions_destroy(&streams);
  return {status, out.content(), err.content()};
}

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "pagescan-XXXXXX").string();
  require(::mkdtemp(name.data()) != nullptr, "mkdtemp");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::file(const std::string& name, const std::string& bytes) const {
  const std::string path = path_ + "/" + name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace pagescan::tests
