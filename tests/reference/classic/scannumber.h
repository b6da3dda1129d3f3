// Numbers as the system's sscanf reads them in the "C" locale, whatever the process's locale.
//
// text    a copy that ends where reading must end; what follows a NUL in it is not read.
// number  keeps its value when the text begins with no number.
#ifndef PAGESCAN_TESTS_REFERENCE_SCANNUMBER_H
#define PAGESCAN_TESTS_REFERENCE_SCANNUMBER_H

#include <string>

namespace reference {

void scanHex(const std::string& text, int& number);           // "%x"
void scanTwoHexDigits(const std::string& text, int& number);  // "%2x"

// "%i" as of ISO C11: no binary "0b"; "0x" without a digit reads as 0.
void scanInteger(const std::string& text, int& number);

}  // namespace reference

#endif
