#include "classic/attribute_names.h"

#include <array>
#include <functional>

#include "classic/tags_of_interest.h"
#include "classic/text_view.h"

namespace pagescan::internal {
namespace {

struct Names {
  Names() {
    for (std::size_t id = 0; id < kAttributes; ++id) {
      keys[id] = RWCollectableString(stringOf(kAttributeNames[id]));
    }
  }

  std::array<RWCollectableString, kAttributes> keys;
};

// Built before the static objects of any host that links the static library.
__attribute__((init_priority(101))) Names names;

}  // namespace

RWCollectableString& sharedAttributeName(std::size_t id) {
  return names.keys[id];
}

RWCollectableString* findSharedAttributeName(const RWCString& name) {
  const std::size_t id = findAttributeOfInterest(viewOf(name));
  if (id == kNoAttribute || viewOf(name) != kAttributeNames[id]) return nullptr;
  return &names.keys[id];
}

bool isSharedAttributeName(const RWCollectable* key) {
  const std::less<const RWCollectable*> before;
  return !before(key, &names.keys.front()) && !before(&names.keys.back(), key);
}

}  // namespace pagescan::internal
