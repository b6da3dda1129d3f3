// The attributes of a record, for sinks of tests.
#ifndef PAGESCAN_TESTS_SUPPORT_RECORD_ATTRIBUTES_H
#define PAGESCAN_TESTS_SUPPORT_RECORD_ATTRIBUTES_H

#include <vector>

#include "recordattributes.h"

namespace pagescan::tests {

// The record's first one, then the others in no order to rely on: no getter shows it.
inline std::vector<CZKHTMLDietAttributeObject*> attributesOf(
    CZKHTMLDietTransactionsObject& record) {
  std::vector<CZKHTMLDietAttributeObject*> attributes;
  CZKHTMLDietAttributeObject* const first = record.GetFirstAttributeObject();
  if (first) attributes.push_back(first);
  forEachAttribute(record, [&](CZKHTMLDietAttributeObject& attribute) {
    if (&attribute != first) attributes.push_back(&attribute);
  });
  return attributes;
}

}  // namespace pagescan::tests

#endif
