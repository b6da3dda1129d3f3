// Records of a parser as the twin's structs, and what holds for each of them.
#ifndef PAGESCAN_FUZZ_SUPPORT_RECORDS_H
#define PAGESCAN_FUZZ_SUPPORT_RECORDS_H

#include <string>
#include <vector>

#include "reference/records.h"
#include "rw/rwcollectables.h"
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
// names, with the record's first one in front.
class Records : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    reference::Record shown{record->GetTagName(), {}};
    RWOrdered names;
    record->GetAttributeNames(names);
    for (std::size_t i = 0; i < names.entries(); ++i) {
      auto& name = dynamic_cast<RWCollectableString&>(*names.at(i));
      shown.attributes.push_back(attributeOf(*record->GetAttributeObject(name)));
    }
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

// Each value as written stands at its offset in the text, and is resolved as a new base resolves
// it.
inline void checkValues(const std::vector<reference::Record>& records, const std::string& text,
                        const char* pageUrl) {
  for (const reference::Record& record : records) {
    for (const reference::Attribute& attribute : record.attributes) {
      if (attribute.offset < 0) {
        check(attribute.original.empty() && attribute.value.empty(), "no value, no text");
        continue;
      }
      const auto offset = static_cast<std::size_t>(attribute.offset);
      check(offset + attribute.original.size() <= text.size(), "a value lies inside the text");
      // A style URL loses all quotes around it; its offset is that of the first byte behind one.
      const bool isQuoted = offset < text.size() && (text[offset] == '"' || text[offset] == '\'');
      check(isQuoted || text.compare(offset, attribute.original.size(), attribute.original) == 0,
            "a value stands at its offset");
      if (text.find('\0') != std::string::npos) continue;  // the getters do not show it all
      RWCString resolved;
      urlBase base((RWCString(pageUrl)));
      base.calcUrl(stringOf(attribute.original), resolved, false, true);
      check(attribute.value == resolved.data(), "a value is resolved as by a new base");
    }
  }
}

}  // namespace fuzz

#endif
