// The host routines of this program: it replaces the library's ANSIToUTF8 and UTF8ToANSI by
// conversions of the system's iconv.
#ifndef PAGESCAN_TOOL_ICONV_ROUTINES_H
#define PAGESCAN_TOOL_ICONV_ROUTINES_H

#include <string>

namespace pagescan::tool {

// Whether iconv can convert between UTF-8 and the character set `name`, and that one writes "A" as
// one byte: the library's texts end at a NUL byte, so wider units have no place in them.
bool isCodePage(const std::string& name);

// The character set that the routines stand for from now on; ISO-8859-1 at first.
void useCodePage(const std::string& name);

}  // namespace pagescan::tool

#endif
