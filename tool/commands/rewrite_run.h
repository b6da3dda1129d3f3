// The work of pagescan rewrite: many inputs, on several threads. Nothing is written unless all of
// them can be.
#ifndef PAGESCAN_TOOL_REWRITE_RUN_H
#define PAGESCAN_TOOL_REWRITE_RUN_H

#include <optional>
#include <string>

#include "commands/edit_list.h"
#include "commands/new_urls.h"
#include "commands/reading_options.h"
#include "exit_status.h"
#include "output/output.h"

namespace pagescan::tool {

enum class RewriteTarget {
  standardOutput,
  file,     // another one
  inPlace,  // the inputs themselves
  diff,     // what would change, to standard output
};

struct RewriteOptions {
  Reading reading;
  std::string folder, folderUrl;  // the URL of a file in the folder comes from its path
  UrlRules rules;
  std::optional<EditList> edits;  // these, instead of the rules
  RewriteTarget target = RewriteTarget::standardOutput;
  std::string file;    // that is written
  std::string suffix;  // under which replaced files are kept; empty: they are not
  unsigned jobs = 1;   // threads
};

// Rewrites the inputs of these names. Each thread holds one input, its result and their references;
// the new content of files waits on disk until all are done.
ExitStatus runRewrite(const RewriteOptions& options, const Names& names, Output& output);

}  // namespace pagescan::tool

#endif
