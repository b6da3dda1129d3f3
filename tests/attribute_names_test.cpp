#include "attribute_names.h"

#include <gtest/gtest.h>

#include "rw/rwcollectables.h"
#include "tags_of_interest.h"
#include "text_view.h"

namespace pagescan {
namespace {

TEST(AttributeNames, AreSharedByAllRecords) {
  for (const std::string_view name : kAttributeNames) {
    if (name == "OBJECT") continue;  // no attribute ever has it
    const RWCollectableString* const key = sharedAttributeName(stringOf(name));
    ASSERT_NE(key, nullptr) << name;
    EXPECT_EQ(viewOf(*key), name);
    EXPECT_TRUE(isSharedAttributeName(key)) << name;
    EXPECT_EQ(sharedAttributeName(stringOf(name)), key) << name;
  }
}

TEST(AttributeNames, OfOtherKindsAreNotShared) {
  for (const char* const name : {"", "alt", "SRC", "srcs", "sr", "OBJECT"}) {
    EXPECT_EQ(sharedAttributeName(name), nullptr) << name;
  }
  const RWCollectableString own("src");
  EXPECT_FALSE(isSharedAttributeName(&own));
  EXPECT_FALSE(isSharedAttributeName(nullptr));
}

}  // namespace
}  // namespace pagescan
