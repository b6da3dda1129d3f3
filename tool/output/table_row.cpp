#include "output/table_row.h"

#include <algorithm>

namespace pagescan::tool {

namespace {

std::string padding(std::string_view text, std::size_t width) {
  const auto shown =
      static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) >> 6) != 2;  // no continuation byte
      }));
  return std::string(width > shown ? width - shown : 0, ' ');
}

}  // namespace

void TableRow::addRight(std::string_view text, std::size_t width) {
  beginCell();
  row_.append(padding(text, width)).append(text);
}

void TableRow::addLeft(std::string_view text, std::size_t width) {
  beginCell();
  row_.append(text).append(padding(text, width));
}

std::string TableRow::line() const {
  return row_.substr(0, row_.find_last_not_of(' ') + 1) + "\n";
}

void TableRow::beginCell() {
  if (!isFirst_) row_.append("  ");
  isFirst_ = false;
}

}  // namespace pagescan::tool
