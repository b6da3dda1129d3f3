// calcUrl: links resolved against the URLs of their pages.
#include <memory>
#include <string>

#include "jobs.h"
#include "links.h"
#include "peers.h"
#include "tqurlbase.h"

namespace pagescan::bench {
namespace {

LinkWork asParserResolves(const std::string& base) {
  const auto parsed = std::make_shared<urlBase>(RWCString(base.c_str()));
  return [parsed](const RWCString& link) {
    RWCString url;
    parsed->calcUrl(link, url, false, true);
    return url.length();
  };
}

LinkWork asHostResolves(const std::string& base) {
  const auto parsed = std::make_shared<urlBase>(RWCString(base.c_str()));
  return [parsed](const RWCString& link) {
    RWCString written(link);
    return parsed->calcUrl(written).length();
  };
}

}  // namespace

void addResolveJobs(Jobs& jobs, const Input& input) {
  Job& inParser = addLinkJob(jobs, input, "calcUrl_out", "`calcUrl(in, out, ...)` per link");
  inParser.library(forEachLinkOf(input, asParserResolves)).target(0.8);
  for (const Peer& peer : peers()) {
    if (peer.resolver == nullptr) continue;
    inParser.contender(peer.name,
                       forEachLinkOf(input, [&peer](const std::string& base) -> LinkWork {
                         return [resolve = peer.resolver(base)](const RWCString& link) {
                           return resolve(std::string_view(link.data(), link.length()));
                         };
                       }));
  }
  addLinkJob(jobs, input, "calcUrl", "`calcUrl(url)` per link")
      .library(forEachLinkOf(input, asHostResolves))
      .target(0.5);
}

}  // namespace pagescan::bench
