// The URLs of image candidates.
#include "page/srcset.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/placement.h"
#include "support/suite_cases.h"

namespace pagescan::tests {
namespace {

using internal::SrcsetReader;
using Strings = std::vector<std::string>;
using Places = std::pair<std::size_t, std::size_t>;

std::vector<Span> spansOf(std::string_view value) {
  std::vector<Span> spans;
  SrcsetReader reader(value);
  while (const std::optional<Span> span = reader.next()) spans.push_back(*span);
  return spans;
}

Strings urlsOf(std::string_view value) {
  Strings urls;
  for (const Span span : spansOf(value)) {
    urls.emplace_back(value.substr(span.begin, span.end - span.begin));
  }
  return urls;
}

struct Row {
  Here here;
  std::string_view value;
  Strings urls;
};

const Row kCandidates[] = {
    {HERE, "", {}},
    {HERE, " ,\f, ", {}},
    {HERE, "a", {"a"}},
    {HERE, "a,b 1x, c 2x,d,, e", {"a,b", "c", "d", "e"}},
    {HERE, "a 1x,b 2x", {"a", "b"}},
    {HERE, "data:,x 1x, data:,y", {"data:,x", "data:,y"}},
    {HERE, "f(,) 1x (2x, 3x),g", {"g"}},
    {HERE, "a (, b", {}},
    {HERE, "a\v1x", {"a\v1x"}},
};

TEST(Srcset, ListsTheUrlOfEachCandidate) {
  forEachPlacement(kCandidates, [](const Row& row, Placement& placement) {
    EXPECT_EQ(urlsOf(placement.bytes(row.value)), row.urls);
  });
}

const Row kDescriptors[] = {
    {HERE,
     "a 1x, b 2.5x, c .5x, d 1e2x, e 1E-2x, f -0x, g -0.0e1x",
     {"a", "b", "c", "d", "e", "f", "g"}},
    {HERE, "a -1x, b +1x, c 1.x, d .x, e x, f 1ex, g 1e+x, h -x, i 1e5.5x, j -.1x", {}},
    {HERE, "a 1w, b 01w, c 10w 5h, d 5h 10w", {"a", "b", "c", "d"}},
    {HERE, "a 0w, b 00w, c -1w, d 1.0w, e w, f 1e0w, g 1W", {}},
    {HERE, "a 5h, b 0h 1w, c 1w 1x, d 1x 1w, e 1x 1x, f 1w 1w, g 1h 1h 1w, h 1x 1h", {}},
    {HERE, "a 1q, b 1x foo, c 1x 1", {}},
};

TEST(Srcset, PassesOverCandidatesWithWrongDescriptors) {
  forEachPlacement(kDescriptors, [](const Row& row, Placement& placement) {
    EXPECT_EQ(urlsOf(placement.bytes(row.value)), row.urls);
  });
}

TEST(Srcset, AgreesWithWebPlatformTests) {
  const nlohmann::json cases = suiteCases(PAGESCAN_SHARED_DIR, "wpt-html/srcset.json");
  if (cases.is_null()) GTEST_SKIP() << "the suites are not beside the project";
  ASSERT_EQ(cases.size(), 234U);
  for (const nlohmann::json& one : cases) {
    const std::string value = one["srcset"];
    std::vector<Places> expected;
    for (const nlohmann::json& candidate : one["candidates"]) {
      if (candidate["valid"]) expected.emplace_back(candidate["start"], candidate["end"]);
    }
    std::vector<Places> found;
    for (const Span span : spansOf(value)) {
      const std::string_view text = value;
      found.emplace_back(utf16Length(text.substr(0, span.begin)),
                         utf16Length(text.substr(0, span.end)));
    }
    EXPECT_EQ(found, expected) << value;
  }
}

}  // namespace
}  // namespace pagescan::tests
