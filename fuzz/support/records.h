// Records of a parser as the twin's structs, and what holds for each of them.
#ifndef PAGESCAN_FUZZ_SUPPORT_RECORDS_H
#define PAGESCAN_FUZZ_SUPPORT_RECORDS_H

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "recordattributes.h"
#include "reference/classic/records.h"
#include "support/input.h"
#include "tqurlbase.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldiettransactiondata.h"
#include "zkhtmldietvirtualqueue.h"
#include "zkhtmloffsetparser.h"

namespace fuzz {

inline reference::Attribute attributeOf(CZKHTMLDietAttributeObject& attribute) {
  return {attribute.GetAttributeName(), attribute.GetAttributeValue(),
          attribute.GetOriginalAttributeValue(), attribute.GetAttributeOffset()};
}

// A sink that keeps what the getters show of each record. The attributes are in the order of their
// names, but the record's first one comes first.
class Records : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    reference::Record shown{record->GetTagName(), {}};
    pagescan::forEachAttribute(*record, [&](CZKHTMLDietAttributeObject& attribute) {
      shown.attributes.push_back(attributeOf(attribute));
    });
    const std::string first = record->GetFirstAttributeObject()->GetAttributeName();
    sort(shown.attributes, first);
    records.push_back(shown);
    return true;
  }

  static void sort(std::vector<reference::Attribute>& attributes, const std::string& first) {
    std::sort(attributes.begin(), attributes.end(), [&](const auto& a, const auto& b) {
      if ((a.name == first) != (b.name == first)) return a.name == first;
      return a.name < b.name;
    });
  }

  std::vector<reference::Record> records;
};

// The twin's records as the getters would show them: texts up to their first NUL.
inline std::vector<reference::Record> asShown(std::vector<reference::Record> records) {
  for (reference::Record& record : records) {
    for (reference::Attribute& attribute : record.attributes) {
      attribute.value = attribute.value.c_str();
      attribute.original = attribute.original.c_str();
    }
    const std::string first = record.attributes.front().name;
    Records::sort(record.attributes, first);
  }
  return records;
}

// What PrintAll writes of a parser or of a record: all of it, also what stands after a NUL, and in
// the order of the attributes.
template <typename Printer>
std::string printed(Printer& printer) {
  std::ostringstream out;
  std::streambuf* const before = std::cout.rdbuf(out.rdbuf());
  printer.PrintAll();
  std::cout.rdbuf(before);
  return out.str();
}

// Each value as written stands at its offset in the text, after `passed` bytes of which the rules
// tell that they are left out, and is resolved as a new base resolves it.
template <typename Passed>
void checkValues(const std::vector<reference::Record>& records, const std::string& text,
                 const char* pageUrl, const Passed& passed) {
  for (const reference::Record& record : records) {
    for (const reference::Attribute& attribute : record.attributes) {
      if (attribute.offset < 0) {
        check(attribute.original.empty() && attribute.value.empty(), "no value, no text");
        continue;
      }
      const auto offset = static_cast<std::size_t>(attribute.offset);
      check(offset <= text.size(), "a value begins inside the text");
      const std::size_t begin = offset + passed(offset);
      const std::size_t end = begin + attribute.original.size();
      check(end <= text.size(), "a value lies inside the text");
      check(text.compare(begin, end - begin, attribute.original) == 0,
            "a value stands at its offset");
      if (end < text.size() && text[end] == '\0') continue;  // the getters may not show it all
      RWCString resolved;
      urlBase base((RWCString(pageUrl)));
      base.calcUrl(stringOf(attribute.original), resolved, false, true);
      check(attribute.value == resolved.data(), "a value is resolved as by a new base");
    }
  }
}

}  // namespace fuzz

#endif
