// Scanning, scrubbing and cleaning of HTML text and URLs.
//
// Positions are byte offsets from 0, ranges half-open. White space is exactly TAB, LF, CR and
// SPACE; form feed and vertical tab are ordinary bytes. Bad input never throws.
// A string taken by non-const reference belongs to the calling thread during the call; the
// functions keep no state and may otherwise run on any number of threads.
#ifndef PAGESCAN_ZKHTMLPARSEUTILS_H
#define PAGESCAN_ZKHTMLPARSEUTILS_H

#include <cstddef>

#include "pagescan_export.h"
#include "rw/rwcstring.h"

// --- Scanning: nothing here modifies `text` ---------------------------------------------------

// True for TAB, LF, CR and SPACE alone.
PAGESCAN_EXPORT bool htmlIsWhiteSpace(char c);

// Moves `pos` to the first byte after it that is not white space. The byte at the incoming `pos`
// is stepped over unseen, so that calls can be chained from stop to stop.
// end     never reads at or beyond it; one beyond the length is taken for the length.
// Returns whether such a byte was reached before `end`; `pos` is moved in any case.
// Cost    linear in the bytes passed.
PAGESCAN_EXPORT bool htmlSkipWhiteSpaces(RWCString& text, unsigned long end, unsigned long& pos);

// The same, up to the first white space, "<" or ">".
PAGESCAN_EXPORT bool htmlSkipNonWhiteSpaces(RWCString& text, unsigned long end, unsigned long& pos);

// Reads one attribute value, quoted or bare, copying its bytes as they stand.
// start       the byte before the value, normally the "=" of the attribute
// value       what was read; on failure what was gathered so far, or untouched when nothing but
//             white space follows
// valueStart  offset of the value's first byte: after an opening quote
// furthest    raised, never lowered, to the closing quote or the byte that ended a bare value
// Returns     whether the value ended before `end`: a quoted one at its quote, a bare one at white
//             space or ">".
// Cost        linear in the bytes passed.
PAGESCAN_EXPORT bool htmlGetStringValue(RWCString& text, RWCString& value, unsigned long start,
                                        unsigned long& valueStart, unsigned long& furthest,
                                        unsigned long end);

// Whether an element called `name` starts at `pos`, which points just past "<" or "</". Compares
// `nameLength` bytes ignoring case; the byte after them must be `terminator` or ">". The
// terminator "~" accepts any byte. A `pos` beyond the length yields false.
PAGESCAN_EXPORT bool isElementOfType(const char* name, unsigned long nameLength, RWCString& text,
                                     unsigned long pos, char terminator);

// Reads the next attribute of a tag from `pos` on.
// name        the attribute's name as written; untouched when the tag holds nothing more
// value       its value; empty for an attribute without "="
// pos         moved to where the next call goes on: after the name, at the value's closing quote
//             or the byte that ended it, or one past the ">" that ended the tag
// valueStart  offset of the value, set only when a value was read whole
// A name followed by a value that does not end leaves `pos` where it was with `name` assigned.
// A host that loops empties `name` before each call and stops when none came back (the tag holds
// nothing more that can be read) or `pos` did not move (the value does not end).
// Cost        linear in the bytes passed.
PAGESCAN_EXPORT void htmlFindNextAttribute_(RWCString& text, RWCString& name, RWCString& value,
                                            unsigned long& pos, unsigned long& valueStart);

// --- Blanking: the length stays, so every offset stays valid ----------------------------------

// Replaces every region from `open` through `close` (both matched ignoring case) with an empty
// paragraph, "<p>", blanks and "</p>", of the same length. A region of up to six bytes has no room
// for that and stays as it is.
// Stops   at the first stray `close`: what follows it is left as it is. Hosts must not take the
//         rest of such a page for free of regions.
// Fails   std::bad_alloc while unsharing, before any byte changes; otherwise never.
// Cost    one pass, linear in the text.
PAGESCAN_EXPORT void tqOverwriteTagWithBlanks(RWCString& text, RWCString open, RWCString close);

