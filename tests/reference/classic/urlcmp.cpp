#include "reference/classic/urlcmp.h"

#include <cstdint>

namespace reference {

int LinkCompare::rank() const {
  if (topRank) return 1;
  if (qualifierA && qualifierB) {
    if (exact) return 2;
    return preferred ? 3 : 4;
  }
  const std::int64_t wide = 2 * static_cast<std::int64_t>(level) + (preferred ? 3 : 4);
  return static_cast<std::int32_t>(wide);
}

int LinkCompare::propRank() const {
  return (propFirst ? 1 : 0) + (propSecond ? 1 : 0) + (propThird ? 1 : 0);
}

}  // namespace reference
