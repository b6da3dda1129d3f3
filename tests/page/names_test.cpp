#include "page/names.h"

#include <gtest/gtest.h>

#include <string>

#include "page/name_tables.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace pagescan::internal;  // NOLINT(google-build-using-namespace)

std::string upper(std::string_view name) {
  std::string text(name);
  for (char& c : text) c = toUpper(c);
  return text;
}

TEST(Names, AreFoundInEitherCase) {
  for (NameId element = 1; element < kElementCount; ++element) {
    EXPECT_EQ(findElement(elementName(element)), element) << elementName(element);
    EXPECT_EQ(findElement(upper(elementName(element))), element) << elementName(element);
  }
  for (NameId attribute = 1; attribute < kAttributeCount; ++attribute) {
    EXPECT_EQ(findAttribute(attributeName(attribute)), attribute) << attributeName(attribute);
    EXPECT_EQ(findAttribute(upper(attributeName(attribute))), attribute);
  }
}

TEST(Names, OfOtherTextAreUnknown) {
  for (const std::string_view name :
       {std::string_view(""), std::string_view("x"), std::string_view("im"),
        std::string_view("imgs"), std::string_view("img\0", 4), std::string_view("\0", 1),
        std::string_view("data-backgroundXimage"), std::string_view("fecomponentXransfer")}) {
    EXPECT_EQ(findElement(name), kUnknownName) << name;
    EXPECT_EQ(findAttribute(name), kUnknownName) << name;
  }
}

TEST(Names, OfSvgHaveTheParsersSpelling) {
  EXPECT_EQ(svgElementName(id(Element::feImage)), "feImage");
  EXPECT_EQ(svgElementName(id(Element::foreignObject)), "foreignObject");
  EXPECT_EQ(svgElementName(id(Element::style)), "style");
}

struct NameCase {
  Here here;
  const char* text;
  std::size_t tagName;
  std::size_t attributeName;
};
constexpr NameCase kNames[] = {
    {HERE, "a>", 1, 1},
    {HERE, "a", 1, 1},
    {HERE, "a=b>", 3, 1},
    {HERE, "=b>", 2, 2},
    {HERE, "abcdefg/", 7, 7},
    {HERE, "abcdefgh>", 8, 8},
    {HERE, "abcdefghi\n", 9, 9},
    {HERE, "abcdefghijklmnopq\fx", 17, 17},
    {HERE,
     "ab\x01"
     "cdefgh ",
     9, 9},
    {HERE,
     "abcdefghijk\x0b"
     "m\t23456789",
     13, 13},
    {HERE, "\xC3\xA9\xFF\x80 12345678", 4, 4},
};

TEST(Names, EndWhereTheTokenizerEndsThem) {
  forEachPlacement(kNames, [](const NameCase& row, Placement& placement) {
    const std::string_view text = placement.bytes(row.text);
    const char* const end = text.data() + text.size();
    const ScannedName tag = scanTagName(text.data(), end);
    EXPECT_EQ(static_cast<std::size_t>(tag.end - text.data()), row.tagName);
    EXPECT_EQ(tag.key, keyOfName(text.substr(0, row.tagName)));
    const ScannedName attribute = scanAttributeName(text.data(), end);
    EXPECT_EQ(static_cast<std::size_t>(attribute.end - text.data()), row.attributeName);
    EXPECT_EQ(attribute.key, keyOfName(text.substr(0, row.attributeName)));
  });
}

TEST(ExtraNames, AreAddedOnceAndFoundInEitherCase) {
  ExtraNames names(100);
  EXPECT_EQ(names.add("X-Card"), 100);
  EXPECT_EQ(names.add("data-hero"), 101);
  EXPECT_EQ(names.add("x-card"), 100);
  EXPECT_EQ(names.find("DATA-HERO"), 101);
  EXPECT_EQ(names.find("data-her"), kUnknownName);
  EXPECT_EQ(names.name(101), "data-hero");
}

}  // namespace
}  // namespace pagescan::tests
