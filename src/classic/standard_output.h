// Standard output for the debug dumps.
#ifndef PAGESCAN_STANDARD_OUTPUT_H
#define PAGESCAN_STANDARD_OUTPUT_H

#include <iostream>

namespace pagescan::internal {

// Ready also where a host's static constructor dumps, before that of <iostream> has run here.
// Numbers are written as std::to_string gives them: the stream would group their digits as the
// locale of the host has it.
inline std::ostream& standardOutput() {
  const std::ios_base::Init ready;
  return std::cout;
}

}  // namespace pagescan::internal

#endif
