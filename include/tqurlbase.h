// urlBase: a page's URL, and the resolution of links against it.
#ifndef PAGESCAN_TQURLBASE_H
#define PAGESCAN_TQURLBASE_H

#include "pagescan_export.h"
#include "rw/rwcstring.h"

// Whether a URL is one that a page-relative resolver handles: one without a scheme, or with a
// scheme that begins with "http" or "clsid". The test is by prefix: "httpx:" passes.
// Cost    linear in the scheme.
PAGESCAN_EXPORT bool isHttpProtocol(const RWCString& url);

// Holds the base URL and splits it on first use; only http and https bases are split. A base that
// cannot be split leaves parts of an earlier base in place, one without a path its `fileName`, and
// links are resolved against them all the same: a host that reuses an object for such a base gets
// stale results. A new object for each base avoids that.
// Threads one object is used by one thread at a time: resolving changes it on first use.
class PAGESCAN_EXPORT urlBase {
 public:
  urlBase();

  // Starts with setBase(url).
  explicit urlBase(const RWCString& url);
  virtual ~urlBase();

  // Takes `url` up to its first "#", cleaned by stripUrl with escapes decoded. The parts below keep
  // their values until the next split. Always returns true.
  bool setBase(const RWCString& url);

  // Split the base, once after each setBase; whichever of the two comes first decides the spelling
  // of `protocol`. Each calcUrl below splits by its own one and builds on that one's spelling: a
  // host that needs both uses an object for each, or gets "http:////host" and "http:host".
  // Return 0 for a base with a path, 1 for one without or when the split had been attempted, -1 for
  // one that is not http or https. An "https://" anywhere in the base makes it an https base.
  int shortParse();  // protocol "http://" or "https://"
  int parse();       // protocol "http:" or "https:"

  // The absolute form of a link, for single links of a host. Splits by shortParse. Decodes
  // character entities in `url` and cleans it, in place, also dropping a leading "./" and putting
  // the protocol before a leading "//". "../" is folded at the start of the link alone.
  // A single byte other than "/" yields the base directory, and "?x" is put after the directory
  // without the file name.
  // Cost    linear in the link and the base.
  RWCString calcUrl(RWCString& url);

  // The absolute form of a link as the offset parser writes it. Splits by parse. No entities are
  // decoded. What becomes of a link goes by how it begins:
  //   //            the base's protocol is put before it
  //   \\            a network path: "file://" takes their place, later backslashes stay
  //   file:         when the second byte after the colon is "/", as in file:///x and file:a/b, it
  //                 stays as it is; otherwise file:x becomes file:///x and file:/x file:///x
  //   http: https:  with "//" next, as it is, not folded; without, the rest is a relative link
  //   clsid:        a relative link
  //   other scheme  only cleaned (ftp, mailto, javascript and all that are made of letters)
  // In a relative link one leading "./" goes, every "/./" becomes "/" and every backslash "/", in
  // its query as well; then "../" is folded, from the host up to the first "?". So "././x" becomes
  // "./x" after the base directory, and "a?b/./c" "a?b/c".
  // out            receives the result; may be `in`
  // resolveEmpty   whether an empty `in` yields the base directory; otherwise `out` is left alone
  // decodePercent  as in stripUrl
  // Cost           linear in the link and the base, a long run of "../" included.
  void calcUrl(const RWCString& in, RWCString& out, bool resolveEmpty, bool decodePercent);

  RWCString fullUrl;      // the base without fragment, cleaned
  RWCString baseNoQuery;  // fullUrl before its first "?"
  RWCString protocol;     // in lower case; see the two splits
  RWCString host;         // user information and port included
  RWCString dirPath;      // from the "/" after the host through the path's last "/"
  RWCString fileName;     // what follows the path's last "/"
  int dirDepth;           // number of "/" in dirPath; 0 for a URL without a path
  bool parsed;            // a split was attempted since the last setBase
  bool spareFlag;         // cleared by the default constructor alone; read by nothing
};

#endif
