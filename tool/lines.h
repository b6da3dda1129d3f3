// Text taken apart line by line.
#ifndef PAGESCAN_TOOL_LINES_H
#define PAGESCAN_TOOL_LINES_H

#include <algorithm>
#include <string_view>

namespace pagescan::tool {

// Calls use(piece) for each piece of the text that `terminator` ends; the last one may lack it.
template <typename Use>
void forEachPiece(std::string_view text, char terminator, Use use) {
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, text.find(terminator));
    use(piece);
    text.remove_prefix(std::min(piece.size() + 1, text.size()));
  }
}

// A line without the CR of a CR LF.
inline std::string_view withoutCr(std::string_view line) {
  return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

// Calls use(line) for each line, which ends with LF or CR LF; the last one may end without.
template <typename Use>
void forEachLine(std::string_view text, Use use) {
  forEachPiece(text, '\n', [&](std::string_view line) { use(withoutCr(line)); });
}

}  // namespace pagescan::tool

#endif
