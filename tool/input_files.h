// The files that a command reads, as its command line names them.
#ifndef PAGESCAN_TOOL_INPUT_FILES_H
#define PAGESCAN_TOOL_INPUT_FILES_H

#include <string>

#include "options.h"

namespace pagescan::tool {

struct InputFiles {
  Names named;                    // as arguments
  std::string listFile;           // holds further names; empty: there is none
  bool areNulTerminated = false;  // in that file

  // Whether there may be more than one.
  bool areMany() const { return named.size() > 1 || !listFile.empty(); }
};

// Adds the arguments FILE and the options --files-from and -0.
void addFiles(CLI::App& command, InputFiles& files);

// All names: the arguments, then those of the list; "-" where nothing was said. What is wrong with
// the list is told, and `isWhole` false then.
Names namesOf(const InputFiles& files, bool& isWhole);

}  // namespace pagescan::tool

#endif
