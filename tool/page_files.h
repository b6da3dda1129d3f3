// The pages and style sheets of a folder.
#ifndef PAGESCAN_TOOL_PAGE_FILES_H
#define PAGESCAN_TOOL_PAGE_FILES_H

#include <string>
#include <string_view>

#include "options.h"

namespace pagescan::tool {

// Whether the name ends like that of a page (.html, .htm, .xhtml, .shtml) or of a style sheet
// (.css), in whatever case.
bool isNamedLikePage(std::string_view name);
bool isNamedLikeSheet(std::string_view name);

// The names with those of folders replaced by the pages and style sheets in them, at any depth, in
// the order of their names. Links to folders are not followed. What cannot be read is told, and
// `isWhole` false then.
Names withFilesOfFolders(const Names& names, bool& isWhole);

// The URL of a file of a site: `url` is that of the folder.
// Returns  empty for a file outside of it
std::string urlOfFile(const std::string& name, const std::string& folder, const std::string& url);

}  // namespace pagescan::tool

#endif
