// pagescan::resolve: links resolved as browsers do it, against the URLs of their pages.
#include <memory>
#include <string>
#include <string_view>

#include "jobs.h"
#include "links.h"
#include "pagescan/url.h"
#include "peers.h"
#include "url/resolver.h"

namespace pagescan::bench {
namespace {

std::string_view viewOf(const RWCString& link) {
  return {link.data(), link.length()};
}

LinkWork asHostResolves(const std::string& base) {
  return [parsed = Base::parse(base).value_or(Base())](const RWCString& link) {
    const std::optional<std::string> url = parsed.resolve(viewOf(link));
    return url ? url->size() : 0;
  };
}

// Into the memory of the result before.
LinkWork asPageResolves(const std::string& base) {
  return [parsed = Base::parse(base).value_or(Base()),
          out = std::make_shared<std::string>()](const RWCString& link) {
    const bool isUrl = internal::resolveInto(*out, viewOf(link), parsed, internal::Encoding::utf8);
    return isUrl ? out->size() : 0;
  };
}

// Every link parsed for its components.
LinkWork asHostParses(const std::string& base) {
  return [parsed = Base::parse(base).value_or(Base())](const RWCString& link) {
    if (parsed.url() == nullptr) return std::size_t{0};
    const std::optional<Url> url = Url::parse(viewOf(link), *parsed.url());
    return url ? url->path().size() : 0;
  };
}

}  // namespace

void addUrlJobs(Jobs& jobs, const Input& input) {
  Job& resolving = addLinkJob(jobs, input, "url_resolve", "`Base::resolve(url)` per link");
  resolving.library(forEachLinkOf(input, asHostResolves)).target(0.6);
  for (const Peer& peer : peers()) {
    if (peer.resolver == nullptr) continue;
    resolving.contender(peer.name,
                        forEachLinkOf(input, [&peer](const std::string& base) -> LinkWork {
                          return [resolve = peer.resolver(base)](const RWCString& link) {
                            return resolve(viewOf(link));
                          };
                        }));
  }
  addLinkJob(jobs, input, "url_resolve_into", "the same into memory at hand")
      .library(forEachLinkOf(input, asPageResolves))
      .target(0.6);
  addLinkJob(jobs, input, "url_parse", "`Url::parse(url, base)` per link")
      .library(forEachLinkOf(input, asHostParses));
}

}  // namespace pagescan::bench
