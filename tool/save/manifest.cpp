#include "save/manifest.h"

#include <cstddef>
#include <cstdint>

#include "output/json.h"

namespace pagescan::tool {

namespace {

void addHop(JsonWriter& json, const std::vector<Hop>& hops, std::size_t hop) {
  json.addText("url", hops[hop].url);
  if (hops[hop].status != 0) json.addNumber("status", hops[hop].status);
  if (hop + 1 < hops.size()) json.addText("location", hops[hop + 1].url);
}

void addResult(JsonWriter& json, const Resource& resource, const std::string& name) {
  if (!resource.failure.empty()) {
    json.addText("error", resource.failure);
    json.addText("place", resource.place);
    return;
  }
  const Fetched& fetched = resource.fetched;
  json.addText("type", fetched.contentType);
  json.addNumber("length", static_cast<std::int64_t>(fetched.length));
  json.addText("sha256", fetched.sha256);
  if (!name.empty()) json.addText("name", name);
  json.addText("time", fetched.time);
}

}  // namespace

std::string manifestOf(const std::deque<Resource>& resources,
                       const std::function<std::string(const Resource&)>& nameOf) {
  std::string lines;
  JsonWriter json(lines);
  for (const Resource& resource : resources) {
    const std::vector<Hop>& hops = resource.fetched.hops;
    const std::size_t own = hops.size() - 1;  // after redirects to another resource: that one's
    for (std::size_t hop = 0; hop < hops.size(); ++hop) {
      if (hop == own && resource.same != nullptr) break;
      json.beginLine();
      addHop(json, hops, hop);
      if (hop == own) addResult(json, resource, nameOf(resource));
      json.endLine();
    }
  }
  return lines;
}

}  // namespace pagescan::tool
