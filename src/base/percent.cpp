#include "base/percent.h"

#include "base/numbers.h"

namespace pagescan::internal {

constinit const std::array<signed char, 256> kHexDigitValues = [] {
  std::array<signed char, 256> values{};
  for (std::size_t byte = 0; byte < values.size(); ++byte) {
    values[byte] = static_cast<signed char>(hexDigitValue(static_cast<char>(byte)));
  }
  return values;
}();

}  // namespace pagescan::internal
