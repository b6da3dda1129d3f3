#include "support/saved_site.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>

namespace pagescan::tests {

namespace {

// The first line that the script prints; empty when it ends without one.
std::string firstLine(int descriptor) {
  std::string line;
  char c = 0;
  while (::read(descriptor, &c, 1) == 1 && c != '\n') line.push_back(c);
  return line;
}

}  // namespace

Site::Site() {
  std::array<int, 2> in = {}, out = {};
  if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) return;
  input_ = in[1];
  posix_spawn_file_actions_t streams;
  posix_spawn_file_actions_init(&streams);
  posix_spawn_file_actions_adddup2(&streams, in[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&streams, out[1], STDOUT_FILENO);
  std::string python = "python3", script = PAGESCAN_SOURCE_DIR "/tests/save/serve_site.py";
  std::string folder = folder_.path();
  std::array<char*, 4> arguments = {python.data(), script.data(), folder.data(), nullptr};
  ::posix_spawnp(&child_, "python3", &streams, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&streams);
  ::close(in[0]);
  ::close(out[1]);
  const std::string line = firstLine(out[0]);
  ::close(out[0]);
  if (!line.empty()) root_ = "http://127.0.0.1:" + line.substr(0, line.find(' '));
}

Site::~Site() {
  ::close(input_);
  if (child_ > 0) ::waitpid(child_, nullptr, 0);
}

}  // namespace pagescan::tests
