#include "urlcmp.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

constexpr int kMax = std::numeric_limits<int>::max();
constexpr int kMin = std::numeric_limits<int>::min();

struct RankCase {
  Here here;
  CDOMBaseLinkCmp link;
  int rank;
};
constexpr RankCase kRanks[] = {
    //      level top   pref   exact  A      B      three properties        rank
    {HERE, {}, 4},
    {HERE, {2, false, true, false, false, false, false, false, false}, 7},
    {HERE, {2, false, false, false, false, false, false, false, false}, 8},
    {HERE, {0, false, true, false, false, false, false, false, false}, 3},
    {HERE, {-3, false, false, false, false, false, false, false, false}, -2},
    {HERE, {-3, false, true, true, false, false, true, true, true}, -3},
    // One qualifier alone counts for nothing, nor does `exact` without both.
    {HERE, {2, false, true, true, true, false, false, false, false}, 7},
    {HERE, {2, false, false, true, false, true, false, false, false}, 8},
    // Both qualifiers: exact, preferred, neither, whatever the level.
    {HERE, {9, false, false, true, true, true, false, false, false}, 2},
    {HERE, {9, false, true, true, true, true, false, false, false}, 2},
    {HERE, {9, false, true, false, true, true, false, false, false}, 3},
    {HERE, {9, false, false, false, true, true, false, false, false}, 4},
    // The top rank is 1, whatever the others hold.
    {HERE, {9, true, false, false, false, false, false, false, false}, 1},
    {HERE, {kMax, true, true, true, true, true, true, true, true}, 1},
    // Levels so large that the rank overflows wrap around.
    {HERE, {kMax, false, false, false, false, false, false, false, false}, 2},
    {HERE, {kMax, false, true, false, false, false, false, false, false}, 1},
    {HERE, {kMin, false, false, false, false, false, false, false, false}, 4},
    {HERE, {1073741822, false, false, false, false, false, false, false, false}, kMin},
    {HERE, {1073741822, false, true, false, false, false, false, false, false}, kMax},
};

TEST(CDOMBaseLinkCmp, RanksByLevelAndFlags) {
  forEachRow(kRanks, [](const RankCase& row) {
    CDOMBaseLinkCmp link = row.link;
    EXPECT_EQ(link.rank(), row.rank);
  });
}

TEST(CDOMBaseLinkCmp, CountsItsProperties) {
  for (int bits = 0; bits < 8; ++bits) {
    CDOMBaseLinkCmp link;
    link.propFirst = (bits & 1) != 0;
    link.propSecond = (bits & 2) != 0;
    link.propThird = (bits & 4) != 0;
    EXPECT_EQ(link.propRank(), (bits & 1) + (bits >> 1 & 1) + (bits >> 2));
    link.topRank = true;
    EXPECT_EQ(link.propRank(), (bits & 1) + (bits >> 1 & 1) + (bits >> 2));
  }
}

TEST(CDOMBaseLinkCmp, IsAPlainRecordOfZeros) {
  const CDOMBaseLinkCmp link;
  EXPECT_EQ(link.level, 0);
  EXPECT_FALSE(link.topRank || link.preferred || link.exact || link.qualifierA || link.qualifierB ||
               link.propFirst || link.propSecond || link.propThird);
  EXPECT_FALSE(std::is_polymorphic_v<CDOMBaseLinkCmp>);
  EXPECT_TRUE(std::is_standard_layout_v<CDOMBaseLinkCmp>);
}

}  // namespace
}  // namespace pagescan::tests
