// What jobs over the links of pages have in common.
#ifndef PAGESCAN_BENCH_LINKS_H
#define PAGESCAN_BENCH_LINKS_H

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "input.h"
#include "job.h"

namespace pagescan::bench {

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

inline LinkWork concatenation(const std::string& base) {
  const std::string prefix = base.substr(0, base.rfind('/') + 1);
  return [prefix](const RWCString& link) {
    const std::string url = prefix + link.data();
    return url.size();
  };
}

inline Work workOverLinks(const Input& input) {
  Texts links;
  for (const PageLinks& page : input.links) {
    links.insert(links.end(), page.links.begin(), page.links.end());
  }
  return workOver(links, "link");
}

// A job over all links, beside the plain concatenation of base and link.
inline Job& addLinkJob(Jobs& jobs, const Input& input, const char* id, const char* title) {
  Job& job = jobs.emplace_back(id, title, workOverLinks(input));
  return job.yardstick("prefix + value", forEachLinkOf(input, concatenation));
}

}  // namespace pagescan::bench

#endif
