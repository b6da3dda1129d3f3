#include "reference/classic/records.h"

#include <cstddef>
#include <cstdint>

namespace reference {

void insertAttribute(Record& record, const Attribute& attribute) {
  for (const Attribute& present : record.attributes) {
    if (present.name == attribute.name) return;
  }
  record.attributes.push_back(attribute);
}

unsigned long CalcCheckSum(const void* data, int size) {
  // Each byte goes to its place in the zero-padded little-endian word it belongs to.
  std::uint64_t sum = 0;
  const auto* bytes = static_cast<const unsigned char*>(data);
  for (int i = 0; i < size; ++i) sum ^= static_cast<std::uint64_t>(bytes[i]) << (8 * (i % 8));
  return sum;
}

std::string PrintAll(const Record& record) {
  std::string out;
  for (const Attribute& attribute : record.attributes) {
    out += "Name:\t" + attribute.name + "\n";
    out += "Value:\t" + attribute.value + "\n";
    out += "OValue:\t" + attribute.original + "\n";
    out += "Offset:\t" + std::to_string(attribute.offset) + "\n";
  }
  return out + "\n";
}

std::string PrintAll(const std::vector<Record>& records) {
  std::string out = "Queue contains " + std::to_string(records.size()) + " objects\n";
  for (std::size_t i = 0; i < records.size(); ++i) {
    const Record& record = records[i];
    const std::string first = record.attributes.empty() ? "" : record.attributes[0].name;
    out += "===== NUMBER: " + std::to_string(i) + "\t ===== TagName: " + record.tag + "\n";
    out += "=== First Attr Name " + first + "\n";
    out += PrintAll(record);
  }
  return out;
}

}  // namespace reference
