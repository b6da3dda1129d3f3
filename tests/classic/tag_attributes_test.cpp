// That reading the tags of a page is linear, whatever the page holds: not by time but by counting
// the bytes looked at and the memory taken.
#include "classic/tag_attributes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/search.h"
#include "support/allocation_count.h"
#include "support/placement.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::tests {
namespace {

using internal::FoundAttributes;
using internal::TagAttributeReader;

constexpr internal::AttributeSet kAllIds = (internal::AttributeSet{1} << internal::kAttributes) - 1;
constexpr internal::AttributeSet kBackground = internal::AttributeSet{1}
                                               << internal::attributeIdOfCell("background");

// A page of openings, as many as the root of its length, or as fill half of it, and a long tail.
struct GrowthCase {
  Here here;
  std::string_view opening;
  std::string_view beforeTail;
  std::string_view tail;
  std::string_view end;
};
constexpr GrowthCase kGrowth[] = {
    {HERE, "<img a=\">\" ", "", "n", ""},              // a name up to the end
    {HERE, "<img a=\">\" ", "", "n", ">"},             // and up to a ">"
    {HERE, "<img a=\">\" ", "", " ", ""},              // white space
    {HERE, "<img a=\">\" ", "", "=", ""},              // equal signs without a name
    {HERE, "<img a=\">\" ", "name", " ", "x"},         // a name, and what follows it is looked for
    {HERE, "<td a=\">\" ", "background", " ", "x"},    // the last one that is wanted
    {HERE, "<td a=\">\" ", "background", " / ", "x"},  // the same before unexpected bytes
    {HERE, "<img a=\">\" ", "name ", "/", ""},         // unexpected bytes
    {HERE, "<img a=\">\" ", "name ", "/ ", ""},
    {HERE, "<img a=\">\" ", "src=", " ", ""},     // a value that is missing
    {HERE, "<img a=\">\" ", "src='", "v", ""},    // a value that is cut
    {HERE, "<img a=\">\" ", "src='", "v", "' "},  // a value
    {HERE, "<img a=\">\" ", "src=", "v", " "},    // a bare one
    {HERE, "<img a=\">\" ", "", "src=v ", ""},    // many attributes
    {HERE, "<img a='>' b=\">\" ", "", "n", ""},
    {HERE, "<img a=\">\" b='", "'", "n", ""},
    {HERE, "<img>", "", "n", ""},
    {HERE, "<td ", ">", "n", ""},
    {HERE, "<img src=x ", ">", "n", ""},
};

std::string pageOf(const GrowthCase& row, std::size_t openings, std::size_t length) {
  std::string page;
  for (std::size_t i = 0; i < openings; ++i) page += row.opening;
  page += row.beforeTail;
  while (page.size() < length) page += row.tail;
  return page += row.end;
}

// Reads every "<img" and "<td" of the page, as the parser would, and returns how many bytes past
// their ends were looked at.
std::size_t readPastTagsOf(const std::string& page, std::size_t nameLength) {
  const char* end = page.data() + page.size();
  TagAttributeReader reader(page.data(), end);
  const auto wanted = nameLength == 2 ? kBackground : kAllIds;
  for (const char* at = page.data(); (at = internal::findByte(at, end, '<')) != end;) {
    const char* nameEnd = at + 1 + nameLength;
    const char* tagEnd = internal::findByte(at, end, '>');
    if (tagEnd == end) break;
    FoundAttributes found;
    reader.read(nameEnd, tagEnd, wanted, found);
    at = tagEnd;
  }
  return static_cast<std::size_t>(reader.readPastTags());
}

TEST(TagAttributeReader, LooksAtTheBytesOfAPageABoundedNumberOfTimes) {
  forEachRow(kGrowth, [](const GrowthCase& row) {
    for (const std::size_t length : {10'000U, 100'000U, 1'000'000U}) {
      const auto root = static_cast<std::size_t>(std::sqrt(length));
      for (const std::size_t openings : {root, length / 2 / row.opening.size()}) {
        const std::string page = pageOf(row, openings, length);
        EXPECT_LE(readPastTagsOf(page, row.opening.starts_with("<td") ? 2 : 3), 6 * page.size())
            << openings;
      }
    }
  });
}

TEST(TagAttributeReader, CountsTheLastStepOfAReading) {
  const std::string page = "<img a=\">\" " + std::string(1000, 'n');
  EXPECT_GE(readPastTagsOf(page, 3), 1000U);
}

// A value that many tags read past their ends is in the memory once.
TEST(ParseHTML, TakesMemoryInProportionToThePage) {
  forEachRow(kGrowth, [](const GrowthCase& row) {
    for (const std::size_t length : {100'000U, 1'000'000U}) {
      const std::string page = pageOf(row, static_cast<std::size_t>(std::sqrt(length)), length);
      EXPECT_LE(bytesTakenBy([&] {
                  CHTMLOffsetParser("http://w1/d/").ParseHTML(page.c_str(), page.size());
                }),
                40 * page.size());
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
