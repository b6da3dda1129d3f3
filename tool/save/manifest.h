// The manifest of a saved page: what was asked for, and what came of it.
#ifndef PAGESCAN_TOOL_SAVE_MANIFEST_H
#define PAGESCAN_TOOL_SAVE_MANIFEST_H

#include <functional>
#include <string>

#include "save/resources.h"

namespace pagescan::tool {

// JSON Lines: for each URL that was asked for, and each that a redirect led to, an object with the
// members url, status, location (of a redirect), type, length, sha256, name, time and error, as
// far as they apply. docs/saving.md describes them.
// nameOf  the name of the copy of a resource, relative to the folder; empty where there is none
std::string manifestOf(const std::deque<Resource>& resources,
                       const std::function<std::string(const Resource&)>& nameOf);

}  // namespace pagescan::tool

#endif
