// The work of pagescan inventory: many inputs, on several threads, one output.
#ifndef PAGESCAN_TOOL_INVENTORY_RUN_H
#define PAGESCAN_TOOL_INVENTORY_RUN_H

#include "commands/reading_options.h"
#include "exit_status.h"
#include "input_files.h"
#include "output/output.h"
#include "output/reference_lines.h"

namespace pagescan::tool {

struct InventoryOptions {
  Reading reading;
  unsigned jobs = 1;  // threads
  ReferenceLines lines;
};

// Lists all inputs. Their order, and that of the messages, is that of the names whatever the number
// of threads. Each thread holds one input and a bounded piece of output.
ExitStatus runInventory(const InventoryOptions& options, const InputFiles& files, Output& output);

}  // namespace pagescan::tool

#endif
