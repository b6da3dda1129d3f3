#include "url/percent_encoding.h"

#include "url/digits.h"

namespace pagescan::internal {

void appendPercentEncoded(std::string& out, std::string_view bytes, const ByteClass& set) {
  std::size_t plain = 0;  // where the bytes begin that are still to be copied as they are
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (!set.contains(bytes[i])) continue;
    constexpr char kDigitsOfBase16[] = "0123456789ABCDEF";
    const unsigned char byte = toByte(bytes[i]);
    const char encoded[] = {'%', kDigitsOfBase16[byte >> 4], kDigitsOfBase16[byte & 15]};
    out.append(bytes, plain, i - plain).append(encoded, sizeof encoded);
    plain = i + 1;
  }
  out.append(bytes, plain);
}

std::string percentDecoded(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && text.size() - i > 2 && isHexDigit(text[i + 1]) &&
        isHexDigit(text[i + 2])) {
      result += static_cast<char>(hexDigitValue(text[i + 1]) << 4 | hexDigitValue(text[i + 2]));
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace pagescan::internal
