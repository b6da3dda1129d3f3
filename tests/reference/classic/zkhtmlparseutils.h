// Slow twins of scanning, blanking, handler removal and URL cleaning.
//
// Each follows its rule step by step; cost is of no concern. Offsets are bytes.
#ifndef PAGESCAN_TESTS_REFERENCE_ZKHTMLPARSEUTILS_H
#define PAGESCAN_TESTS_REFERENCE_ZKHTMLPARSEUTILS_H

#include <cstddef>
#include <string>

namespace reference {

bool htmlIsWhiteSpace(char c);
bool htmlSkipWhiteSpaces(const std::string& text, unsigned long end, unsigned long& pos);
bool htmlSkipNonWhiteSpaces(const std::string& text, unsigned long end, unsigned long& pos);
bool htmlGetStringValue(const std::string& text, std::string& value, unsigned long start,
                        unsigned long& valueStart, unsigned long& furthest, unsigned long end);
bool isElementOfType(const char* name, unsigned long nameLength, const std::string& text,
                     unsigned long pos, char terminator);
void htmlFindNextAttribute_(const std::string& text, std::string& name, std::string& value,
                            unsigned long& pos, unsigned long& valueStart);

void tqOverwriteTagWithBlanks(std::string& text, const std::string& open, const std::string& close);

// False where the library's call never returns: endlessAt is then the offset of the "<SCRIPT" at
// which it keeps looking, and the text is as it stands from there on. endlessAt is npos otherwise.
bool tqOverwriteScriptWithBlanks(std::string& text, std::size_t& endlessAt);
std::size_t tqFindEndlessScript(const std::string& text);

void tqRemoveFirstSingleTag(std::string& text, const std::string& tag);
void tqSkipTagBody(const std::string& tag, std::string& text);
void tqSkipOnloadAttribute(std::string& text);

void stripUrl(std::string& url, bool decodePercent);
int getProtocol(const std::string& url, int& schemeLength);

}  // namespace reference

#endif
