#include "zkhtmldiettransactiondata.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "base/kernels.h"
#include "classic/attribute_names.h"
#include "classic/standard_output.h"
#include "classic/text_view.h"
#include "rw/rwcollectables.h"
#include "zkhtmldietattributeobject.h"

using namespace pagescan::internal;

CZKHTMLDietTransactionsObject::CZKHTMLDietTransactionsObject() = default;

CZKHTMLDietTransactionsObject::~CZKHTMLDietTransactionsObject() {
  deleteAttributesBut(nullptr);
}

void CZKHTMLDietTransactionsObject::deleteAttributesBut(const RWCollectable* kept) {
  for (std::size_t i = 0; i < attributeList.entries(); ++i) {
    if (attributeList.at(i) != kept) delete attributeList.at(i);
  }
  attributeList.clear();
  RWHashDictionaryIterator next(attributeIndex);
  while (RWCollectable* key = next()) {
    if (!isSharedAttributeName(key)) delete key;
  }
  attributeIndex.clear();
}

const char* CZKHTMLDietTransactionsObject::GetTagName() {
  return tagName.data();
}

void CZKHTMLDietTransactionsObject::SetTagName(const char* name) {
  tagName = name;
}

void CZKHTMLDietTransactionsObject::InsertAttributeObject(CZKHTMLDietAttributeObject* attribute) {
  if (!attribute) return;
  if (RWCollectableString* shared = findSharedAttributeName(attribute->attributeName)) {
    insertUnder(*shared, attribute);
    return;
  }
  auto ownKey = std::make_unique<RWCollectableString>(attribute->attributeName);
  if (insertUnder(*ownKey, attribute)) ownKey.release();
}

bool CZKHTMLDietTransactionsObject::insertUnder(RWCollectableString& name,
                                                CZKHTMLDietAttributeObject* attribute) {
  attributeList.makeRoom();  // so that nothing can fail between the two insertions
  if (!attributeIndex.insertKeyAndValue(&name, attribute)) return false;
  attributeList.insert(attribute);
  return true;
}

CZKHTMLDietAttributeObject* CZKHTMLDietTransactionsObject::GetAttributeObject(RWCString& name) {
  const RWCollectableString key(name);
  return dynamic_cast<CZKHTMLDietAttributeObject*>(attributeIndex.findValue(&key));
}

CZKHTMLDietAttributeObject* CZKHTMLDietTransactionsObject::GetFirstAttributeObject() {
  if (attributeList.entries() == 0) return nullptr;
  return static_cast<CZKHTMLDietAttributeObject*>(attributeList.at(0));
}

bool CZKHTMLDietTransactionsObject::GetAttributeNames(RWOrdered& names) {
  names.clear();
  RWHashDictionaryIterator next(attributeIndex);
  while (RWCollectable* key = next()) names.insert(key);
  return names.entries() > 0;
}

unsigned long CZKHTMLDietTransactionsObject::CalcCheckSum(const void* data, int size) {
  if (size <= 0) return 0;
  const auto* bytes = static_cast<const char*>(data);
  const auto length = static_cast<std::size_t>(size);
  const std::size_t words = length / sizeof(std::uint64_t);
  const std::size_t whole = words * sizeof(std::uint64_t);
  std::uint64_t tail = 0;
  std::memcpy(&tail, bytes + whole, length - whole);
  return kernels().xorWords(bytes, words) ^ tail;
}

void CZKHTMLDietTransactionsObject::PrintAll() {
  std::ostream& out = standardOutput();
  for (std::size_t i = 0; i < attributeList.entries(); ++i) {
    const auto& attribute = static_cast<const CZKHTMLDietAttributeObject&>(*attributeList.at(i));
    out << "Name:\t" << viewOf(attribute.attributeName) << std::endl;
    out << "Value:\t" << viewOf(attribute.attributeValue) << std::endl;
    out << "OValue:\t" << viewOf(attribute.originalAttributeValue) << std::endl;
    out << "Offset:\t" << std::to_string(attribute.attributeOffset) << std::endl;
  }
  out << std::endl;
}
