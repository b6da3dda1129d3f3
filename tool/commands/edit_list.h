// The list of edits that pagescan rewrite --edits reads: JSON Lines.
//
//   {"start":118,"end":134,"expected":"?next&page=2","url":"https://example.org/"}
//   {"start":25,"end":56,"expected":" integrity=\"...\"","bytes":""}
#ifndef PAGESCAN_TOOL_EDIT_LIST_H
#define PAGESCAN_TOOL_EDIT_LIST_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/edits.h"

namespace pagescan::tool {

struct ListedEdit {
  std::size_t line = 0;  // of the list, from 1
  Span span;
  std::string expected;
  std::string text;
  bool isUrl = false;  // of a reference; else bytes
};

// By the name of the input; of the only input where none is told.
using EditList = std::map<std::string, std::vector<ListedEdit>>;

// Reads the list.
// error   says which line is wrong, and why; empty when none is
EditList readEditList(std::string_view lines, std::string& error);

}  // namespace pagescan::tool

#endif
