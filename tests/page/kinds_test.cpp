#include <gtest/gtest.h>

#include "pagescan/page.h"

namespace pagescan::tests {
namespace {

TEST(Kinds, HaveTheNamesThatTheCommandLinePrints) {
  EXPECT_EQ(nameOf(Kind::load), "load");
  EXPECT_EQ(nameOf(Kind::dead), "dead");
  EXPECT_EQ(nameOf(Slot::urlList), "url_list");
  EXPECT_EQ(nameOf(Slot::json), "json");
  EXPECT_EQ(nameOf(kNoscript), "noscript");
  EXPECT_EQ(nameOf(kNested), "nested");
}

TEST(Kinds, HaveNoNameBeyondTheLast) {
  EXPECT_EQ(nameOf(static_cast<Kind>(static_cast<int>(Kind::dead) + 1)), "");
  EXPECT_EQ(nameOf(static_cast<Kind>(255)), "");
  EXPECT_EQ(nameOf(static_cast<Slot>(static_cast<int>(Slot::json) + 1)), "");
  EXPECT_EQ(nameOf(static_cast<Flag>(kLazy | kNested)), "");
}

TEST(Kinds, AreFoundByTheirNames) {
  for (int i = 0; i <= static_cast<int>(Kind::dead); ++i) {
    const auto kind = static_cast<Kind>(i);
    EXPECT_EQ(kindOf(nameOf(kind)), kind) << nameOf(kind);
  }
  EXPECT_EQ(kindOf(""), std::nullopt);
  EXPECT_EQ(kindOf("Load"), std::nullopt);
}

TEST(Profiles, AreFoundByTheirNames) {
  EXPECT_EQ(profileOf("standard"), Profiles{0});
  EXPECT_EQ(profileOf("lazy"), kLazyProfile);
  EXPECT_EQ(profileOf("meta"), kMetaProfile);
  EXPECT_EQ(profileOf("data"), kDataProfile);
  EXPECT_EQ(profileOf("all"), std::nullopt);
}

}  // namespace
}  // namespace pagescan::tests
