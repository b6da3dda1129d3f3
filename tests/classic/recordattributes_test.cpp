#include "recordattributes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

void insert(CZKHTMLDietTransactionsObject& record, const char* name) {
  RWCString text(name);
  auto* attribute = new CZKHTMLDietAttributeObject;
  attribute->SetAttributeName(text);
  record.InsertAttributeObject(attribute);
}

std::vector<std::string> visited(CZKHTMLDietTransactionsObject& record) {
  std::vector<std::string> names;
  forEachAttribute(record, [&](CZKHTMLDietAttributeObject& attribute) {
    names.emplace_back(attribute.GetAttributeName());
  });
  return names;
}

TEST(ForEachAttribute, VisitsNoneOfAnEmptyRecord) {
  CZKHTMLDietTransactionsObject record;
  EXPECT_TRUE(visited(record).empty());
}

TEST(ForEachAttribute, VisitsEachOnceInTheOrderOfTheNames) {
  CZKHTMLDietTransactionsObject record;
  for (const char* const name : {"src", "lowsrc", "dynsrc", "code", "codebase", ""}) {
    insert(record, name);
  }
  RWOrdered names;
  ASSERT_TRUE(record.GetAttributeNames(names));
  std::vector<std::string> expected;
  for (std::size_t i = 0; i < names.entries(); ++i) {
    expected.emplace_back(bytesOf(dynamic_cast<RWCollectableString&>(*names.at(i))));
  }
  EXPECT_EQ(visited(record), expected);
  EXPECT_EQ(expected.size(), 6U);
}

TEST(ForEachAttribute, FindsAnAttributeWhoseNameWasChangedLater) {
  CZKHTMLDietTransactionsObject record;
  insert(record, "src");
  RWCString other("other");
  record.GetFirstAttributeObject()->SetAttributeName(other);
  EXPECT_EQ(visited(record), std::vector<std::string>{"other"});
}

}  // namespace
}  // namespace pagescan::tests
