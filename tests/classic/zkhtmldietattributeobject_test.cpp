#include "zkhtmldietattributeobject.h"

#include <gtest/gtest.h>

#include <string_view>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

struct AttributeCase {
  Here here;
  std::string_view name;
  std::string_view value;
  std::string_view original;
  int offset;
};
constexpr AttributeCase kAttributes[] = {
    {HERE, "src"sv, "http://h/a.gif"sv, "a.gif"sv, 10},
    {HERE, ""sv, ""sv, ""sv, -1},
    {HERE, "src"sv, ""sv, ""sv, 0},
    {HERE, "background"sv, "http://a.host.of.some.length/and/a/path.gif"sv,
     "a value that is too long for the object"sv, 2147483647},
};

TEST(CZKHTMLDietAttributeObject, HoldsWhatItWasMadeWith) {
  forEachPlacement(kAttributes, [](const AttributeCase& row, Placement& place) {
    RWCString& name = place.string(row.name);
    RWCString& value = place.string(row.value);
    RWCString& original = place.string(row.original);
    CZKHTMLDietAttributeObject attribute(name, value, original, row.offset);
    EXPECT_EQ(attribute.GetAttributeName(), row.name);
    EXPECT_EQ(attribute.GetAttributeValue(), row.value);
    EXPECT_EQ(attribute.GetOriginalAttributeValue(), row.original);
    EXPECT_EQ(attribute.GetAttributeOffset(), row.offset);
    EXPECT_EQ(bytesOf(name), row.name);
    EXPECT_EQ(bytesOf(value), row.value);
    EXPECT_EQ(bytesOf(original), row.original);
  });
}

TEST(CZKHTMLDietAttributeObject, HoldsWhatItWasGivenLater) {
  forEachPlacement(kAttributes, [](const AttributeCase& row, Placement& place) {
    CZKHTMLDietAttributeObject attribute;
    EXPECT_STREQ(attribute.GetAttributeName(), "");
    EXPECT_STREQ(attribute.GetAttributeValue(), "");
    EXPECT_STREQ(attribute.GetOriginalAttributeValue(), "");
    attribute.SetAttributeName(place.string(row.name));
    attribute.SetAttributeValue(place.string(row.value));
    attribute.SetOriginalAttributeValue(place.string(row.original));
    attribute.SetAttributeOffset(row.offset);
    EXPECT_EQ(attribute.GetAttributeName(), row.name);
    EXPECT_EQ(attribute.GetAttributeValue(), row.value);
    EXPECT_EQ(attribute.GetOriginalAttributeValue(), row.original);
    EXPECT_EQ(attribute.GetAttributeOffset(), row.offset);
  });
}

TEST(CZKHTMLDietAttributeObject, KeepsItsOwnCopies) {
  RWCString name("src");
  RWCString value("a value that is too long for the object");
  RWCString original("original");
  CZKHTMLDietAttributeObject attribute(name, value, original, 1);
  name = "changed";
  value[0] = 'X';
  original = "changed";
  EXPECT_STREQ(attribute.GetAttributeName(), "src");
  EXPECT_STREQ(attribute.GetAttributeValue(), "a value that is too long for the object");
  EXPECT_STREQ(attribute.GetOriginalAttributeValue(), "original");
}

TEST(CZKHTMLDietAttributeObject, ShowsAValueUpToItsFirstNul) {
  RWCString name("src");
  RWCString value("a\0b", 3);
  CZKHTMLDietAttributeObject attribute(name, value, value, 1);
  EXPECT_STREQ(attribute.GetAttributeValue(), "a");
  EXPECT_EQ(attribute.GetAttributeValue()[2], 'b');
}

TEST(CZKHTMLDietAttributeObject, IsIdentifiedByItsAddress) {
  RWCString text("src");
  const CZKHTMLDietAttributeObject attribute(text, text, text, 1);
  const CZKHTMLDietAttributeObject other(text, text, text, 1);
  EXPECT_TRUE(attribute.isEqual(&attribute));
  EXPECT_FALSE(attribute.isEqual(&other));
  EXPECT_EQ(attribute.compareTo(&attribute), 0);
  EXPECT_NE(attribute.compareTo(&other), 0);
  EXPECT_EQ(attribute.isA(), RWCollectable().isA());
}

}  // namespace
}  // namespace pagescan::tests
