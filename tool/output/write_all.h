// Writing to file descriptors.
#ifndef PAGESCAN_TOOL_WRITE_ALL_H
#define PAGESCAN_TOOL_WRITE_ALL_H

#include <string_view>

namespace pagescan::tool {

// Writes all bytes, in as many pieces as the system takes.
// Returns   0, or the errno of the write that failed
int writeAll(int descriptor, std::string_view bytes);

}  // namespace pagescan::tool

#endif
