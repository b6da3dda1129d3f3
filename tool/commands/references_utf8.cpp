#include "commands/references_utf8.h"

#include <algorithm>
#include <cstddef>

#include "charset.h"
#include "output/bytes.h"
#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

bool isDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

bool isLetterOrDigit(char byte) {
  const char lower = static_cast<char>(byte | 0x20);
  return isDigit(byte) || (lower >= 'a' && lower <= 'z');
}

// The length of the reference that the text begins with, "&" and ";" included; 0 for none.
std::size_t referenceLength(std::string_view text) {
  const std::size_t name = text.substr(1, 1) == "#" ? 2 : 1;
  std::size_t end = std::min(name, text.size());
  while (end < text.size() && isLetterOrDigit(text[end])) ++end;
  return end > name && end < text.size() && text[end] == ';' ? end + 1 : 0;
}

// The library decodes one reference after the other. Which byte one stands for can depend on the
// number before it alone: "&#abc;" takes that over.
class ReferenceDecoder {
 public:
  // Appends what the reference stands for, in UTF-8, or itself.
  void decode(std::string_view reference, std::string& result) {
    const bool isNumeric = reference[1] == '#';
    std::string decoded = convert(reference);
    if (decoded == reference && isNumeric && !isDigit(reference[2])) {
      decoded = convert(number_ + std::string(reference)).substr(convert(number_).size());
    } else if (isNumeric) {
      number_ = reference;
    }
    result += decoded == reference ? decoded : bytesAsCodePoints(decoded);
  }

 private:
  static std::string convert(std::string_view text) {
    RWCString bytes(text.data(), text.size());
    CTQCharSet::fsGetSingleton()->convert(bytes);
    return std::string(bytesOf(bytes));
  }

  std::string number_;  // the last reference to one
};

}  // namespace

std::string referencesToUtf8(std::string_view text) {
  std::string result;
  ReferenceDecoder decoder;
  for (;;) {
    const std::size_t plain = std::min(text.find('&'), text.size());
    result += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) return result;
    const std::size_t length = referenceLength(text);
    if (length == 0) {
      result += '&';
    } else {
      decoder.decode(text.substr(0, length), result);
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
}

}  // namespace pagescan::tool
