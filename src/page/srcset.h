// The URLs of the image candidates of a srcset attribute.
#ifndef PAGESCAN_PAGE_SRCSET_H
#define PAGESCAN_PAGE_SRCSET_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "pagescan/page.h"

namespace pagescan::internal {

// Reads one candidate after the other; one with wrong descriptors is passed over.
// value    decoded UTF-8 of at most 2^32-1 bytes; kept as a view
// Cost     reading to the end is linear; nothing allocates
// Source   HTML Standard, 4.8.4.3.10 "Parsing a srcset attribute"
class SrcsetReader {
 public:
  explicit SrcsetReader(std::string_view value) : value_(value) {}

  // Where the URL of the next candidate stands in the value; std::nullopt after the last one.
  std::optional<Span> next();

 private:
  bool readDescriptors();

  std::string_view value_;
  std::size_t at_ = 0;
};

}  // namespace pagescan::internal

#endif
