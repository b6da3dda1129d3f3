// Texts that strangers might send: each shape in any length.
#ifndef PAGESCAN_BENCH_HOSTILE_SHAPES_H
#define PAGESCAN_BENCH_HOSTILE_SHAPES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pagescan::bench {

// A text of any length: the opening, then the piece over and over. Some begin with many of another
// piece, as many as the root of the length: what costs a square only where few openings meet one
// long tail is steep there, too. In others each piece ends with a number of its own and `rest`. The
// closing makes a whole tag of a text of one tag.
struct Shape {
  const char* name;
  std::string_view opening;
  std::string_view piece;
  std::string_view rootOf = {};
  std::string_view closing = {};
  std::string_view rest = {};
};

// All shapes, in the order of the report.
const std::vector<Shape>& hostileShapes();

// `length` bytes, though that cuts a piece; with a closing up to a piece fewer, all whole.
std::string textOf(const Shape& shape, std::size_t length);

}  // namespace pagescan::bench

#endif
