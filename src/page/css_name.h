// The names that the references of CSS depend on: of functions, of rules, of custom properties.
#ifndef PAGESCAN_PAGE_CSS_NAME_H
#define PAGESCAN_PAGE_CSS_NAME_H

#include <cstddef>
#include <string_view>

namespace pagescan::internal {

enum class CssName {
  other,
  url,
  src,
  imageSet,  // image-set and -webkit-image-set
  supports,
  import,
  nameSpace,
  charset,
  layer,
  customProperty,  // all that begin with "--"
};

// Reads the name at `at`, escapes decoded and case ignored, and moves `at` past it. A number before
// the name's first other character is read as part of it.
CssName readCssName(std::string_view css, std::size_t& at);

// The function whose name ends at `at`, where its "(" stands; other for all that are of no
// interest. The name holds no escapes.
// floor   the end of what is known to be other tokens; nothing before it is looked at
CssName cssFunctionBefore(std::string_view css, std::size_t at, std::size_t floor);

// Where the characters of a name that end at `at` begin. They may be a number, or follow a "#".
std::size_t cssNameBegin(std::string_view css, std::size_t at, std::size_t floor);

}  // namespace pagescan::internal

#endif
