// The bytes of a library string, without a copy.
#ifndef PAGESCAN_TOOL_BYTES_H
#define PAGESCAN_TOOL_BYTES_H

#include <string_view>

#include "rw/rwcstring.h"

namespace pagescan::tool {

inline std::string_view bytesOf(const RWCString& text) {
  return {text.data(), text.length()};
}

}  // namespace pagescan::tool

#endif
