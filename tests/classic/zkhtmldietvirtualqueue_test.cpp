#include "zkhtmldietvirtualqueue.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "zkhtmldiettransactiondata.h"

namespace pagescan::tests {
namespace {

TEST(CZKHtmlDietVirtualQueue, DoesNothingAndReturnsTrue) {
  CZKHtmlDietVirtualQueue queue;
  CZKHTMLDietTransactionsObject record;
  record.SetTagName("IMG");
  EXPECT_TRUE(queue.insert(&record));
  EXPECT_TRUE(queue.insert(nullptr));
  EXPECT_STREQ(record.GetTagName(), "IMG");
}

TEST(CZKHtmlDietVirtualQueue, IsMadeToBeSubclassed) {
  EXPECT_TRUE(std::has_virtual_destructor_v<CZKHtmlDietVirtualQueue>);
  EXPECT_EQ(sizeof(CZKHtmlDietVirtualQueue), sizeof(void*));
}

}  // namespace
}  // namespace pagescan::tests
