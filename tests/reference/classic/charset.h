// Slow twin of entity decoding.
#ifndef PAGESCAN_TESTS_REFERENCE_CHARSET_H
#define PAGESCAN_TESTS_REFERENCE_CHARSET_H

#include <map>
#include <string>

namespace reference {

// The 100 names without "&" and ";", each with its byte.
const std::map<std::string, char>& entityTable();

// Replaces the character references of a text, in place.
void convert(std::string& text);

}  // namespace reference

#endif
