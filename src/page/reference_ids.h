// The ids of elements in references: a namespace and the number of a name.
#ifndef PAGESCAN_PAGE_REFERENCE_IDS_H
#define PAGESCAN_PAGE_REFERENCE_IDS_H

#include <cstdint>

#include "page/element_traits.h"
#include "page/names.h"

namespace pagescan::internal {

inline constexpr unsigned kNameBits = 14;

// The numbers of all names of elements are below this.
inline constexpr NameId kNameLimit = 1U << kNameBits;

constexpr std::uint16_t elementId(Namespace space, NameId name) {
  return static_cast<std::uint16_t>(static_cast<unsigned>(space) << kNameBits | name);
}
constexpr Namespace spaceOf(std::uint16_t element) {
  return static_cast<Namespace>(element >> kNameBits);
}
constexpr NameId nameOfElement(std::uint16_t element) {
  return static_cast<NameId>(element & (kNameLimit - 1U));
}

}  // namespace pagescan::internal

#endif
