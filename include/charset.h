// CTQCharSet: character references to ISO-8859-1 bytes.
#ifndef PAGESCAN_CHARSET_H
#define PAGESCAN_CHARSET_H

#include "pagescan_export.h"
#include "rw/rwcregexp.h"
#include "rw/rwcstring.h"
#include "rw/rwhashdictionary.h"

// A dictionary of the 100 named references (the HTML 4 Latin-1 set, quot, amp, lt, gt) to single
// bytes of ISO-8859-1. One instance lives as long as the library. "nbsp" is the ordinary blank,
// deliberately, while "&#160;" is byte 160; there is no "apos".
// Threads the instance is only read after its construction; convert may run on several threads at
//         once on different strings.
class PAGESCAN_EXPORT CTQCharSet : public RWHashDictionary {
 public:
  // Builds the table and registers the instance; logs an error when one is registered already and
  // takes its place all the same.
  CTQCharSet();
  CTQCharSet(const CTQCharSet&) = delete;
  CTQCharSet& operator=(const CTQCharSet&) = delete;
  ~CTQCharSet() override;

  // The registered instance. Null, with an error logged, when there is none; none is ever made.
  static CTQCharSet* fsGetSingleton();

  // Decodes the references of `text` in place, in a single pass: "&amp;lt;" becomes "&lt;".
  // Unknown names, numbers above 255 and hexadecimal references of more than two digits stay.
  // A number is read with automatic base, deliberately: "&#0101;" is octal, and "&#09;" becomes a
  // NUL byte, as "&#x;" does. A reference to no number ("&#abc;") becomes the byte of the number
  // before it in `text`, deliberately, and stays where there is none.
  // Cost    linear in the text.
  void convert(RWCString& text);

  // The instance built last. An instance that is destroyed stays registered: a host that builds one
  // puts the former one back.
  static CTQCharSet* msSingleton;

 private:
  explicit CTQCharSet(std::size_t buckets);

  RWCRegexp* pattern;
};

#endif
