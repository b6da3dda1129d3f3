// A user's own table of places.
#ifndef PAGESCAN_PAGE_PLACES_TABLE_H
#define PAGESCAN_PAGE_PLACES_TABLE_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "page/element_traits.h"
#include "page/names.h"
#include "page/places.h"
#include "page/reference_ids.h"

namespace pagescan {

namespace internal {

// The names of elements that a table may add, and those of attributes: their numbers have to fit
// into a reference.
inline constexpr std::size_t kMostNamesOfTable = 10'000;
static_assert(kElementCount + kMostNamesOfTable < kNameLimit);

}  // namespace internal

// The rows of a table in the order of its text, and the names in them that the reader does not know
// by itself. Constant once it is built. Hidden, unlike the class around it.
struct __attribute__((visibility("hidden"))) Places::Table {
  // The indexes in `rows` of the rows for an attribute of an element, in order: those that name the
  // element, and those for any. kUnknownName stands for the element's text.
  struct Matches {
    std::span<const std::uint32_t> named;
    std::span<const std::uint32_t> any;
  };
  Matches find(internal::Namespace space, internal::NameId element,
               internal::NameId attribute) const;

  void add(const internal::Place& place);

  bool hasTooManyNames() const {
    return elements.size() > internal::kMostNamesOfTable ||
           attributes.size() > internal::kMostNamesOfTable;
  }

  std::string text;  // what the rows are views of
  std::vector<internal::Place> rows;
  internal::ExtraNames elements{internal::kElementCount};
  internal::ExtraNames attributes{internal::kAttributeCount};
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> rowsByPlace;
};

}  // namespace pagescan

#endif
