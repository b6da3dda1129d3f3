// Routines that a host may supply.
//
// The library comes with a stand-alone version of each. A program that defines a function of the
// same name replaces it, linked to the shared library as well as to the static one. They are called
// on whatever threads call the library.
#ifndef PAGESCAN_HOSTROUTINES_H
#define PAGESCAN_HOSTROUTINES_H

#include "pagescan_export.h"

extern "C" {

// Convert text between UTF-8 and the host's single-byte character set.
// reserved         the library always passes 0
// source           the text; `sourceLength` bytes, or up to its closing NUL for -1, which is what
//                  the library passes
// destination      receives the result and a closing NUL, cut to `destinationSize` bytes in all;
//                  the library gives three bytes for each of the source, and one
// Return           the length of the result; the library ignores it.
// The stand-alone versions use ISO-8859-1; a character that does not fit and each malformed
// sequence becomes "?". Such a sequence is the longest start of a character that stands there, else
// one byte; overlong forms and surrogates are malformed. A cut never splits a character, a size
// below 1 writes nothing, and what stands after the closing NUL may be overwritten. They keep no
// state, allocate nothing and take linear time.
PAGESCAN_EXPORT int UTF8ToANSI(int reserved, const char* source, int sourceLength,
                               char* destination, int destinationSize);
PAGESCAN_EXPORT int ANSIToUTF8(int reserved, const char* source, int sourceLength,
                               char* destination, int destinationSize);

// Receives an error message, one line without its end. The stand-alone version writes it to
// standard error. Must not throw.
PAGESCAN_EXPORT void pagescanLogError(const char* message);
}

#endif
