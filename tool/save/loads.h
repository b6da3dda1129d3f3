// What a page or a style sheet loads.
#ifndef PAGESCAN_TOOL_SAVE_LOADS_H
#define PAGESCAN_TOOL_SAVE_LOADS_H

#include <string>
#include <string_view>
#include <vector>

#include "pagescan/page.h"
#include "pagescan/style_sheet.h"

namespace pagescan::tool {

struct Load {
  std::string url;  // absolute, without its fragment
  bool isDocument;  // whether the place shows a page: a frame, an object
  Position at;      // where the reference stands
};

// All that a browser loads under some condition, in the order of the page: pictures of every
// resolution, what a noscript or a template holds, too. What is in the page itself (data:, about:,
// javascript:, blob:) is no load.
std::vector<Load> loadsOf(const Page& page);
std::vector<Load> loadsOf(const StyleSheet& sheet);

// Whether a URL names something outside the page, which a browser asks a server for.
bool isFetched(std::string_view url);

// The URL up to its fragment, and the fragment with its "#" or nothing.
std::string_view withoutFragment(std::string_view url);
std::string_view fragmentOf(std::string_view url);

}  // namespace pagescan::tool

#endif
