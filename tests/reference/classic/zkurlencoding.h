// Slow twins of the character tables and of percent encoding.
//
// A type is given as its number: 0 none, 1 browser, 2 escape, 3 URI, 4 URI component, 5 browser
// with the at-sign escaped, 6 Chrome, 7 Chrome94, 8 Siebel; any other number means browser.
#ifndef PAGESCAN_TESTS_REFERENCE_ZKURLENCODING_H
#define PAGESCAN_TESTS_REFERENCE_ZKURLENCODING_H

#include <array>
#include <string>

namespace reference {

// For each byte the text that it becomes.
using CharArray = std::array<std::string, 256>;

CharArray FillASCII_chars(bool upper);
CharArray FillBrowserSpecials();
CharArray FillEscapeSpecials();
CharArray FillEscapeURIComponentSpecials();
CharArray FillEscapeURISpecials();
CharArray FillChromeSpecials();
CharArray FillChrome94Specials();
CharArray FillSiebelSpecials();

// The table that the encoder uses for a type other than none.
const CharArray& tableOf(int type);

// The placeholder is what the host may have set; an empty one matches nothing.
inline const std::string kPlaceholder = "&#25;";

bool EncodeString(const std::string& source, std::string& destination, int type,
                  const std::string& placeholder = kPlaceholder);
bool DecodeString(std::string& text, int type, const std::string& placeholder = kPlaceholder);
bool CheckUrlDecoding(const std::string& text, int type,
                      const std::string& placeholder = kPlaceholder);
int CheckUrlDecoding(const std::string& text);
bool EncodeStringUnreadables(const char* source, unsigned long length, std::string& output);

}  // namespace reference

#endif
