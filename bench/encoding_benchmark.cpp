// Decoding of legacy encodings to UTF-8.
#include <string>
#include <string_view>
#include <vector>

#include "encoding/decoder.h"
#include "jobs.h"
#include "legacy_pages.h"
#include "yardsticks.h"

namespace pagescan::bench {
namespace {

// To a string that keeps its room, as the peers write to a buffer that stands ready.
Pass decodingOf(const LegacyPages& legacy) {
  return forEachOf(legacy.pages, [encoding = legacy.encoding,
                                  out = std::string()](const RWCString& page) mutable {
    out.clear();
    internal::appendDecoded(out, std::string_view(page.data(), page.length()), encoding);
    return out.size();
  });
}

void addDecodingJob(Jobs& jobs, const LegacyPages& legacy) {
  const std::string name(nameOf(legacy.encoding));
  Job& job = jobs.emplace_back("decode " + name, "decoding of " + name + ", " + legacy.language,
                               workOver(legacy.pages, "generated page"));
  for (const Peer& peer : peers()) {
    if (peer.decoder == nullptr) continue;
    job.contender(peer.name,
                  forEachOf(legacy.pages, [decode = peer.decoder(name)](const RWCString& page) {
                    return decode(std::string_view(page.data(), page.length()));
                  }));
  }
  job.yardstick("iconv").library(decodingOf(legacy)).target(4);
}

}  // namespace

void addDecodingJobs(Jobs& jobs) {
  static const std::vector<LegacyPages> all = legacyPages();
  for (const LegacyPages& legacy : all) addDecodingJob(jobs, legacy);
}

}  // namespace pagescan::bench
