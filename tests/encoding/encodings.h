// What the tests of src/encoding have in common.
#ifndef PAGESCAN_TESTS_ENCODING_ENCODINGS_H
#define PAGESCAN_TESTS_ENCODING_ENCODINGS_H

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "encoding/encoding.h"

namespace pagescan::internal {

inline void PrintTo(Encoding encoding, std::ostream* out) {
  *out << nameOf(encoding);
}

}  // namespace pagescan::internal

namespace pagescan::tests {

inline constexpr auto kAllEncodings = [] {
  std::array<internal::Encoding, internal::kEncodingCount> all{};
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<internal::Encoding>(i);
  return all;
}();

// For a test's name: "iso_8859_8_i" of "ISO-8859-8-I".
inline std::string testNameOf(const testing::TestParamInfo<internal::Encoding>& info) {
  std::string name(nameOf(info.param));
  for (char& c : name) {
    if (c == '-') c = '_';
  }
  return name;
}

inline std::string_view nameOrNone(std::optional<internal::Encoding> encoding) {
  return encoding ? nameOf(*encoding) : "none";
}

}  // namespace pagescan::tests

#endif
