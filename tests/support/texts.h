// Texts that are too large to write down.
#ifndef PAGESCAN_TESTS_SUPPORT_TEXTS_H
#define PAGESCAN_TESTS_SUPPORT_TEXTS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace pagescan::tests {

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

}  // namespace pagescan::tests

#endif
