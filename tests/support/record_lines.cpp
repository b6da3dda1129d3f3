#include "support/record_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/record_attributes.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldiettransactiondata.h"

namespace pagescan::tests {
namespace {

// Only its dump shows a record's order. No name holds a line end.
void sortAsDumped(CZKHTMLDietTransactionsObject& record,
                  std::vector<CZKHTMLDietAttributeObject*>& attributes) {
  testing::internal::CaptureStdout();
  record.PrintAll();
  const std::string dump = "\n" + testing::internal::GetCapturedStdout();
  const auto place = [&](CZKHTMLDietAttributeObject* attribute) {
    return dump.find(std::string("\nName:\t") + attribute->GetAttributeName() + "\nValue:\t");
  };
  std::sort(attributes.begin(), attributes.end(),
            [&](auto* a, auto* b) { return place(a) < place(b); });
}

}  // namespace

std::string lineOf(CZKHTMLDietTransactionsObject& record) {
  std::vector<CZKHTMLDietAttributeObject*> attributes = attributesOf(record);
  if (attributes.size() > 1) sortAsDumped(record, attributes);
  std::string line = record.GetTagName();
  for (CZKHTMLDietAttributeObject* const attribute : attributes) {
    line += std::string(" ") + attribute->GetAttributeName() + "=" +
            attribute->GetOriginalAttributeValue() + "@" +
            std::to_string(attribute->GetAttributeOffset()) + "->" + attribute->GetAttributeValue();
  }
  return line + "\n";
}

}  // namespace pagescan::tests
