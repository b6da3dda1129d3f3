// The inventory of made-up and of real pages, field by field, beside expectations that were worked
// out without this library.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "pagescan/page.h"
#include "support/code_points.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;

constexpr Flag kFlags[] = {kNoscript,    kTemplate,    kCandidate, kLazy,
                           kConditional, kNonstandard, kNested};

// Bytes that are no UTF-8 are listed as the code points of their values.
std::string asCodePoints(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | byte >> 6);
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return text;
}

bool isUtf8(const std::string& text) {
  try {
    (void)Json(text).dump();
    return true;
  } catch (const Json::exception&) {
    return false;
  }
}

Json objectOf(const Page& page, const LineIndex& lines, const Reference& reference) {
  Json object;
  object["start"] = reference.span.begin;
  object["end"] = reference.span.end;
  const Position position = lines.at(reference.span.begin);
  object["line"] = position.line;
  object["column"] = position.column;
  object["element"] = page.element(reference);
  object["attribute"] = page.attribute(reference);
  object["kind"] = nameOf(reference.kind);
  object["slot"] = nameOf(reference.slot);
  for (const Flag flag : kFlags) {
    if ((reference.flags & flag) != 0) object["flags"].push_back(nameOf(flag));
  }
  const std::string raw(page.raw(reference));
  if (isUtf8(raw)) {
    object["raw"] = raw;
  } else {
    object["raw"] = asCodePoints(raw);
    object["bytes"] = {"raw"};
  }
  object["value"] = page.value(reference);
  if (const auto url = page.url(reference)) object["url"] = *url;
  if (reference.parent != kNoParent) object["parent"] = reference.parent;
  return object;
}

Json withSortedFlags(Json object) {
  if (object.contains("flags")) std::sort(object["flags"].begin(), object["flags"].end());
  return object;
}

void compare(std::string_view bytes, const PageOptions& options, const std::vector<Json>& want) {
  const Page page(bytes, options);
  const LineIndex lines(page);
  const std::vector<Reference>& found = page.references();
  for (std::size_t i = 0; i < std::max(found.size(), want.size()); ++i) {
    if (i >= found.size()) {
      ADD_FAILURE() << "missing: " << want[i].dump();
    } else if (i >= want.size()) {
      ADD_FAILURE() << "too many: " << objectOf(page, lines, found[i]).dump();
    } else {
      const Json mine = withSortedFlags(objectOf(page, lines, found[i]));
      EXPECT_EQ(mine.dump(), withSortedFlags(want[i]).dump()) << "number " << i;
    }
    if (testing::Test::HasFailure()) return;  // the rest follows from it
  }
}

struct InventoryCase {
  std::string name;
  Json json;
};

std::vector<InventoryCase> inventoryCases() {
  std::vector<InventoryCase> cases;
  std::ifstream in(PAGESCAN_SOURCE_DIR "/tests/page/inventory_cases.jsonl");
  for (std::string line; std::getline(in, line);) {
    Json json = Json::parse(line);
    cases.push_back({json["name"], std::move(json)});
  }
  return cases;
}

class Inventory : public testing::TestWithParam<InventoryCase> {};

TEST_P(Inventory, IsAsWorkedOutByHand) {
  const Json& json = GetParam().json;
  const std::string bytes = asBytes(json["page"]);
  const std::string url = json["url"].is_null() ? "" : json["url"];
  const std::string charset = json["charset"].is_null() ? "" : json["charset"];
  PageOptions options;
  options.url = url;
  options.charset = charset;
  options.scripting = json["scripting"] == "on";
  for (const std::string profile : json["profiles"]) options.profiles |= *profileOf(profile);
  for (const Placement::Kind kind : Placement::kKinds) {
    Placement placement(kind);
    SCOPED_TRACE(placement.name());
    compare(placement.bytes(bytes), options, json["want"]);
  }
}

INSTANTIATE_TEST_SUITE_P(Cases, Inventory, testing::ValuesIn(inventoryCases()),
                         [](const auto& test) {
                           std::string name = std::to_string(test.index) + "_" + test.param.name;
                           std::replace_if(
                               name.begin(), name.end(),
                               [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
                           return name;
                         });

// A real page and whether scripts run.
struct RealPage {
  fs::path page;
  fs::path want;
  bool scripting;
};

std::vector<RealPage> realPages() {
  const fs::path golden = fs::path(PAGESCAN_SHARED_DIR) / "golden";
  std::vector<RealPage> pages;
  std::error_code missing;
  for (const auto& entry : fs::directory_iterator(golden / "inventory" / "pages", missing)) {
    const std::string name = entry.path().stem().string();  // NAME.on or NAME.off
    const std::size_t dot = name.rfind('.');
    pages.push_back(
        {golden / "pages" / name.substr(0, dot), entry.path(), name.substr(dot) == ".on"});
  }
  std::sort(pages.begin(), pages.end(),
            [](const RealPage& a, const RealPage& b) { return a.want < b.want; });
  return pages;
}

class RealInventory : public testing::TestWithParam<RealPage> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealInventory);

TEST_P(RealInventory, IsAsWorkedOutByOtherMeans) {
  std::ifstream in(GetParam().page, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::vector<Json> want;
  std::ifstream lines(GetParam().want);
  for (std::string line; std::getline(lines, line);) want.push_back(Json::parse(line));
  PageOptions options;
  options.url = "https://www.example.com/section/article.html?id=1#top";
  options.scripting = GetParam().scripting;
  compare(bytes, options, want);
}

INSTANTIATE_TEST_SUITE_P(Pages, RealInventory, testing::ValuesIn(realPages()),
                         [](const auto& test) { return std::to_string(test.index); });

}  // namespace
}  // namespace pagescan::tests
