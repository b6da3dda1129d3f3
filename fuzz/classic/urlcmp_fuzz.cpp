// Ranks of links, beside the twin.

#include <cstring>

#include "reference/classic/urlcmp.h"
#include "support/input.h"
#include "urlcmp.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  CDOMBaseLinkCmp link;
  link.topRank = input.flag();
  link.preferred = input.flag();
  link.exact = input.flag();
  link.qualifierA = input.flag();
  link.qualifierB = input.flag();
  link.propFirst = input.flag();
  link.propSecond = input.flag();
  link.propThird = input.flag();
  const std::string_view level = input.rest();
  std::memcpy(&link.level, level.data(), std::min(level.size(), sizeof link.level));
  const reference::LinkCompare twin = {link.level,     link.topRank,    link.preferred,
                                       link.exact,     link.qualifierA, link.qualifierB,
                                       link.propFirst, link.propSecond, link.propThird};
  fuzz::check(link.rank() == twin.rank(), "a rank is that of the twin");
  fuzz::check(link.propRank() == twin.propRank(), "the properties count as for the twin");
  return 0;
}
