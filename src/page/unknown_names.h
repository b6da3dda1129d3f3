// Numbers for the names of elements that the tables do not know, so that open elements of one name
// find each other. Equal names, as the tokenizer has them, have equal numbers. No hash that a page
// could aim at: cost is logarithmic in the count of different names.
#ifndef PAGESCAN_PAGE_UNKNOWN_NAMES_H
#define PAGESCAN_PAGE_UNKNOWN_NAMES_H

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace pagescan::internal {

class UnknownNames {
 public:
  // first  the number of the first new name
  explicit UnknownNames(std::uint32_t first) : next_(first) {}

  // The number of a name as written, new if need be.
  std::uint32_t add(std::string_view name);
  // The same, or 0 for a name that was never added.
  std::uint32_t find(std::string_view name) const;

 private:
  std::map<std::string, std::uint32_t, std::less<>> numbers_;
  std::uint32_t next_;
};

}  // namespace pagescan::internal

#endif
