// Diet records as plain structs, with the twins of the record operations.
#ifndef PAGESCAN_TESTS_REFERENCE_RECORDS_H
#define PAGESCAN_TESTS_REFERENCE_RECORDS_H

#include <string>
#include <vector>

namespace reference {

struct Attribute {
  std::string name;
  std::string value;     // resolved
  std::string original;  // as written
  int offset = -1;
  bool operator==(const Attribute&) const = default;
};

struct Record {
  std::string tag;
  std::vector<Attribute> attributes;  // in insertion order
  bool operator==(const Record&) const = default;
};

// The first attribute of a name wins; a later one of the same name is dropped.
void insertAttribute(Record& record, const Attribute& attribute);

unsigned long CalcCheckSum(const void* data, int size);

// What PrintAll of one record, and of a parser that made these records, writes.
std::string PrintAll(const Record& record);
std::string PrintAll(const std::vector<Record>& records);

}  // namespace reference

#endif
