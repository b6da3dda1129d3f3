// The URL of a refresh.
#include "page/refresh.h"

#include <gtest/gtest.h>

#include <string>

#include "support/placement.h"
#include "support/suite_cases.h"

namespace pagescan::tests {
namespace {

using internal::findRefreshUrl;

constexpr std::string_view kNone = "(none)";

std::string_view urlOf(std::string_view content) {
  const std::optional<Span> span = findRefreshUrl(content);
  return span ? content.substr(span->begin, span->end - span->begin) : kNone;
}

struct Row {
  Here here;
  std::string_view content;
  std::string_view url;
};

constexpr Row kRows[] = {
    {HERE, "", kNone},
    {HERE, " ", kNone},
    {HERE, "7", kNone},
    {HERE, "0;", kNone},
    {HERE, "0;url=", kNone},
    {HERE, "0;url='", kNone},
    {HERE, "0;url=''x", kNone},
    {HERE, "x;url=1", kNone},
    {HERE, "1x;url=1", kNone},
    {HERE, "0;url=1", "1"},
    {HERE, "0;URL = 1 ", "1 "},
    {HERE, ".5 url=4", "4"},
    {HERE, "1,3", "3"},
    {HERE, "0;ur=9", "ur=9"},
    {HERE, "0;u", "u"},
    {HERE, "0;ur", "ur"},
    {HERE, "0;url", "url"},
    {HERE, "0;url ", "url "},
    {HERE, "0;url = '2 x'y", "2 x"},
    {HERE, "0;url=\"2'", "2'"},
    {HERE, "0;'2'3", "2"},
    {HERE, "\f 1.2.3\f;\f;x", ";x"},
};

TEST(Refresh, FindsTheUrlAsTheStandardDelimitsIt) {
  forEachPlacement(kRows, [](const Row& row, Placement& placement) {
    EXPECT_EQ(urlOf(placement.bytes(row.content)), row.url) << row.content;
  });
}

TEST(Refresh, AgreesWithWebPlatformTests) {
  const nlohmann::json cases = suiteCases(PAGESCAN_SHARED_DIR, "wpt-html/meta-refresh.json");
  if (cases.is_null()) GTEST_SKIP() << "the suites are not beside the project";
  ASSERT_EQ(cases.size(), 69U);
  for (const nlohmann::json& one : cases) {
    const std::string content = one["content"];
    const std::optional<Span> span = findRefreshUrl(content);
    if (!one["refreshes"] || one["start"] == one["end"]) {
      EXPECT_FALSE(span.has_value()) << content;
      continue;
    }
    ASSERT_TRUE(span.has_value()) << content;
    EXPECT_EQ(span->begin, one["start"]) << content;
    EXPECT_EQ(span->end, one["end"]) << content;
  }
}

}  // namespace
}  // namespace pagescan::tests
