// The encodings of html5lib's pages, by the tree and the prescan together.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "encoding/encoding.h"
#include "pagescan/page.h"

namespace pagescan::tests {
namespace {

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// "#data", the page, "#encoding", a label.
TEST(Page, HasTheEncodingsThatHtml5libExpects) {
  const std::filesystem::path folder =
      std::filesystem::path(PAGESCAN_SHARED_DIR) / "suites/html5lib/encoding";
  if (!std::filesystem::exists(folder)) GTEST_SKIP() << "the suites are not here";
  constexpr std::string_view kData = "#data\n";
  constexpr std::string_view kEncoding = "\n#encoding\n";
  int count = 0;
  for (const char* const name : {"tests1.dat", "tests2.dat", "test-yahoo-jp.dat"}) {
    const std::string text = contentOf(folder / name);
    for (std::size_t at = text.find(kData); at != std::string::npos; at = text.find(kData, at)) {
      at += kData.size();
      const std::size_t heading = text.find(kEncoding, at);
      if (heading == std::string::npos) break;
      const std::size_t label = heading + kEncoding.size();
      const std::size_t end = std::min(text.find('\n', label), text.size());
      const std::string page = text.substr(at, heading - at);
      const auto expected = internal::encodingForLabel(text.substr(label, end - label));
      ASSERT_TRUE(expected) << name << " at " << label;
      EXPECT_EQ(Page(page).encoding(), internal::nameOf(*expected)) << name << ": " << page;
      ++count;
      at = end;
    }
  }
  EXPECT_EQ(count, 82);
}

}  // namespace
}  // namespace pagescan::tests
