// The whole inventory of made-up and real pages and sheets, with random changes, beside that of its
// slow twin.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "inventory_agreement.h"
#include "reference/page/text.h"
#include "support/generated_texts.h"

namespace pagescan::tests {
namespace {

namespace fs = std::filesystem;

const fs::path kShared = PAGESCAN_SHARED_DIR;

std::string readAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> madeUpPages() {
  std::vector<std::string> pages;
  std::ifstream file(kShared / "golden" / "inventory" / "cases.jsonl");
  for (std::string line; std::getline(file, line);) {
    const std::string text = nlohmann::json::parse(line)["page"];
    pages.emplace_back();
    for (const auto& c : reference::page::fromUtf8(text)) {
      pages.back() += static_cast<char>(c.code);
    }
  }
  return pages;
}

std::vector<fs::path> realPages() {
  std::vector<fs::path> paths;
  if (!fs::is_directory(kShared / "corpus" / "pages")) return paths;
  for (const auto& entry : fs::directory_iterator(kShared / "corpus" / "pages")) {
    paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

TEST(InventoryTwinPages, AgreesOnMutatedMadeUpPages) {
  const std::vector<std::string> pages = madeUpPages();
  if (pages.empty()) GTEST_SKIP() << "the pages are not here";
  RandomTexts random;
  for (const std::string& page : pages) {
    for (std::size_t round = randomRuns(30, 3000); round > 0; --round) {
      ASSERT_TRUE(agree(random.mutated(page, 4), optionsWith(random.number(2) == 0)));
    }
  }
}

TEST(InventoryTwinPages, AgreesOnRealPages) {
  const std::vector<fs::path> paths = realPages();
  if (paths.empty()) GTEST_SKIP() << "the pages are not here";
  for (std::size_t i = 0; i < paths.size(); i += kSanitizedShare) {
    const fs::path& path = paths[i];
    const std::string page = readAll(path);
    for (const bool scripting : {true, false}) {
      EXPECT_EQ(reference::page::inventoryDifference(page, optionsWith(scripting)), "") << path;
    }
  }
}

TEST(InventoryTwinPages, AgreesOnMutatedPartsOfRealPages) {
  const std::vector<fs::path> paths = realPages();
  if (paths.empty()) GTEST_SKIP() << "the pages are not here";
  RandomTexts random;
  for (const fs::path& path : paths) {
    const std::string page = readAll(path);
    for (std::size_t round = randomRuns(3, 300); round > 0; --round) {
      const std::size_t begin = random.number(page.size());
      const std::string part = page.substr(begin, 100 + random.number(8000));
      ASSERT_TRUE(agree(random.mutated(part, 20), optionsWith(random.number(2) == 0))) << path;
    }
  }
}

TEST(InventoryTwinPages, AgreesOnRealSheets) {
  const fs::path folder = kShared / "corpus" / "css";
  if (!fs::is_directory(folder)) GTEST_SKIP() << "the sheets are not here";
  RandomTexts random;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string sheet = readAll(entry.path());
    EXPECT_TRUE(agreeOnSheet(sheet.substr(0, 200000))) << entry.path();
    for (std::size_t round = randomRuns(10, 1000); round > 0; --round) {
      const std::string part = sheet.substr(random.number(sheet.size()), random.number(4000));
      ASSERT_TRUE(agreeOnSheet(random.mutated(part, 10))) << entry.path();
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
