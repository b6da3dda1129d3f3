#include "zkhtmldietattributeobject.h"

CZKHTMLDietAttributeObject::CZKHTMLDietAttributeObject() : attributeOffset(-1) {}

CZKHTMLDietAttributeObject::CZKHTMLDietAttributeObject(RWCString& name, RWCString& value,
                                                       RWCString& originalValue, int offset)
    : attributeOffset(offset),
      attributeValue(value),
      originalAttributeValue(originalValue),
      attributeName(name) {}

CZKHTMLDietAttributeObject::~CZKHTMLDietAttributeObject() = default;

const char* CZKHTMLDietAttributeObject::GetAttributeName() {
  return attributeName.data();
}

void CZKHTMLDietAttributeObject::SetAttributeName(RWCString& name) {
  attributeName = name;
}

const char* CZKHTMLDietAttributeObject::GetAttributeValue() {
  return attributeValue.data();
}

void CZKHTMLDietAttributeObject::SetAttributeValue(RWCString& value) {
  attributeValue = value;
}

const char* CZKHTMLDietAttributeObject::GetOriginalAttributeValue() {
  return originalAttributeValue.data();
}

void CZKHTMLDietAttributeObject::SetOriginalAttributeValue(RWCString& value) {
  originalAttributeValue = value;
}

int CZKHTMLDietAttributeObject::GetAttributeOffset() {
  return attributeOffset;
}

void CZKHTMLDietAttributeObject::SetAttributeOffset(int offset) {
  attributeOffset = offset;
}
