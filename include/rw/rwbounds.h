// The error of an index out of range.
#ifndef PAGESCAN_RW_RWBOUNDS_H
#define PAGESCAN_RW_RWBOUNDS_H

#include <cstddef>
#include <stdexcept>

#include "../pagescan_export.h"

// The message of an RWBoundsErr; takes the index asked for and the largest one allowed.
inline constexpr char RWTOOL_INDEXERR[] = "index %zu is out of range, the last valid one is %zu";

// Thrown by bounds-tested access. An access that no index would satisfy names 0 as the last valid
// one.
class PAGESCAN_EXPORT RWBoundsErr : public std::out_of_range {
 public:
  // Holds the message with both numbers.
  RWBoundsErr(std::size_t index, std::size_t lastValid);
  RWBoundsErr(const RWBoundsErr&) noexcept;
  RWBoundsErr& operator=(const RWBoundsErr&) noexcept;
  ~RWBoundsErr() noexcept override;
};

#endif
