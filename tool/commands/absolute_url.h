// A check of options that are absolute URLs.
#ifndef PAGESCAN_TOOL_ABSOLUTE_URL_H
#define PAGESCAN_TOOL_ABSOLUTE_URL_H

#include <string>

#include "pagescan/url.h"

namespace pagescan::tool {

// What is wrong with the URL; empty when nothing is. None at all is right.
inline std::string checkAbsoluteUrl(const std::string& url) {
  return url.empty() || Url::parse(url) ? "" : "\"" + url + "\" is no absolute URL";
}

}  // namespace pagescan::tool

#endif
