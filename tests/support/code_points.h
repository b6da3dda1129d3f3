// Bytes of any value in JSON: each as the character of its number.
#ifndef PAGESCAN_TESTS_CODE_POINTS_H
#define PAGESCAN_TESTS_CODE_POINTS_H

#include <cstddef>
#include <string>

namespace pagescan::tests {

// The bytes that UTF-8 text of characters up to U+00FF stands for.
inline std::string asBytes(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto lead = static_cast<unsigned char>(text[i]);
    if (lead < 0x80) {
      bytes += text[i];
    } else {
      const auto trail = static_cast<unsigned char>(text[++i]);
      bytes += static_cast<char>((lead & 0x03) << 6 | (trail & 0x3F));
    }
  }
  return bytes;
}

}  // namespace pagescan::tests

#endif