// Replaces the body of every script element with blanks; its tags stay. "<SCRIPT" is matched
// ignoring case, whatever follows: "<scripture>" opens one. Its end is "</SCRIPT>" with the ">":
// "</script >" ends nothing. The first ">" after "<SCRIPT" ends the opening tag, also inside a
// quoted attribute value.
// Stops   at the first stray "</SCRIPT>" and at a script that is not closed: what follows is left
//         as it is. Hosts must not take the rest of such a page for free of scripts.
// Never returns on a text with an opening "<SCRIPT" that has no ">" before its "</SCRIPT>", such as
//         "<script</script>": hosts know it so. Ask tqFindEndlessScript beforehand.
// Fails   std::bad_alloc while unsharing, before any byte changes; otherwise never.
// Cost    one pass, linear in the text.
PAGESCAN_EXPORT void tqOverwriteScriptWithBlanks(RWCString& text);

// The offset of the "<SCRIPT" at which tqOverwriteScriptWithBlanks would not return on this text,
// or npos when it returns.
// start   where the search begins, as blanking would go on after a "</SCRIPT>" that ends there;
//         beyond the length yields npos
// Cost    one pass, linear from `start` to the end of that script; allocates nothing.
PAGESCAN_EXPORT std::size_t tqFindEndlessScript(const RWCString& text);
PAGESCAN_EXPORT std::size_t tqFindEndlessScript(const RWCString& text, std::size_t start);

// --- Removal: the length changes --------------------------------------------------------------

// Removes the first occurrence of `tag` (normally "<" and an element's name, matched ignoring
// case) through the next ">". The byte after `tag` is not looked at: "<a" also removes an
// "<abbr>" that comes first. Unchanged when either is missing.
// Cost    linear in the text.
PAGESCAN_EXPORT void tqRemoveFirstSingleTag(RWCString& text, RWCString tag);

// Empties every element `tag`: from its "<" through its closing tag it becomes
// "<tag></tag>", spelled as the caller spelled it. The opening tag is matched by its beginning, the
// closing tag exactly: with "b" a "<body>" opens an element that only a "</b>" closes, so that
// "<body>text <b>x</b> more" becomes "<b></b> more". Comments between elements are passed over, and
// one comment inside an element may hold its closing tag; elements of the same name are not counted
// as nested. Ends at the first element whose closing tag is missing. An empty `tag` changes
// nothing.
// Aborts  the process, in every build, when `tag` is longer than 254 bytes.
// Cost    linear in the text; the result may be longer than the text.
PAGESCAN_EXPORT void tqSkipTagBody(const RWCString& tag, RWCString& text);

// Empties the values of onload, onmouseover and onmouseout wherever one of these names is followed
// by "=", in prose and at the end of longer names too. The name is written in lower case, white
// space before "=" goes, a closing single quote stays. When the value does not end, everything from
// the name on is replaced.
// Cost    linear in the text.
PAGESCAN_EXPORT void tqSkipOnloadAttribute(RWCString& text);

// --- URLs -------------------------------------------------------------------------------------

// Cleans a URL as it stands in a page: white space around it and line breaks and TABs inside it
// go, blanks become "%20" (but stay in a "javascript:" URL).
// decodePercent  also turns percent escapes before the first "?" into bytes, except "%20". An
//                unreadable escape becomes a NUL byte ("%zz"), and an escape takes three bytes even
//                when only one is a digit ("%4x" becomes byte 4). A host that hands the result to C
//                routines must expect NUL bytes.
// Cost           linear in the URL.
PAGESCAN_EXPORT void stripUrl(RWCString& url, bool decodePercent);

// The scheme of a URL: 0 none, 1 ftp, 2 file, 3 http, 4 https, 5 mailto, 6 javascript, 7 any other
// made of letters (an empty one included), 8 clsid.
// schemeLength  receives the scheme's length with its colon, or -1 for 0.
// Cost          linear in the scheme.
PAGESCAN_EXPORT int getProtocol(const RWCString& url, int& schemeLength);

#endif
