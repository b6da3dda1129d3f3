// CTQCharSet::convert, isUtf8 and the stand-alone conversions.
#include <algorithm>
#include <vector>

#include "charset.h"
#include "hostroutines.h"
#include "jobs.h"
#include "yardsticks.h"
#include "zkutf8.h"

namespace pagescan::bench {
namespace {

std::size_t decodeReferences(const RWCString& page) {
  RWCString text(page);
  CTQCharSet::fsGetSingleton()->convert(text);
  return text.length();
}

bool isReadWhole(const RWCString& page) {
  const char* const end = page.data() + page.length();
  const bool isAscii = std::none_of(page.data(), end, [](char c) { return c < 0; });
  return isAscii || isUtf8(page.data(), static_cast<int>(page.length()));
}

// isUtf8 leaves the others early.
const Texts& pagesReadWhole(const Input& input) {
  static Texts pages;
  pages.clear();
  std::copy_if(input.pages.begin(), input.pages.end(), std::back_inserter(pages), isReadWhole);
  return pages;
}

using HostRoutine = int (*)(int, const char*, int, char*, int);

// A conversion by a host routine, called as the library calls it.
Pass conversionOf(const Texts& pages, HostRoutine routine) {
  std::size_t longest = 0;
  for (const RWCString& page : pages) longest = std::max(longest, page.length());
  return forEachOf(
      pages, [routine, buffer = std::vector<char>(3 * longest + 1)](const RWCString& page) mutable {
        const auto room = static_cast<int>(3 * page.length() + 1);
        return static_cast<std::size_t>(routine(0, page.data(), -1, buffer.data(), room));
      });
}

void addConversionJob(Jobs& jobs, const Input& input, const char* id, HostRoutine routine,
                      TextWork Peer::*peerWork) {
  Job& job =
      jobs.emplace_back(id, std::string("default `") + id + "`", workOver(input.pages, "page"));
  job.yardstick("memcpy", memcpyOf(input.pages))
      .library(conversionOf(input.pages, routine))
      .target(0.4);
  addPeers(job, input.pages, peerWork);
}

}  // namespace

void addCharsetJobs(Jobs& jobs, const Input& input) {
  jobs.emplace_back("convert", "`CTQCharSet::convert` in a copy", workOver(input.pages, "page"))
      .yardstick("memchr('&')", memchrOver(input.pages, '&'))
      .library(forEachOf(input.pages, decodeReferences))
      .target(0.35);

  const Texts& pages = pagesReadWhole(input);
  Job& check = jobs.emplace_back("isUtf8", "`isUtf8`", workOver(pages, "UTF-8 or ASCII page"));
  check.yardstick("memcpy", memcpyOf(pages))
      .library(forEachOf(pages,
                         [](const RWCString& page) -> std::size_t {
                           return isUtf8(page.data(), static_cast<int>(page.length())) ? 1 : 0;
                         }))
      .target(0.8);
  addPeers(check, pages, &Peer::checkUtf8);

  addConversionJob(jobs, input, "ANSIToUTF8", ANSIToUTF8, &Peer::latin1ToUtf8);
  addConversionJob(jobs, input, "UTF8ToANSI", UTF8ToANSI, &Peer::utf8ToLatin1);
}

}  // namespace pagescan::bench
