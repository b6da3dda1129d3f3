// Rows of tables for people: cells side by side, each padded to the width of its column.
#ifndef PAGESCAN_TOOL_TABLE_ROW_H
#define PAGESCAN_TOOL_TABLE_ROW_H

#include <cstddef>
#include <string>
#include <string_view>

namespace pagescan::tool {

class TableRow {
 public:
  // Widths count characters; wide ones count as one. The text is shown as it is: printable() makes
  // it fit for a terminal. A longer one pushes the rest of the row to the right.
  void addRight(std::string_view text, std::size_t width);
  void addLeft(std::string_view text, std::size_t width = 0);

  // The row, without blanks at its end, with a line end.
  std::string line() const;

 private:
  void beginCell();

  std::string row_;
  bool isFirst_ = true;
};

}  // namespace pagescan::tool

#endif
