// What the program's exit status says.
#ifndef PAGESCAN_TOOL_EXIT_STATUS_H
#define PAGESCAN_TOOL_EXIT_STATUS_H

namespace pagescan::tool {

enum ExitStatus {
  kSuccess = 0,
  kFailed = 1,      // an input failed, or the output could not be written
  kWrongUsage = 2,  // nothing was read or written
};

}  // namespace pagescan::tool

#endif
