#include "urlcmp.h"

int CDOMBaseLinkCmp::rank() {
  if (topRank) return 1;
  if (qualifierA && qualifierB) {
    if (exact) return 2;
    return preferred ? 3 : 4;
  }
  // Unsigned, so that a level too large wraps around.
  return static_cast<int>(2 * static_cast<unsigned>(level) + (preferred ? 3U : 4U));
}

int CDOMBaseLinkCmp::propRank() {
  return static_cast<int>(propFirst) + static_cast<int>(propSecond) + static_cast<int>(propThird);
}
