// Detection of UTF-8 and conversion between it and the host's single-byte character set.
#ifndef PAGESCAN_ZKUTF8_H
#define PAGESCAN_ZKUTF8_H

#include "pagescan_export.h"
#include "rw/rwcstring.h"

// Whether `length` bytes look like UTF-8, judged by pairs of neighbours: at least one lead byte
// directly followed by a continuation byte, no more misplaced bytes than such pairs, and at most
// nine misplaced ones. Not a validation. Plain ASCII is reported as not UTF-8: it holds no pair.
// Reads   `bytes` up to `length`; false for a length below 2.
// Cost    linear in the length, stopping early once more than ten lead bytes are misplaced.
PAGESCAN_EXPORT bool isUtf8(const char* bytes, int length);

// Convert `text` in place through the host's routines (hostroutines.h) when isUtf8 says that it is
// needed: the first when it is UTF-8, the second when it is not. A conversion ends the text at its
// first NUL byte: the routines work on NUL-terminated texts. So "a\0b" becomes "a".
// text    up to a third of 2 GiB, 715,827,881 bytes: the routines count their room in int
// Return  the text's own bytes after the call.
// Cost    linear in the text; one temporary of three times its length.
PAGESCAN_EXPORT const char* ConvertUtf8toAnsi(RWCString& text);
PAGESCAN_EXPORT const char* ConvertAnsitoUtf8(RWCString& text);

#endif
