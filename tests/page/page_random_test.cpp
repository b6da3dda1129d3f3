// Pages that no one wrote, beside the plain twin and the promises of the header.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "fuzz/support/page_promises.h"
#include "pagescan/page.h"
#include "support/generated_texts.h"

namespace pagescan::tests {
namespace {

std::string problemOf(const std::string& bytes, const PageOptions& options) {
  const std::vector<char> block(bytes.begin(), bytes.end());
  const Page page({block.data(), block.size()}, options);
  const std::string broken = fuzz::brokenPromise(page);
  return broken.empty() ? fuzz::differenceFromTwin(page, options) : broken;
}

// The pieces that references, and what decides about them, are made of.
const std::vector<std::string_view> kPieces = {
    "<a href=1>",
    "<img src=2 srcset='3 1x,4'>",
    "<base href=/b/>",
    "<p style=\"a:url(5)\">",
    "<noscript>",
    "</noscript>",
    "<template>",
    "</template>",
    "<svg>",
    "</svg>",
    "<style>@import '6';a{b:url(7)}",
    "</style>",
    "<iframe srcdoc=\"<img src=8>&lt;a href=9>\">",
    "<table>",
    "<tr background=10>",
    "</table>",
    "<video src=11 preload=none>",
    "<video>",
    "<source src=12 srcset=13>",
    "</video>",
    "<picture>",
    "</picture>",
    "<body background=14>",
    "<html manifest=15>",
    "<frameset>",
    "<frame src=16>",
    "<object data=17>",
    "</object>",
    "<math>",
    "<script src=18>",
    "</script>",
    "<link rel=\"icon preload\" as=image href=19>",
    "<head>",
    "</head>",
    "<meta http-equiv=refresh content='0;url=20'>",
    "<image xlink:href=21>",
    "<form action>",
    "<![CDATA[",
    "]]>",
    "<title>",
    "</title>",
    "&amp;",
    "x",
    "<!--",
    "-->",
    "<div><template shadowrootmode=open>",
    "<embed src=22.swf>",
    "<track src=23>",
    "<iframe srcdoc='<base href=/c/><a href=24><iframe srcdoc=&quot;<img src=25>&quot;>'>"};

TEST(Page, FindsInRandomMarkupWhatTheTwinFinds) {
  std::mt19937 random(20261121);
  const std::size_t rounds = randomRuns(3000, 300000);
  for (std::size_t round = 0; round < rounds; ++round) {
    std::string page;
    const std::size_t pieces = 1 + random() % 14;
    for (std::size_t i = 0; i < pieces; ++i) page += kPieces[random() % kPieces.size()];
    PageOptions options;
    options.url = "http://h.test/d/p.html?q#f";
    options.scripting = random() % 4 != 0;
    ASSERT_EQ(problemOf(page, options), "") << page << "\nscripting " << options.scripting;
  }
}

// The made-up pages of the golden cases, their characters as the bytes that they stand for.
std::vector<std::string> goldenPages() {
  std::vector<std::string> pages;
  std::ifstream in(PAGESCAN_SOURCE_DIR "/tests/page/inventory_cases.jsonl");
  for (std::string line; std::getline(in, line);) {
    const std::string text = nlohmann::json::parse(line)["page"];
    std::string page;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool isPair = (text[i] & 0x80) != 0;
      page += isPair ? static_cast<char>(text[i] << 6 | (text[i + 1] & 0x3F)) : text[i];
      if (isPair) ++i;
    }
    if (page.size() < 3000) pages.push_back(std::move(page));
  }
  return pages;
}

TEST(Page, FindsInMutatedPagesWhatTheTwinFinds) {
  const std::vector<std::string> pages = goldenPages();
  constexpr std::string_view kCharsets[] = {"",        "",      "utf-8",       "shift_jis",
                                            "gb18030", "big5",  "iso-2022-jp", "utf-16be",
                                            "euc-jp",  "koi8-r"};
  constexpr std::string_view kBytes = "<>\"'=/&;#!-[]{}()@,\\ \n\r\0ax1\x81\xE9";
  std::mt19937 random(20261122);
  const std::size_t rounds = randomRuns(3000, 300000);
  for (std::size_t round = 0; round < rounds; ++round) {
    const std::string& other = pages[random() % pages.size()];
    std::string page = pages[random() % pages.size()];
    for (std::size_t changes = random() % 4; changes > 0 && !page.empty(); --changes) {
      const std::size_t at = random() % page.size();
      switch (random() % 4) {
        case 0:
          page[at] = kBytes[random() % kBytes.size()];
          break;
        case 1:
          page.erase(at, random() % 8);
          break;
        case 2:
          page.insert(at, 1, kBytes[random() % kBytes.size()]);
          break;
        default:
          page.insert(at, other.substr(random() % (other.size() + 1), random() % 80));
      }
    }
    PageOptions options;
    options.url = "http://h.test/d/p.html?q#f";
    options.charset = kCharsets[random() % std::size(kCharsets)];
    options.scripting = random() % 4 != 0;
    options.profiles = static_cast<Profiles>(random() % 8);
    ASSERT_EQ(problemOf(page, options), "")
        << nlohmann::json(page).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace)
        << "\ncharset " << options.charset << ", scripting " << options.scripting << ", profiles "
        << int{options.profiles} << ", round " << round;
  }
}

TEST(Page, FindsTheSameWithEveryVersionOfTheKernels) {
  for (const std::string& page : goldenPages()) {
    std::vector<std::vector<std::string>> found;
    forEachKernelLevel([&] {
      const Page read(page);
      std::vector<std::string>& lines = found.emplace_back();
      for (const Reference& reference : read.references()) {
        lines.push_back(fuzz::lineOf(read, reference));
      }
    });
    for (const auto& lines : found) EXPECT_EQ(lines, found.front()) << page;
  }
}

}  // namespace
}  // namespace pagescan::tests
