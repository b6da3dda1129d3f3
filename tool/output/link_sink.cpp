#include "output/link_sink.h"

#include "output/bytes.h"
#include "rw/rwcollectables.h"
#include "rw/rwordered.h"
#include "zkhtmldiettransactiondata.h"

namespace pagescan::tool {

LinkSink::LinkSink(RecordsOutput& records, const std::string& baseUrl, const ScannedText& scanned)
    : records_(records), base_(RWCString(baseUrl.c_str())), scanned_(scanned) {}

// The names come in the order of the record: that of the library's table of tags.
bool LinkSink::insert(CZKHTMLDietTransactionsObject* record) {
  RWOrdered names;
  record->GetAttributeNames(names);
  for (std::size_t i = 0; i < names.entries(); ++i) {
    auto* name = dynamic_cast<RWCollectableString*>(names.at(i));
    if (name == nullptr) continue;
    if (auto* attribute = record->GetAttributeObject(*name))
      write(record->GetTagName(), *attribute);
  }
  return true;
}

void LinkSink::write(std::string_view tag, CZKHTMLDietAttributeObject& attribute) {
  const std::string_view name = attribute.GetAttributeName();
  if (!scanned_.listsRel && name == "rel") return;
  const int offset = attribute.GetAttributeOffset();
  offsets_.push_back(offset);
  const RWCString target = resolved(attribute);
  records_.write({tag, name, offset < 0 ? offset : offset - scanned_.lead, asWritten(attribute),
                  bytesOf(target)});
}

std::string_view LinkSink::asWritten(CZKHTMLDietAttributeObject& attribute) const {
  const std::string_view value = attribute.GetOriginalAttributeValue();
  const std::string_view copy = bytesOf(scanned_.copy);
  const int offset = attribute.GetAttributeOffset();
  if (offset < scanned_.lead) return value;
  // Style text can lose several quotes in front of a value, which the offset does not count.
  if (copy.substr(static_cast<std::size_t>(offset), value.size()) != value) return value;
  return bytesOf(scanned_.text)
      .substr(static_cast<std::size_t>(offset - scanned_.lead), value.size());
}

// The record shows its value up to the first NUL byte, which only an escape can have made.
RWCString LinkSink::resolved(CZKHTMLDietAttributeObject& attribute) {
  const RWCString value(attribute.GetOriginalAttributeValue());
  if (value.index('%') == RWCString::npos) return attribute.GetAttributeValue();
  RWCString whole;
  base_.calcUrl(value, whole, false, true);
  return whole;
}

}  // namespace pagescan::tool
