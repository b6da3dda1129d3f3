// Lines and columns.
#include "page/line_starts.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

using internal::Encoding;
using internal::lineStartsOf;
using internal::positionOf;
using Starts = std::vector<std::uint32_t>;

struct Row {
  Here here;
  std::string_view text;
  Encoding encoding;
  Starts starts;
};

const Row kRows[] = {
    {HERE, "", Encoding::utf8, {0}},
    {HERE, "a", Encoding::utf8, {0}},
    {HERE, "\n", Encoding::utf8, {0, 1}},
    {HERE, "a\nb\rc\r\nd\n\re", Encoding::utf8, {0, 2, 4, 7, 9, 10}},
    {HERE, "\r", Encoding::utf8, {0, 1}},
    {HERE, "\r\r\n", Encoding::utf8, {0, 1, 3}},
    {HERE, "\t\v\f 12345678\r\n1234567890\n", Encoding::utf8, {0, 14, 25}},
    {HERE, {"a\0\n\0\r\0\n\0b\0", 10}, Encoding::utf16Le, {0, 4, 8}},
    {HERE, {"\0\n\n\0\0\r", 6}, Encoding::utf16Be, {0, 2, 6}},
    {HERE, {"\n\0\n", 3}, Encoding::utf16Le, {0, 2}},
};

TEST(LineStarts, AreWhereLinesBegin) {
  forEachPlacement(kRows, [](const Row& row, Placement& placement) {
    EXPECT_EQ(lineStartsOf(placement.bytes(row.text), row.encoding), row.starts);
  });
}

TEST(LineStarts, AreThoseOfAPlainLoop) {
  std::mt19937 random(11);
  for (int count = 0; count < 20000; ++count) {
    std::string text(random() % 200, 'x');
    for (char& c : text) c = "\n\rxx\t\x0Dxyz\x8A\x8D~xxxx"[random() % 17];
    Starts expected = {0};
    for (std::uint32_t i = 0; i < text.size(); ++i) {
      const bool isInPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
      if ((text[i] == '\n' || text[i] == '\r') && !isInPair) expected.push_back(i + 1);
    }
    ASSERT_EQ(lineStartsOf(text, Encoding::utf8), expected) << testing::PrintToString(text);
  }
}

TEST(LineStarts, GiveLineAndColumn) {
  const Starts starts = lineStartsOf("ab\r\nc\n", Encoding::utf8);
  const std::vector<std::pair<std::uint32_t, std::uint32_t>> expected = {
      {1, 1}, {1, 2}, {1, 3}, {1, 4}, {2, 1}, {2, 2}, {3, 1}};
  for (std::uint32_t offset = 0; offset < expected.size(); ++offset) {
    EXPECT_EQ(positionOf(starts, offset).line, expected[offset].first) << offset;
    EXPECT_EQ(positionOf(starts, offset).column, expected[offset].second) << offset;
  }
}

}  // namespace
}  // namespace pagescan::tests
