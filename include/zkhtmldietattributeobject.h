// CZKHTMLDietAttributeObject: one attribute of a tag record.
#ifndef PAGESCAN_ZKHTMLDIETATTRIBUTEOBJECT_H
#define PAGESCAN_ZKHTMLDIETATTRIBUTEOBJECT_H

#include "pagescan_export.h"
#include "rw/rwcollectable.h"
#include "rw/rwcstring.h"

// Name, resolved value, value as written and its byte offset. Identity and equality are by
// address. The string getters show a value up to its first NUL and stay valid until the field
// changes or the object is destroyed. One thread at a time.
class PAGESCAN_EXPORT CZKHTMLDietAttributeObject : public RWCollectable {
 public:
  // Empty strings; the offset must be set before it is read.
  CZKHTMLDietAttributeObject();

  // Copies the strings; the arguments are not changed.
  CZKHTMLDietAttributeObject(RWCString& name, RWCString& value, RWCString& originalValue,
                             int offset);
  ~CZKHTMLDietAttributeObject() override;

  // In lower case in the records of a parser.
  const char* GetAttributeName();
  void SetAttributeName(RWCString& name);

  // The value resolved against the page's URL.
  const char* GetAttributeValue();
  void SetAttributeValue(RWCString& value);

  // The value as written: quotes removed, nothing decoded.
  const char* GetOriginalAttributeValue();
  void SetOriginalAttributeValue(RWCString& value);

  // Byte offset of the value's first byte in the text scanned, -1 for an attribute without "=".
  int GetAttributeOffset();
  void SetAttributeOffset(int offset);

 private:
  friend class CHTMLOffsetParser;
  friend class CZKHTMLDietTransactionsObject;

  int attributeOffset;
  RWCString attributeValue;
  RWCString originalAttributeValue;
  RWCString attributeName;
};

#endif
