// What a page takes of the heap: no block for a reference, and at the most the page's size and 48
// bytes a reference. Documents in attributes and the text of SVG style elements take more: what is
// made of them is kept beside the page.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "pagescan/page.h"
#include "pagescan/style_sheet.h"
#include "support/allocation_count.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

constexpr std::size_t kBytesAReference = 48;
// While they are found, references stand in blocks of some hundreds.
constexpr std::size_t kReferencesABlock = 200;
// For the fixed part of a reading: tables, the first blocks of lists.
constexpr std::size_t kFixedBytes = 32768;

// Pages of one piece over and over, and what a piece holds and takes.
struct Row {
  Here here;
  Slot slot;
  std::string_view opening;
  std::string_view piece;
  std::string_view closing;
  std::size_t referencesEach = 1;
  std::size_t bytesEach = kBytesAReference;
  std::size_t blocksEach = 0;
};

constexpr Row kRows[] = {
    {HERE, Slot::url, "", "<a href=page.html>", ""},
    {HERE, Slot::url, "", "<img src='a&amp;b'>", ""},
    {HERE, Slot::url, "<svg>", "<image xlink:href=a />", ""},
    {HERE, Slot::url, "<noscript>", "<img src=a.gif>", "</noscript>"},
    {HERE, Slot::url, "<template>", "<img src=a.gif>", "</template>"},
    {HERE, Slot::url, "<iframe srcdoc=\"", "<img src=a.gif>", "\"></iframe>"},
    {HERE, Slot::url, "<iframe srcdoc=\"", "&lt;img src='&amp;amp;a'>", "\"></iframe>", 1, 176},
    {HERE, Slot::url, "", "<iframe srcdoc='<img src=a.gif>'></iframe>", "", 1, 112, 8},
    {HERE, Slot::urlList, "<a href=x ping='", "a/b ", "'>"},
    {HERE, Slot::commaList, "<applet archive='", "a.jar,", "'>"},
    {HERE, Slot::srcset, "<img srcset='", "a.gif 1x, ", "'>"},
    {HERE, Slot::srcset, "", "<img srcset='a.gif 1x, b.gif 2x'>", "", 2},
    {HERE, Slot::refresh, "", "<meta http-equiv=refresh content='0; url=a'>", ""},
    {HERE, Slot::cssUrl, "<style>", "a{b:url(c)}", "</style>"},
    {HERE, Slot::cssUrl, "", "<p style='a:url(b)'>", ""},
    {HERE, Slot::cssUrl, "<svg><style>", "a{b:url(c)}", "</style>", 1, 144},
    {HERE, Slot::cssString, "<style>", "a{b:url('c')}", "</style>"},
    {HERE, Slot::json, "<script type=speculationrules>{\"prefetch\":[{\"urls\":[", "\"a.html\",",
     "\"b\"]}]}</script>"},
};

std::string pageOf(const Row& row, std::size_t pieces) {
  std::string page(row.opening);
  for (std::size_t i = 0; i < pieces; ++i) page += row.piece;
  return page.append(row.closing);
}

struct Cost {
  std::size_t references;
  std::size_t blocks;
  std::size_t peak;
};

// What reading costs, beside what the page is held to.
Cost costOf(const Row& row, std::size_t pieces) {
  const std::string text = pageOf(row, pieces);
  PageOptions options;
  options.charset = "utf-8";
  options.profiles = kDataProfile;
  const AllocationCount count;
  const Page page(text, options);
  Cost cost{0, count.soFar(), count.peakSoFar()};
  for (const Reference& reference : page.references()) {
    if (reference.slot == row.slot) ++cost.references;
  }
  EXPECT_GE(cost.references, pieces * row.referencesEach);
  const std::size_t beyond = row.bytesEach - kBytesAReference;
  EXPECT_LE(cost.peak, text.size() + kBytesAReference * page.references().size() + beyond * pieces +
                           kFixedBytes)
      << page.references().size() << " references in " << text.size() << " bytes";
  return cost;
}

TEST(PageMemory, StaysUnderThePageAndSomeBytesAReference) {
  for (const Row& row : kRows) {
    const testing::ScopedTrace trace(row.here.file, row.here.line, "this row");
    for (const std::size_t pieces : {0U, 1U, 100U, 5000U, 9000U, 20000U}) costOf(row, pieces);
  }
}

// That many more references cost a few blocks, not one each.
TEST(PageMemory, TakesNoBlockForAReference) {
  for (const Row& row : kRows) {
    const testing::ScopedTrace trace(row.here.file, row.here.line, "this row");
    const Cost few = costOf(row, 2000);
    const Cost many = costOf(row, 16000);
    const std::size_t more = many.references - few.references;
    EXPECT_LE(many.blocks, few.blocks + more / kReferencesABlock + row.blocksEach * more + 16)
        << "for " << more;
  }
}

// Each of these documents has a base as long as that of the page.
TEST(PageMemory, OfManyBasesBelowALongOneIsLinear) {
  constexpr std::size_t kDocuments = 2000;
  std::string text = "<base href='http://h/" + std::string(100000, 'x') + "/'>";
  for (std::size_t i = 0; i < kDocuments; ++i) {
    text += "<iframe srcdoc='<base href=a/><img src=b>'></iframe>";
  }
  const AllocationCount count;
  const Page page(text);
  EXPECT_EQ(page.references().size(), 1 + 2 * kDocuments);
  EXPECT_LE(count.peakSoFar(), 3 * text.size() + 400 * kDocuments + kFixedBytes);
}

TEST(PageMemory, OfASheetIsLikewise) {
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "a{b:url(c);d:url('e')}";
  const AllocationCount count;
  const StyleSheet sheet(text);
  EXPECT_EQ(sheet.references().size(), 40000U);
  EXPECT_LE(count.soFar(), sheet.references().size() / kReferencesABlock + 64);
  EXPECT_LE(count.peakSoFar(),
            text.size() + kBytesAReference * sheet.references().size() + kFixedBytes);
}

TEST(PageMemory, OfAUrlIntoATextThatIsUsedAgainIsNone) {
  std::string text;
  for (int i = 0; i < 1000; ++i) text += "<a href=../a/page.html?q#f><img src=b.gif>";
  PageOptions options;
  options.url = "http://www.example.com/a/b/";
  const Page page(text, options);
  std::string url;
  url.reserve(1000);
  EXPECT_EQ(allocationsOf([&] {
              for (const Reference& reference : page.references()) page.urlInto(reference, url);
            }),
            0U);
}

}  // namespace
}  // namespace pagescan::tests
