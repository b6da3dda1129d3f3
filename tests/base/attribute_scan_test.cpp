#include "base/attribute_scan.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

using internal::scanAttribute;
using internal::ScannedAttribute;

constexpr std::string_view kNone;

struct AttributeCase {
  Here here;
  std::string_view text;
  std::string_view name;
  std::string_view value;
  std::size_t next;
  std::size_t readTo;
  bool isLast;
};
constexpr AttributeCase kAttributes[] = {
    {HERE, "src=a.gif>", "src", "a.gif", 9, 9, false},
    {HERE, " src = 'a b' >", "src", "a b", 11, 11, false},
    {HERE, "src=\"\" x", "src", "", 5, 5, false},
    {HERE, "alt>", "alt", kNone, 3, 3, true},
    {HERE, "alt  x=y", "alt", kNone, 3, 5, false},
    {HERE, "alt  ", "alt", kNone, 3, 5, false},
    {HERE, "alt ////", "alt", kNone, 3, 8, false},
    {HERE, "alt //// x=y", "alt", kNone, 3, 9, false},
    {HERE, "alt ////>", "alt", kNone, 3, 8, true},
    {HERE, "a_b=\"l\" src=\"x\">", "a_b=\"l\" src", "x", 14, 14, false},
    {HERE, "alt", kNone, kNone, 3, 3, true},
    {HERE, "", kNone, kNone, 0, 0, true},
    {HERE, "    ", kNone, kNone, 4, 4, true},
    {HERE, "=x y=z", kNone, kNone, 6, 0, true},
    {HERE, "  > x=y", kNone, kNone, 7, 3, true},
    {HERE, "///", kNone, kNone, 3, 3, true},
    {HERE, "src='a.gif>", kNone, kNone, 11, 11, true},
    {HERE, "src=a.gif", kNone, kNone, 9, 9, true},
    {HERE, "src=    ", kNone, kNone, 8, 8, true},
};

TEST(ScanAttribute, ReadsOneAndTellsHowFarItLooked) {
  forEachPlacement(kAttributes, [](const AttributeCase& row, Placement& place) {
    const std::string_view text = place.bytes(row.text);
    const ScannedAttribute scanned = scanAttribute(text.data(), text.data() + text.size());
    EXPECT_EQ(scanned.name, row.name);
    EXPECT_EQ(scanned.value, row.value);
    EXPECT_EQ(scanned.value.data() == nullptr, row.value.data() == nullptr);
    EXPECT_EQ(scanned.next, text.data() + row.next);
    EXPECT_EQ(scanned.readTo, text.data() + row.readTo);
    EXPECT_EQ(scanned.isLast, row.isLast);
  });
}

}  // namespace
}  // namespace pagescan::tests
