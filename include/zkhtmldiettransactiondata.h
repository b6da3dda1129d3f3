// CZKHTMLDietTransactionsObject: the record of one tag with its attributes.
#ifndef PAGESCAN_ZKHTMLDIETTRANSACTIONDATA_H
#define PAGESCAN_ZKHTMLDIETTRANSACTIONDATA_H

#include "pagescan_export.h"
#include "rw/rwcollectable.h"
#include "rw/rwcstring.h"
#include "rw/rwhashdictionary.h"
#include "rw/rwordered.h"

class CZKHTMLDietAttributeObject;
class RWCollectableString;

// The tag's name in upper case and its attribute records, which it owns. Identity and equality are
// by address. Built on one thread, then only read.
class PAGESCAN_EXPORT CZKHTMLDietTransactionsObject : public RWCollectable {
 public:
  CZKHTMLDietTransactionsObject();
  CZKHTMLDietTransactionsObject(const CZKHTMLDietTransactionsObject&) = delete;
  CZKHTMLDietTransactionsObject& operator=(const CZKHTMLDietTransactionsObject&) = delete;

  // Deletes the attribute records.
  ~CZKHTMLDietTransactionsObject() override;

  // Valid until the name changes or the record is destroyed.
  const char* GetTagName();
  void SetTagName(const char* name);

  // Takes `attribute` over, unless one of the same name (case-sensitive) is present: then it stays
  // the caller's, silently. A null pointer is ignored. A later change of an attribute's name does
  // not change the name under which it is found.
  // Fails   std::bad_alloc: the attribute stays the caller's and the record is as it was.
  void InsertAttributeObject(CZKHTMLDietAttributeObject* attribute);

  // The attribute inserted under exactly this name, or null.
  CZKHTMLDietAttributeObject* GetAttributeObject(RWCString& name);

  // The attribute inserted first, or null.
  CZKHTMLDietAttributeObject* GetFirstAttributeObject();

  // Forgets what `names` held and appends the names as RWCollectableString objects, in no order to
  // rely on. They belong to the record, live as long as it does, and must not be changed: records
  // may share them. Returns whether there are any.
  bool GetAttributeNames(RWOrdered& names);

  // The XOR of the 64-bit little-endian words of `size` bytes, the last one padded with zeros.
  // Reads at any alignment. Safe on any thread. Linear in `size`; 0 for a size that is not
  // positive.
  static unsigned long CalcCheckSum(const void* data, int size);

  // Writes name, value, value as written and offset of each attribute to standard output, then an
  // empty line.
  void PrintAll();

 private:
  friend class CHTMLOffsetParser;

  // Deletes the attribute records, except for one that was not made by itself.
  PAGESCAN_INTERNAL void deleteAttributesBut(const RWCollectable* kept);

  // Inserts under a key that is the record's from then on; false when an equal one is present.
  PAGESCAN_INTERNAL bool insertUnder(RWCollectableString& name,
                                     CZKHTMLDietAttributeObject* attribute);

  RWCString tagName;
  RWHashDictionary attributeIndex;  // name -> attribute; owns both
  RWOrdered attributeList;          // the same attributes in order of insertion
};

#endif
