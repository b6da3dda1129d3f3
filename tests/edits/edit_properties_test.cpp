// What holds for the edits of every page: made-up pages, random pages, random values.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "fuzz/support/edit_promises.h"
#include "pagescan/edits.h"
#include "support/code_points.h"
#include "support/generated_texts.h"

namespace pagescan::tests {
namespace {

using Json = nlohmann::json;

struct Sample {
  std::string name, bytes, charset;
  Profiles profiles = 0;
};

// The pages that the inventory is held to.
std::vector<Sample> samples() {
  std::vector<Sample> all;
  std::ifstream lines(PAGESCAN_SOURCE_DIR "/tests/page/inventory_cases.jsonl");
  for (std::string line; std::getline(lines, line);) {
    const Json object = Json::parse(line);
    Sample sample;
    sample.name = object["name"].get<std::string>();
    const bool isBytes = object.contains("bytes");
    sample.bytes = object["page"].get<std::string>();
    if (isBytes) sample.bytes = asBytes(sample.bytes);
    if (object["charset"].is_string()) sample.charset = object["charset"].get<std::string>();
    for (const Json& profile : object["profiles"]) {
      sample.profiles = static_cast<Profiles>(sample.profiles |
                                              profileOf(profile.get<std::string>()).value_or(0));
    }
    all.push_back(std::move(sample));
  }
  return all;
}

PageOptions optionsOf(const Sample& sample) {
  PageOptions options;
  options.url = "http://h.test/d/p.html?q#f";
  options.charset = sample.charset;
  options.profiles = sample.profiles;
  return options;
}

// Pieces that mean something in one of the layers.
const std::vector<std::string_view> kPieces = {
    "a",        "b/",          "?c=d", "&e",  "&amp", "&amp;", "&#38;", "\"",       "'",
    "\\",       "<",           ">",    "(",   ")",    " ",     "\t",    "\n",       "\r",
    ",",        ";",           "url=", "é",   "日",   "я",     "😀",     "\x7F",     "%20",
    "</style>", "</noscript>", "]]>",  "-->", "`",    "=",     "#",     "\xC2\x85", "http://h/"};

std::string randomValue(std::mt19937& random) {
  std::string value;
  for (std::size_t left = random() % 6 + 1; left > 0; --left) {
    value += kPieces[random() % kPieces.size()];
  }
  return value;
}

TEST(EditProperties, IdleEditsChangeNothing) {
  const std::vector<Sample> all = samples();
  ASSERT_FALSE(all.empty());
  for (const Sample& sample : all) {
    const Page page(sample.bytes, optionsOf(sample));
    EXPECT_EQ(fuzz::brokenByIdleEdits(page), "") << sample.name;
  }
}

TEST(EditProperties, RandomValuesReadBackAsThemselves) {
  std::mt19937 random(20261121);
  for (const Sample& sample : samples()) {
    const PageOptions options = optionsOf(sample);
    const Page page(sample.bytes, options);
    for (std::size_t round = 0; round < inShortOrDeepRun(8, 400); ++round) {
      std::vector<Edit> edits;
      for (std::size_t i = 0; i < page.references().size(); ++i) {
        if (random() % 2 == 0) edits.push_back({i, randomValue(random), {}});
      }
      ASSERT_EQ(fuzz::brokenByEdits(page, options, edits), "") << sample.name;
    }
  }
}

// A URL of letters, digits and the usual signs can be written everywhere but between markup.
TEST(EditProperties, AnOrdinaryUrlIsNeverRefused) {
  for (const Sample& sample : samples()) {
    const PageOptions options = optionsOf(sample);
    const Page page(sample.bytes, options);
    std::vector<Edit> edits;
    for (std::size_t i = 0; i < page.references().size(); ++i) {
      edits.push_back({i, "https://e.test/" + std::to_string(i) + "?a=b&c#d", {}});
    }
    for (const RefusedEdit& edit : applyEdits(page, edits).refused) {
      EXPECT_TRUE(edit.reason == EditRefusal::dividedByMarkup ||
                  edit.reason == EditRefusal::overlaps)
          << sample.name << " " << edit.edit << " " << nameOf(edit.reason);
    }
    EXPECT_EQ(fuzz::brokenByEdits(page, options, edits), "") << sample.name;
  }
}

// Attributes and CSS have escapes for everything.
TEST(EditProperties, AnyValueCanBeWrittenWhereThereAreEscapes) {
  std::mt19937 random(20261121);
  for (const Sample& sample : samples()) {
    const Page page(sample.bytes, optionsOf(sample));
    std::vector<Edit> edits;
    for (std::size_t i = 0; i < page.references().size(); ++i) {
      const Slot slot = page.references()[i].slot;
      const bool hasEscapes = slot == Slot::url || slot == Slot::cssUrl || slot == Slot::cssString;
      if (hasEscapes) edits.push_back({i, "x" + randomValue(random), {}});
    }
    for (const RefusedEdit& edit : applyEdits(page, edits).refused) {
      const bool isKnown = edit.reason == EditRefusal::dividedByMarkup ||
                           edit.reason == EditRefusal::overlaps ||
                           edit.reason == EditRefusal::notInEncoding;
      EXPECT_TRUE(isKnown) << sample.name << " " << edit.edit << " " << nameOf(edit.reason) << " "
                           << edits[edit.edit].value << "\n"
                           << sample.bytes;
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
