// calcUrl: links resolved against the URLs of their pages.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "jobs.h"
#include "peers.h"
#include "tqurlbase.h"

namespace pagescan::bench {
namespace {

using LinkWork = std::function<std::size_t(const RWCString& link)>;

// A pass over all links; `workFor` makes ready what a base needs, once.
template <typename WorkFor>
Pass forEachLinkOf(const Input& input, WorkFor workFor) {
  std::vector<LinkWork> works;
  for (const PageLinks& page : input.links) works.push_back(workFor(page.base));
  return [&input, works = std::move(works)] {
    std::size_t result = 0;
    for (std::size_t i = 0; i < works.size(); ++i) {
      for (const RWCString& link : input.links[i].links) result += works[i](link);
    }
    return result;
  };
}

LinkWork concatenation(const std::string& base) {
  const std::string prefix = base.substr(0, base.rfind('/') + 1);
  return [prefix](const RWCString& link) {
    const std::string url = prefix + link.data();
    return url.size();
  };
}

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

Work workOverLinks(const Input& input) {
  Texts links;
  for (const PageLinks& page : input.links) {
    links.insert(links.end(), page.links.begin(), page.links.end());
  }
  return workOver(links, "link");
}

Job& addJob(Jobs& jobs, const Input& input, const char* id, const char* title) {
  Job& job = jobs.emplace_back(id, title, workOverLinks(input));
  return job.yardstick("prefix + value", forEachLinkOf(input, concatenation));
}

}  // namespace

void addResolveJobs(Jobs& jobs, const Input& input) {
  Job& inParser = addJob(jobs, input, "calcUrl_out", "`calcUrl(in, out, ...)` per link");
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
  addJob(jobs, input, "calcUrl", "`calcUrl(url)` per link")
      .library(forEachLinkOf(input, asHostResolves))
      .target(0.5);
}

}  // namespace pagescan::bench
