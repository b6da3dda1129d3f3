// Runs a fuzz target over files, without libFuzzer: those of the folders and files named on the
// command line, each once.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/input.h"

namespace {

namespace fs = std::filesystem;

void run(const fs::path& path, std::size_t& count) {
  std::ifstream in(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
  std::fprintf(stderr, "%s\n", path.c_str());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
  ++count;
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    if (!fs::is_directory(argv[i])) {
      run(argv[i], count);
      continue;
    }
    for (const auto& entry : fs::directory_iterator(argv[i])) run(entry.path(), count);
  }
  std::printf("%zu inputs\n", count);
  return count > 0 ? 0 : 1;
}
