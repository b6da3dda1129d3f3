// Views of RWCString texts, for reading without ever touching the sharing of a buffer.
#ifndef PAGESCAN_TEXT_VIEW_H
#define PAGESCAN_TEXT_VIEW_H

#include <string_view>

#include "rw/rwcstring.h"

namespace pagescan::internal {

inline std::string_view viewOf(const RWCString& text) {
  return {text.data(), text.length()};
}

inline RWCString stringOf(std::string_view text) {
  return {text.data(), text.size()};
}

inline const char* endOf(const RWCString& text) {
  return text.data() + text.length();
}

inline std::size_t offsetIn(const RWCString& text, const char* at) {
  return static_cast<std::size_t>(at - text.data());
}

}  // namespace pagescan::internal

#endif
