// CHTMLOffsetParser: turns HTML pages and style text into tag records with resolved URLs and byte
// offsets.
#ifndef PAGESCAN_ZKHTMLOFFSETPARSER_H
#define PAGESCAN_ZKHTMLOFFSETPARSER_H

#include "pagescan_export.h"
#include "rw/rwcstring.h"
#include "rw/rwordered.h"
#include "tqurlbase.h"

class CZKHTMLDietTransactionsObject;
class CZKHtmlDietVirtualQueue;

// Records one object per tag of interest (BASE, BODY, TABLE, TD, TH, APPLET, OBJECT, EMBED, FRAME,
// IFRAME, IMG, SCRIPT, LINK, INPUT, XML, ?IMPORT) with those of its URL-bearing attributes that
// are there. Anchors and areas are not of interest.
//
// Names      of attributes are letters, digits and "-". Any other byte, "_" and ":" among them, is
//            skipped with all that follows up to white space or ">", and the name goes on there:
//            <img a_b="l" src="x.jpg"> has one attribute and yields no record.
// Offsets    of attributes are those of the value's first byte in the text given, -1 for an
//            attribute without "="; texts of 2 GiB or more are outside the contract. The bytes
//            there are those of the value as written, unless a comment or a script's body stands
//            inside the value: it is shown blanked.
// Values     are resolved with percent escapes before the query decoded, but no entities. A "rel"
//            and a "classid" are resolved as any other value is.
// Ownership  the parser owns every record until it is destroyed, the sink only borrows them.
// Threads    one parser is used by one thread at a time; parsers share nothing.
class PAGESCAN_EXPORT CHTMLOffsetParser {
 public:
  // `pageUrl` is the URL against which values are resolved; null counts as empty.
  explicit CHTMLOffsetParser(const char* pageUrl);
  CHTMLOffsetParser(const CHTMLOffsetParser&) = delete;
  CHTMLOffsetParser& operator=(const CHTMLOffsetParser&) = delete;

  // Destroys every record; does not touch the sink.
  virtual ~CHTMLOffsetParser();

  // The sink that is shown each record at once; null for none. Not owned. A sink that takes a step
  // of ParseHTML moves the pass on. One that has the parser read another text ends it, also when
  // that text is as long as the page or its reading failed. ParseCSS goes on whatever the sink
  // does.
  void SetDietVirtualQueue(CZKHtmlDietVirtualQueue* queue);
  CZKHtmlDietVirtualQueue* GetDietVirtualQueue();

  // Records the tags of a page, in order. Records of earlier calls stay.
  // page        read up to its closing NUL; null counts as empty. `pageLength` is ignored: a page
  //             with a NUL byte inside ends there.
  // The bodies of scripts and comments yield nothing, as far as blanking them goes: it stops at a
  // stray end of either (see tqOverwriteScriptWithBlanks, tqOverwriteTagWithBlanks). Never returns
  // on a page on which blanking its scripts would not (see tqFindEndlessScript).
  // Text that is not well-formed yields fewer records; text after a bare tag can be taken for its
  // attributes. A frame without a "src" yields one that is empty, at offset -1.
  // Fails       std::bad_alloc; the records made so far stay.
  // Cost        linear in the page.
  void ParseHTML(const char* page, unsigned long pageLength);

  // Records every URL of style text, url(...) and @import targets, as an "IMG" record with one
  // "src". Offsets are those in `css`.
  // A double-quoted string after the last "url(" is taken for a URL. What does not end ends the
  // pass: a comment, a "url(", a quote, an @import without ";".
  // An @import in quotes is missed when a url( follows anywhere, and so is one whose URL holds a
  // ";": in "@import \"a.css\"; p{b:url(c)}" only c is found. A URL ends at its first ")", in
  // quotes too: url("a(1).gif") gives "a(1".
  // Fails       RWBoundsErr when neither white space, ";" nor "{" stands before the last ":" before
  //             a url(...), as in "background:url(a.gif)"; records made so far stay. A rule set
  //             around the declarations avoids it.
  // Cost        linear in the text.
  void ParseCSS(const RWCString& css);

  // Shows a finished record to the sink, then takes it over; null is ignored. The sink may queue
  // records of its own meanwhile; they come before this one.
  // Fails       std::bad_alloc, before the sink is shown the record, and whatever leaves the sink.
  //             The record then stays the caller's. Once the sink has returned nothing fails.
  void InsertObjectToQueue(CZKHTMLDietTransactionsObject* record);

  // Writes every record to standard output; one without attributes shows an empty first name.
  void PrintAll();

  // The steps of ParseHTML, on the page of the latest call.

  // Whether `c` ends a tag's name: TAB, LF, CR, SPACE, "<", ">" or "~".
  bool isWhiteSpace(char& c);

  // Goes on to the next tag and returns its name as written, empty at the end of the page.
  RWCString findTagName();

  // Makes the record of the tag whose name, in upper case, was just read.
  // Cost    linear in the rest of the page; only ParseHTML is so for all tags together.
  void parseHTMLElement(RWCString elementName);

 private:
  class PAGESCAN_INTERNAL HtmlPass;
  class PAGESCAN_INTERNAL Reading;
  class PAGESCAN_INTERNAL Showing;
  class PAGESCAN_INTERNAL Record;

  RWCString html;          // the page, blanked; byte positions are the page's
  unsigned long position;  // index into html
  int beingShown;          // records that the sink is shown just now, one within the other
  CZKHtmlDietVirtualQueue* dietQueue;
  urlBase base;
  RWOrdered records;
};

#endif
