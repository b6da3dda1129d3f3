// Records filled by a host, and checksums at any alignment.

#include <memory>

#include "reference/classic/records.h"
#include "rw/rwcollectables.h"
#include "support/input.h"
#include "support/records.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldiettransactiondata.h"

using fuzz::check;

namespace {

void insert(CZKHTMLDietTransactionsObject& record, reference::Record& expected, int number,
            std::string_view name) {
  RWCString nameString = fuzz::stringOf(name);
  RWCString value = fuzz::stringOf(name);
  RWCString original;
  auto attribute =
      std::make_unique<CZKHTMLDietAttributeObject>(nameString, value, original, number);
  const std::size_t before = expected.attributes.size();
  reference::insertAttribute(expected, {std::string(name), std::string(name), "", number});
  record.InsertAttributeObject(attribute.get());
  if (expected.attributes.size() > before) static_cast<void>(attribute.release());
}

void checkSums(std::string_view text) {
  const fuzz::Block block(text);
  for (int skipped = 0; skipped <= std::min(block.length(), 9); ++skipped) {
    check(CZKHTMLDietTransactionsObject::CalcCheckSum(block.data() + skipped,
                                                      block.length() - skipped) ==
              reference::CalcCheckSum(block.data() + skipped, block.length() - skipped),
          "a checksum is that of the twin");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  checkSums({reinterpret_cast<const char*>(data), size});
  CZKHTMLDietTransactionsObject record;
  reference::Record expected;
  for (int number = 0; !input.isEmpty(); ++number) insert(record, expected, number, input.text());

  for (const reference::Attribute& attribute : expected.attributes) {
    RWCString name = fuzz::stringOf(attribute.name);
    CZKHTMLDietAttributeObject* const found = record.GetAttributeObject(name);
    check(found != nullptr && found->GetAttributeOffset() == attribute.offset,
          "the first attribute of a name is kept");
    check(found->GetAttributeValue() == std::string(attribute.value.c_str()),
          "a value shows up to its first NUL");
  }
  check(fuzz::printed(record) == reference::PrintAll(expected),
        "a record prints its attributes in order");
  RWOrdered names;
  check(record.GetAttributeNames(names) == !expected.attributes.empty() &&
            names.entries() == expected.attributes.size(),
        "a record names each attribute once");
  CZKHTMLDietAttributeObject* const first = record.GetFirstAttributeObject();
  check(expected.attributes.empty() ? first == nullptr : first->GetAttributeOffset() == 0,
        "the first attribute is the one inserted first");
  return 0;
}
