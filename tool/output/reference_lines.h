// The references of a page or style sheet as lines: of a table, of JSON, or of URLs.
// docs/inventory.md describes them.
#ifndef PAGESCAN_TOOL_REFERENCE_LINES_H
#define PAGESCAN_TOOL_REFERENCE_LINES_H

#include <functional>
#include <string>
#include <string_view>

#include "pagescan/page.h"
#include "pagescan/style_sheet.h"

namespace pagescan::tool {

enum class ListFormat { table, jsonl, urls };

// Which references are written, and how.
struct ReferenceLines {
  ListFormat format = ListFormat::table;
  unsigned kinds = ~0U;  // a bit for each Kind

  // Appends a line for each reference to `lines`. Calls `spill` after each, which may take lines
  // away.
  // inputName  as JSON Lines show it
  void append(const Page& page, const std::string& inputName, std::string& lines,
              const std::function<void()>& spill) const;
  void append(const StyleSheet& sheet, const std::string& inputName, std::string& lines,
              const std::function<void()>& spill) const;

  // The line over a table.
  static std::string heading();
};

}  // namespace pagescan::tool

#endif
