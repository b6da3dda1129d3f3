// A run of pagescan save: fetch a page and all that it loads, write the copies.
#ifndef PAGESCAN_TOOL_SAVE_SAVE_RUN_H
#define PAGESCAN_TOOL_SAVE_SAVE_RUN_H

#include <cstddef>
#include <string>

#include "exit_status.h"
#include "output/output.h"
#include "save/fetcher.h"

namespace pagescan::tool {

struct SaveOptions {
  std::string url;     // absolute, http or https
  std::string file;    // the page's bytes, "-" for standard input; empty: they are fetched
  std::string folder;  // where the copies go
  bool isSingleFile = false;
  bool goesOn = false;       // with a run that was stopped
  std::size_t most = 10000;  // resources
  FetchOptions fetch;
};

// What failed, was taken off or could not be done is told.
ExitStatus runSave(const SaveOptions& options, Output& output);

}  // namespace pagescan::tool

#endif
