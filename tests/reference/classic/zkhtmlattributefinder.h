// Slow twin of the attribute finder.
#ifndef PAGESCAN_TESTS_REFERENCE_ZKHTMLATTRIBUTEFINDER_H
#define PAGESCAN_TESTS_REFERENCE_ZKHTMLATTRIBUTEFINDER_H

#include <map>
#include <string>

namespace reference {

// Keys of both are lower-cased names; an attribute without "=" has an empty value and offset -1.
void FindAttributes(const std::string& text, unsigned long& pos,
                    std::map<std::string, std::string>& values,
                    std::map<std::string, int>& offsets);

}  // namespace reference

#endif
