// CTQCharSet: character references to ISO-8859-1 bytes.
#ifndef PAGESCAN_CHARSET_H
#define PAGESCAN_CHARSET_H

#include "pagescan_export.h"
#include "rw/rwcregexp.h"
#include "rw/rwcstring.h"
#include "rw/rwhashdictionary.h"

// A dictionary of the 100 named references (the HTML 4 Latin-1 set, quot, amp, lt, gt) to single
// bytes of ISO-8859-1. One instance lives as long as the library. "nbsp" is the ordinary blank,
// because hosts compare the decoded text, while "&#160;" is byte 160; there is no "apos".
// A host may change or refill the dictionary of RWCollectableString keys and values: convert goes
// by what it holds then, and takes the first byte of a value.
// Threads convert may run on several threads at once on different strings, while none changes the
//         dictionary.
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
  // A number is read as sscanf reads "%i", which is how hosts always had it read:
  //   with automatic base   "&#0101;" is octal, 65; "&#09;" becomes a NUL byte, as "&#x;" does
  //   up to other letters   "&#65x;" is 65
  //   cut to 32 bits        "&#256;" stays, but "&#4294967361;" is 65, and "&#3000000000;" is
  //                         negative, not above 255: it becomes a NUL byte, its low eight bits
  // A reference to no number ("&#abc;") becomes the byte of the number before it in `text`, and
  // stays where there is none.
  // Cost    linear in the text.
  void convert(RWCString& text);

  // The instance built last. An instance that is destroyed stays registered: a host that builds one
  // puts the former one back.
  static CTQCharSet* msSingleton;

 private:
  explicit CTQCharSet(std::size_t buckets);
  PAGESCAN_INTERNAL bool isAsBuilt() const;

  RWCRegexp* pattern;
};

#endif
