// Lists of URLs between white space or commas.
#include "page/url_lists.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

using Strings = std::vector<std::string>;

template <typename Reader>
Strings itemsOf(std::string_view value) {
  Strings items;
  Reader reader(value);
  while (const std::optional<Span> span = reader.next()) {
    items.emplace_back(value.substr(span->begin, span->end - span->begin));
  }
  return items;
}

struct Row {
  Here here;
  std::string_view value;
  Strings items;
};

const Row kUrlLists[] = {
    {HERE, "", {}},
    {HERE, " \t\r\n\f", {}},
    {HERE, "a", {"a"}},
    {HERE, " a\tb\n\nc\fd\re ", {"a", "b", "c", "d", "e"}},
    {HERE, "a,b\vc", {"a,b\vc"}},
};

TEST(UrlList, SplitsAtAsciiWhiteSpace) {
  forEachPlacement(kUrlLists, [](const Row& row, Placement& placement) {
    EXPECT_EQ(itemsOf<internal::UrlListReader>(placement.bytes(row.value)), row.items);
  });
}

const Row kCommaLists[] = {
    {HERE, "", {}},
    {HERE, " , ,, ", {}},
    {HERE, "4, 5 6,,7 ", {"4", "5 6", "7"}},
    {HERE, "\fa.jar\r\n", {"a.jar"}},
    {HERE, "a,", {"a"}},
};

TEST(CommaList, SplitsAtCommasAndStripsWhiteSpace) {
  forEachPlacement(kCommaLists, [](const Row& row, Placement& placement) {
    EXPECT_EQ(itemsOf<internal::CommaListReader>(placement.bytes(row.value)), row.items);
  });
}

}  // namespace
}  // namespace pagescan::tests
