// RWCString beside std::string: copies, appends, searches.
#include <benchmark/benchmark.h>

#include <string>
#include <string_view>
#include <vector>

#include "jobs.h"
#include "rw/rwcstring.h"

namespace pagescan::bench {
namespace {

constexpr std::size_t kTimes = 1000;

// A pass that does `work` a thousand times.
template <typename Work>
Pass repeated(Work work) {
  return [work] {
    std::size_t result = 0;
    for (std::size_t i = 0; i < kTimes; ++i) result += work();
    return result;
  };
}

template <typename String>
Pass copiesOf(std::size_t length) {
  const std::string text(length, 'a');
  const String original(text.data(), text.size());
  return repeated([original] {
    const String copy(original);
    benchmark::DoNotOptimize(copy.data());
    return copy.length();
  });
}

// A URL put together from its parts, as a resolver does.
template <typename String>
Pass appends(std::size_t pieces) {
  return repeated([pieces] {
    String text;
    for (std::size_t i = 0; i < pieces; ++i) text.append("/images", 7);
    benchmark::DoNotOptimize(text.data());
    return text.length();
  });
}

std::size_t find(const std::string& text, const char* pattern, std::size_t start) {
  return text.find(pattern, start);
}
std::size_t find(const RWCString& text, const char* pattern, std::size_t start) {
  return text.index(pattern, start);
}

// From each place of `pattern` to the next, over all pages.
template <typename String>
Pass searches(const Texts& pages, const char* pattern) {
  std::vector<String> texts;
  for (const RWCString& page : pages) texts.emplace_back(page.data(), page.length());
  return [texts, pattern] {
    std::size_t found = 0;
    for (const String& text : texts) {
      std::size_t at = find(text, pattern, 0);
      for (; at != String::npos; at = find(text, pattern, at + 1)) ++found;
    }
    return found;
  };
}

Work thousand(const std::string& item, std::size_t bytes) {
  return {std::to_string(kTimes) + " of them", item, kTimes, kTimes * bytes};
}

void addCopyJob(Jobs& jobs, std::size_t length) {
  const std::string bytes = std::to_string(length);
  jobs.emplace_back("RWCString_copy_" + bytes, "`RWCString` copy, " + bytes + " bytes",
                    thousand("copy", length))
      .yardstick("std::string", copiesOf<std::string>(length))
      .library(copiesOf<RWCString>(length))
      .target(1)
      .timeLimit(5e-9);
}

void addAppendJob(Jobs& jobs, std::size_t pieces) {
  const std::string bytes = std::to_string(7 * pieces);
  jobs.emplace_back("RWCString_append_" + bytes, "`RWCString` appends of 7 bytes up to " + bytes,
                    thousand("string", 7 * pieces))
      .yardstick("std::string", appends<std::string>(pieces))
      .library(appends<RWCString>(pieces))
      .target(1);
}

void addIndexJob(Jobs& jobs, const Input& input, const std::string& id, const char* pattern) {
  jobs.emplace_back("RWCString_index_" + id, "`RWCString::index` of " + id,
                    workOver(input.pages, "page"))
      .yardstick("std::string", searches<std::string>(input.pages, pattern))
      .library(searches<RWCString>(input.pages, pattern))
      .target(1);
}

}  // namespace

void addStringJobs(Jobs& jobs, const Input& input) {
  for (const std::size_t length : {12U, 60U, 10000U}) addCopyJob(jobs, length);
  for (const std::size_t pieces : {2U, 12U, 1000U}) addAppendJob(jobs, pieces);
  addIndexJob(jobs, input, "word", "script");
  addIndexJob(jobs, input, "opening", "<a ");
  addIndexJob(jobs, input, "absent", "no such text");
}

}  // namespace pagescan::bench
