#include "output/link_sink.h"

#include "output/bytes.h"
#include "recordattributes.h"

namespace pagescan::tool {

LinkSink::LinkSink(RecordsOutput& records, const std::string& baseUrl, const ScannedText& scanned)
    : records_(records),
      base_(RWCString(baseUrl.c_str())),
      baseHasEscapes_(baseUrl.find('%') != std::string::npos),
      scanned_(scanned) {}

// The attributes come in the order of the record: that of the library's table of tags.
bool LinkSink::insert(CZKHTMLDietTransactionsObject* record) {
  forEachAttribute(*record, [&](CZKHTMLDietAttributeObject& attribute) {
    write(record->GetTagName(), attribute);
  });
  return true;
}

void LinkSink::write(std::string_view tag, CZKHTMLDietAttributeObject& attribute) {
  const std::string_view name = attribute.GetAttributeName();
  if (!scanned_.listsRel && name == "rel") return;
  const int offset = attribute.GetAttributeOffset();
  offsets_.push_back(offset);
  const std::string original = asWritten(attribute);
  const RWCString target = resolved(attribute);
  records_.write(
      {tag, name, offset < 0 ? offset : offset - scanned_.lead, original, bytesOf(target)});
}

// The record's value, with the text's own bytes where the copy that the parser read differs from
// it: NUL bytes and hidden script tags. What the parser blanked itself, a comment inside a value or
// a script's body, stays blanked.
std::string LinkSink::asWritten(CZKHTMLDietAttributeObject& attribute) const {
  std::string value = attribute.GetOriginalAttributeValue();
  if (value.empty() || attribute.GetAttributeOffset() < scanned_.lead) return value;
  const std::string_view text = bytesOf(scanned_.text);
  const std::string_view copy = bytesOf(scanned_.copy);
  auto at = static_cast<std::size_t>(attribute.GetAttributeOffset());
  // Style text can lose several quotes before a value, of which the offset counts one.
  const char quote = copy[at - 1];
  while (value.front() != quote && copy[at] == quote) ++at;
  for (char& byte : value) {
    if (byte == copy[at]) byte = text[at - static_cast<std::size_t>(scanned_.lead)];
    ++at;
  }
  return value;
}

// The record shows its value up to the first NUL byte, which only an escape can have made: one of
// the value, or one of the base.
RWCString LinkSink::resolved(CZKHTMLDietAttributeObject& attribute) {
  const RWCString value(attribute.GetOriginalAttributeValue());
  const bool hasEscapes = baseHasEscapes_ || value.index('%') != RWCString::npos;
  if (!hasEscapes) return attribute.GetAttributeValue();
  RWCString whole;
  base_.calcUrl(value, whole, false, true);
  return whole;
}

}  // namespace pagescan::tool
