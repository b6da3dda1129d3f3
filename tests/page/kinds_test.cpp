#include <gtest/gtest.h>

#include "pagescan/page.h"

namespace pagescan::tests {
namespace {

TEST(Kinds, HaveTheNamesThatTheCommandLinePrints) {
  EXPECT_EQ(nameOf(Kind::load), "load");
  EXPECT_EQ(nameOf(Slot::urlList), "url_list");
  EXPECT_EQ(nameOf(kNoscript), "noscript");
}

}  // namespace
}  // namespace pagescan::tests
