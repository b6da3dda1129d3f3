// UrlList: URLs on their way out, a line each, every one once.
#ifndef PAGESCAN_TOOL_URL_LIST_H
#define PAGESCAN_TOOL_URL_LIST_H

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "output/output.h"

namespace pagescan::tool {

// On a terminal nothing in a URL can act on it: see printable().
class UrlList {
 public:
  explicit UrlList(Output& output) : output_(output), isForPeople_(output.isTerminal()) {}

  // Writes the URL, unless it is empty or was written before.
  void write(std::string_view url);

 private:
  Output& output_;
  bool isForPeople_;
  std::set<std::string, std::less<>> written_;  // ordered: no hash that a page could aim at
};

}  // namespace pagescan::tool

#endif
