// Tells the encoding of a text in the text, for copies that no server tells about.
#ifndef PAGESCAN_TOOL_SAVE_ENCODING_TOLD_H
#define PAGESCAN_TOOL_SAVE_ENCODING_TOLD_H

#include <string>
#include <string_view>

namespace pagescan::tool {

// Whether a page tells this encoding itself, or is taken for it without being told.
bool pageTellsEncoding(std::string_view page, std::string_view encoding);

// The page with a byte order mark in front, or an XML declaration, which browsers read and take
// for a comment. It goes before no meta element of the page: those must be gone.
std::string withEncodingOfPage(std::string_view page, std::string_view encoding);

// The sheet with a byte order mark or a @charset in front, unless it is ASCII or tells its
// encoding.
std::string withEncodingOfSheet(std::string_view sheet, std::string_view encoding);

// The script with a byte order mark in front where `charset` is UTF-8 and it is not ASCII.
std::string withEncodingOfScript(std::string_view script, std::string_view charset);

// The charset to read a sheet with: that of the response, or that of the text that loads it unless
// the sheet tells its own.
std::string charsetOfSheet(std::string_view sheet, const std::string& charset,
                           const std::string& encodingOfParent);

}  // namespace pagescan::tool

#endif
