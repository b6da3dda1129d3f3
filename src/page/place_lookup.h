// Finds the rows of the table of places for an element and an attribute, by tables that are made at
// compile time: an attribute that is no place costs three look-ups.
#ifndef PAGESCAN_PAGE_PLACE_LOOKUP_H
#define PAGESCAN_PAGE_PLACE_LOOKUP_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "page/element_traits.h"
#include "page/names.h"
#include "page/places.h"

namespace pagescan::internal {

inline constexpr std::size_t kSpaceCount = 3;  // html, svg, mathml: Namespace and PlaceSpace
inline constexpr std::size_t kPlaceClassCount = 61;
inline constexpr std::size_t kProfileSetCount = 8;

// Elements with the same rows are a class. Rows are numbered from 1; 0 is none. The attribute
// kUnknownName stands for the text of an element.
struct PlaceTables {
  std::array<std::array<std::uint8_t, kElementCount>, kSpaceCount> classOf{};
  std::array<std::array<std::uint8_t, kAttributeCount>, kPlaceClassCount> first{};
  std::array<std::uint8_t, kPlaceCount> next{};  // the later row for the same attribute
  // By a set of profiles and a row: that row or the first one later that the set has.
  std::array<std::array<std::uint8_t, kPlaceCount + 1>, kProfileSetCount> wanted{};
  std::size_t classCount = 0;
};
static_assert(kPlaceCount < 256);

extern const std::array<Place, kPlaceCount> kPlaces;
extern const PlaceTables kPlaceTables;

// Whether a row of kPlaces is for an element.
bool isFor(const Place& place, Namespace space, NameId element);

// Of a row and those later for its attribute, the first one that is for the element and of a
// profile that is wanted; nullptr: none.
// row  its number; 0 gives none
inline const Place* placeFrom(std::uint8_t row, Profiles wanted, Namespace space, NameId element) {
  for (;; row = kPlaceTables.next[row - 1U]) {
    row = kPlaceTables.wanted[wanted % kProfileSetCount][row];
    if (row == 0) return nullptr;
    const Place* const place = &kPlaces[row - 1U];
    if (isFor(*place, space, element)) return place;
  }
}

// The first row for an attribute of an element, of a profile that is wanted; nullptr: none.
inline const Place* firstPlace(Profiles wanted, Namespace space, NameId element, NameId attribute) {
  if (element >= kElementCount) element = kUnknownName;  // of a user's own table
  if (attribute >= kAttributeCount) return nullptr;
  const std::uint8_t number = kPlaceTables.classOf[static_cast<std::size_t>(space)][element];
  const std::uint8_t row = kPlaceTables.first[number][attribute];
  const std::uint8_t skipped = kPlaceTables.wanted[wanted % kProfileSetCount][row];
  if (skipped != row) return placeFrom(skipped, wanted, space, element);
  return row == 0 ? nullptr : &kPlaces[row - 1U];
}

// The next row after `place` for the same attribute of the element; nullptr: none.
inline const Place* nextPlace(const Place* place, Profiles wanted, Namespace space,
                              NameId element) {
  const auto index = static_cast<std::size_t>(place - kPlaces.data());
  return placeFrom(kPlaceTables.next[index], wanted, space, element);
}

}  // namespace pagescan::internal

#endif
