// Bytes of a URL that stand for others.
#ifndef PAGESCAN_TOOL_PERCENT_H
#define PAGESCAN_TOOL_PERCENT_H

#include <string>
#include <string_view>

namespace pagescan::tool {

// The text with "%XX" for every byte but letters, digits, "-", ".", "_", "~" and these signs.
inline std::string percentEncoded(std::string_view text, std::string_view signs = "") {
  constexpr char kDigits[] = "0123456789ABCDEF";
  constexpr std::string_view kAlways = "-._~";
  std::string result;
  for (const char c : text) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                         (c >= 'a' && c <= 'z') || kAlways.find(c) != std::string_view::npos ||
                         signs.find(c) != std::string_view::npos;
    const auto byte = static_cast<unsigned char>(c);
    if (isPlain) {
      result += c;
    } else {
      result.append("%").append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 15]);
    }
  }
  return result;
}

}  // namespace pagescan::tool

#endif
