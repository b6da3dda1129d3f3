#include "reference/classic/scannumber.h"

#include <locale.h>

#include <cstdio>

#include "reference/classic/strings.h"

namespace reference {

namespace {

// The calling thread's locale is "C" while this lives.
class CLocale {
 public:
  CLocale() : c_(newlocale(LC_ALL_MASK, "C", locale_t{})), before_(uselocale(c_)) {}
  CLocale(const CLocale&) = delete;
  CLocale& operator=(const CLocale&) = delete;
  ~CLocale() {
    uselocale(before_);
    freelocale(c_);
  }

 private:
  locale_t c_;
  locale_t before_;
};

}  // namespace

void scanHex(const std::string& text, int& number) {
  const CLocale inC;
  unsigned read = 0;
  if (std::sscanf(text.c_str(), "%x", &read) == 1) number = static_cast<int>(read);
}

void scanTwoHexDigits(const std::string& text, int& number) {
  const CLocale inC;
  unsigned read = 0;
  if (std::sscanf(text.c_str(), "%2x", &read) == 1) number = static_cast<int>(read);
}

void scanInteger(const std::string& text, int& number) {
  // A later C reads "0b1" as binary and takes a bare "0x" for no number: both are settled here.
  if (isDigit(byteAt(text, 0))) number = 0;
  const bool binary = lowered(text.substr(0, 2)) == "0b";
  const CLocale inC;
  int read = 0;
  if (std::sscanf(binary ? "0" : text.c_str(), "%i", &read) == 1) number = read;
}

}  // namespace reference
