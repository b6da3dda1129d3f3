// The whole program beside cat: what the processor spends on each process from its start to its
// end, over the same files.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "sections.h"
#include "table.h"

namespace pagescan::bench {
namespace {

using Words = std::vector<std::string>;

constexpr char kCat[] = "cat";
constexpr double kMostTimesCat = 6;

void require(bool succeeded, const std::string& what) {
  if (!succeeded) throw std::system_error(errno, std::generic_category(), what);
}

// The pages as files of a folder that goes away with the object.
class PageFiles {
 public:
  explicit PageFiles(const Texts& pages) {
    std::string folder = std::filesystem::temp_directory_path() / "pagescan-bench-XXXXXX";
    require(::mkdtemp(folder.data()) != nullptr, folder);
    folder_ = folder;
    for (const RWCString& page : pages) {
      names_.push_back(folder_ / (std::to_string(names_.size()) + ".html"));
      std::ofstream file(names_.back(), std::ios::binary);
      file.write(page.data(), static_cast<std::streamsize>(page.length()));
    }
  }
  PageFiles(const PageFiles&) = delete;
  PageFiles& operator=(const PageFiles&) = delete;
  ~PageFiles() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  const Words& names() const { return names_; }

 private:
  std::filesystem::path folder_;
  Words names_;
};

double secondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Seconds that the processor spent on a program that writes to /dev/null, the system's work for it
// included.
double processorTimeOf(Words words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t streams;
  posix_spawn_file_actions_init(&streams);
  posix_spawn_file_actions_addopen(&streams, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  errno = ::posix_spawnp(&child, arguments[0], &streams, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&streams);
  require(errno == 0, words[0]);
  int status = 0;
  rusage usage{};
  require(::wait4(child, &status, 0, &usage) == child, "wait4");
  if (status != 0) throw std::runtime_error(words[0] + " failed");
  return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

Words inventory(const std::string& format) {
  return {PAGESCAN_PROGRAM, "inventory", "--url", "http://www.example.com/news/2024/index.html",
          "--format",       format};
}

}  // namespace

void writeProgram(std::ostream& out, const Input& input, const Rounds& rounds) {
  if (!std::filesystem::exists(PAGESCAN_PROGRAM)) return;
  const std::vector<std::pair<std::string, Words>> programs = {
      {kCat, {kCat}},
      {"pagescan --version", {PAGESCAN_PROGRAM, "--version"}},
      {"pagescan inventory --format jsonl", inventory("jsonl")},
      {"pagescan inventory --format urls", inventory("urls")},
  };
  const PageFiles files(input.pages);
  Timings timings;
  for (int round = 0; round < rounds.count; ++round) {
    for (const auto& [name, program] : programs) {
      Words words = program;
      words.insert(words.end(), files.names().begin(), files.names().end());
      timings[name].push_back(processorTimeOf(std::move(words)));
    }
  }
  out << "### The whole program\n\nThe processor's time for the process, over "
      << workOver(input.pages, "page").description << "; at most " << shortNumber(kMostTimesCat)
      << " times that of `cat` is wanted of the inventory.\n\n";
  Table table({"program", "ms", "times cat"});
  for (const auto& [name, program] : programs) {
    const double timesCat = speedRatio(timings, kCat, name);
    table.addRow({code(name), shortNumber(median(timings[name]) * 1e3),
                  shortNumber(timesCat) + (timesCat > kMostTimesCat ? " **above**" : "")});
  }
  out << table;
}

}  // namespace pagescan::bench
