// The insertion modes of tree construction (HTML Standard, 13.2.4.1).
#ifndef PAGESCAN_PAGE_INSERTION_MODE_H
#define PAGESCAN_PAGE_INSERTION_MODE_H

#include <cstdint>
#include <initializer_list>

namespace pagescan::internal {

// "text" and "in table text" are left out: see TreeBuilder.
enum class InsertionMode : std::uint8_t {
  initial,
  beforeHtml,
  beforeHead,
  inHead,
  inHeadNoscript,
  afterHead,
  inBody,
  inTable,
  inCaption,
  inColumnGroup,
  inTableBody,
  inRow,
  inCell,
  inTemplate,
  afterBody,
  inFrameset,
  afterFrameset,
  afterAfterBody,
  afterAfterFrameset,
};

class InsertionModes {
 public:
  constexpr InsertionModes() = default;
  constexpr InsertionModes(std::initializer_list<InsertionMode> modes) {
    for (const InsertionMode mode : modes) bits_ |= bit(mode);
  }
  constexpr bool contains(InsertionMode mode) const { return (bits_ & bit(mode)) != 0; }

 private:
  static constexpr std::uint32_t bit(InsertionMode mode) {
    return std::uint32_t{1} << static_cast<unsigned>(mode);
  }

  std::uint32_t bits_ = 0;
};

}  // namespace pagescan::internal

#endif
