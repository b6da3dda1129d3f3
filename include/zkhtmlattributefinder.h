// CHTMLAttributeFinder: all attributes of one start tag, with the offsets of their values.
#ifndef PAGESCAN_ZKHTMLATTRIBUTEFINDER_H
#define PAGESCAN_ZKHTMLATTRIBUTEFINDER_H

#include "pagescan_export.h"
#include "rw/rwcstring.h"
#include "rw/rwhashdictionary.h"

// Holds no data; one object may serve any number of calls on one thread at a time.
class PAGESCAN_EXPORT CHTMLAttributeFinder {
 public:
  CHTMLAttributeFinder();
  virtual ~CHTMLAttributeFinder();

  // Reads the attributes from `pos` up to the tag's ">".
  // text     not modified; offsets are byte offsets into it
  // pos      the byte before the attributes, normally the last one of the element's name; it is
  //          stepped over unseen. Afterwards where the last attribute was looked for.
  // values   emptied, with its objects destroyed; receives lower-cased name (RWCollectableString)
  //          to value as written, without its quotes (RWCollectableString)
  // offsets  the same names to the offset of the value's first byte (RWCollectableInt), -1 for an
  //          attribute without "="
  // The first of several attributes of one name wins. The caller owns the objects in both
  // dictionaries and destroys them with clearAndDestroy.
  // An unterminated value, an "=" without a name and a name that runs to the end of the text end
  // the reading; nothing is reported.
  // Cost     linear in the bytes passed.
  void FindAttributes(RWCString& text, unsigned long& pos, RWHashDictionary& values,
                      RWHashDictionary& offsets);
};

#endif
