#include "classic/attribute_names.h"

#include <gtest/gtest.h>

#include "classic/tags_of_interest.h"
#include "classic/text_view.h"
#include "rw/rwcollectables.h"

namespace pagescan::tests {

using namespace internal;
namespace {

TEST(AttributeNames, AreSharedByAllRecords) {
  for (std::size_t id = 0; id < kAttributes; ++id) {
    const std::string_view name = kAttributeNames[id];
    const RWCollectableString& key = sharedAttributeName(id);
    EXPECT_EQ(viewOf(key), name);
    EXPECT_TRUE(isSharedAttributeName(&key)) << name;
    if (name == "OBJECT") continue;  // no attribute ever has it
    EXPECT_EQ(findSharedAttributeName(stringOf(name)), &key) << name;
  }
}

TEST(AttributeNames, OfOtherKindsAreNotShared) {
  for (const char* const name : {"", "alt", "SRC", "srcs", "sr", "OBJECT"}) {
    EXPECT_EQ(findSharedAttributeName(name), nullptr) << name;
  }
  const RWCollectableString own("src");
  EXPECT_FALSE(isSharedAttributeName(&own));
  EXPECT_FALSE(isSharedAttributeName(nullptr));
}

}  // namespace
}  // namespace pagescan::tests
