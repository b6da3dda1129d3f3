// What browsers load with a page, by the Web Platform Tests for speculative parsing.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "pagescan/page.h"

namespace pagescan::tests {
namespace {

// Loads that a browser makes, but not ahead of time: both sheets are fetched for other media or for
// a user who switches to them, so they are `load` here and "not speculatively loaded" there.
constexpr std::array<std::string_view, 2> kLoadedLater = {"link-rel-alternate-stylesheet",
                                                          "link-rel-stylesheet-nomatch-media"};

// Whether the page loads "U" at once: a load under no condition, or a candidate whose picture has
// an image and whose media and type do not exclude it.
bool loadsAtOnce(const Page& page, const std::string& html) {
  for (const Reference& reference : page.references()) {
    constexpr Flags kNotAtOnce = kTemplate | kLazy | kConditional | kNoscript;
    if (page.value(reference) != "U" || reference.kind != Kind::load) continue;
    if ((reference.flags & kNotAtOnce) != 0) continue;
    const bool isSource = page.element(reference) == "source";
    const bool isExcluded = html.find("media=") != std::string::npos ||
                            html.find("type=") != std::string::npos ||
                            html.find("<img") == std::string::npos;
    if (!isSource || !isExcluded) return true;
  }
  return false;
}

TEST(SpeculativeLoads, AreLoads) {
  std::ifstream in(PAGESCAN_SHARED_DIR "/suites/wpt-html/speculative-loads.json");
  if (!in) GTEST_SKIP() << "the suites are not here";
  int count = 0;
  for (const nlohmann::json& test : nlohmann::json::parse(in)) {
    const std::string title = test["title"];
    const std::string html = test["html"];
    const bool isLater =
        std::find(kLoadedLater.begin(), kLoadedLater.end(), title) != kLoadedLater.end();
    const bool expected = test["speculatively_loaded"].get<bool>() || isLater;
    EXPECT_EQ(loadsAtOnce(Page(html), html), expected) << title << ": " << html;
    ++count;
  }
  EXPECT_EQ(count, 46);
}

}  // namespace
}  // namespace pagescan::tests
