// The slow twin of the inventory held to expected answers that were worked out independently, and
// its lists to the public suites of web-platform-tests.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "pagescan/url.h"
#include "reference/page/decoding.h"
#include "reference/page/inventory.h"
#include "reference/page/lists.h"

namespace pagescan::tests {
namespace {

using nlohmann::json;
using reference::page::Found;
using reference::page::InventoryOptions;
namespace fs = std::filesystem;

const fs::path kShared = PAGESCAN_SHARED_DIR;

std::string readAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<json> readLines(const fs::path& path) {
  std::vector<json> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) lines.push_back(json::parse(line));
  return lines;
}

// A JSON string stands for bytes: code point 0 to 255 is the byte of that value.
std::string bytesOf(const std::string& text) {
  std::string bytes;
  for (const auto& c : reference::page::fromUtf8(text)) bytes += static_cast<char>(c.code);
  return bytes;
}

json fieldsOf(const Found& found) {
  json fields = {{"start", found.begin},         {"end", found.end},    {"element", found.element},
                 {"attribute", found.attribute}, {"kind", found.kind},  {"slot", found.slot},
                 {"flags", found.flags},         {"value", found.value}};
  if (found.url) fields["url"] = *found.url;
  if (found.parent) fields["parent"] = *found.parent;
  return fields;
}

// The fields that the twin answers for, with the flags as a sorted list.
json comparable(const json& want) {
  json fields = want;
  for (const char* const name : {"line", "column", "raw", "bytes"}) fields.erase(name);
  json flags = want.value("flags", json::array());
  std::sort(flags.begin(), flags.end());
  fields["flags"] = flags;
  return fields;
}

void compare(const std::vector<Found>& got, const std::vector<json>& want,
             const std::string& what) {
  std::vector<json> expected;
  for (const json& one : want) expected.push_back(comparable(one));
  std::vector<json> answers;
  for (const Found& one : got) answers.push_back(fieldsOf(one));
  for (std::size_t i = 0; i < std::max(answers.size(), expected.size()); ++i) {
    const json answer = i < answers.size() ? answers[i] : json();
    const json wanted = i < expected.size() ? expected[i] : json();
    if (answer == wanted) continue;
    ADD_FAILURE() << what << ", reference " << i << "\n got " << answer.dump() << "\nwant "
                  << wanted.dump();
    return;
  }
}

InventoryOptions optionsFor(const std::string& url) {
  InventoryOptions options;
  options.url = url;
  options.resolve = [](const std::string& link, const std::string& base,
                       const std::string& encoding) { return resolve(link, base, encoding); };
  return options;
}

TEST(ReferenceInventory, GivesTheExpectedAnswersOfMadeUpPages) {
  const std::vector<json> cases = readLines(kShared / "golden" / "inventory" / "cases.jsonl");
  if (cases.empty()) GTEST_SKIP() << "the expected answers are not here";
  for (const json& one : cases) {
    InventoryOptions options = optionsFor(one["url"].is_null() ? "" : one["url"]);
    if (one["charset"].is_string()) options.charset = one["charset"];
    options.scripting = one["scripting"] == "on";
    for (const json& profile : one["profiles"]) options.profiles.insert(profile);
    const std::string page = bytesOf(one["page"]);
    compare(reference::page::inventory(page, options), one["want"],
            one["name"].dump() + " " + page);
  }
}

TEST(ReferenceInventory, GivesTheExpectedAnswersOfRealPages) {
  const fs::path folder = kShared / "golden" / "inventory" / "pages";
  if (!fs::is_directory(folder)) GTEST_SKIP() << "the expected answers are not here";
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename();
    const bool scripting = name.ends_with(".on.jsonl");
    const std::string page = name.substr(0, name.size() - (scripting ? 9 : 10));
    InventoryOptions options = optionsFor("https://www.example.com/section/article.html?id=1#top");
    options.scripting = scripting;
    compare(reference::page::inventory(readAll(kShared / "golden" / "pages" / page), options),
            readLines(entry.path()), name);
  }
}

TEST(ReferenceLists, FindTheSrcsetCandidatesOfTheSuite) {
  const fs::path path = kShared / "suites" / "wpt-html" / "srcset.json";
  if (!fs::exists(path)) GTEST_SKIP() << "the suite is not here";
  for (const json& test : json::parse(readAll(path))) {
    const std::string value = test["srcset"];
    json got = json::array();
    for (const auto& url : reference::page::srcsetUrls(reference::page::fromUtf8(value))) {
      got.push_back(reference::page::toUtf8(url));
    }
    json want = json::array();
    for (const json& candidate : test["candidates"]) {
      if (candidate["valid"]) want.push_back(candidate["url"]);
    }
    EXPECT_EQ(got, want) << value;
  }
}

TEST(ReferenceLists, FindTheRefreshUrlsOfTheSuite) {
  const fs::path path = kShared / "suites" / "wpt-html" / "meta-refresh.json";
  if (!fs::exists(path)) GTEST_SKIP() << "the suite is not here";
  for (const json& test : json::parse(readAll(path))) {
    const std::string value = test["content"];
    const auto got = reference::page::refreshUrl(reference::page::fromUtf8(value));
    if (test["start"].is_null() || test["start"] == test["end"]) {
      EXPECT_TRUE(!got || got->empty()) << value;
      continue;
    }
    ASSERT_TRUE(got && !got->empty()) << value;
    EXPECT_EQ(got->front().begin, test["start"]) << value;
    EXPECT_EQ(got->back().end, test["end"]) << value;
  }
}

}  // namespace
}  // namespace pagescan::tests
