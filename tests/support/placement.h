// Stands the texts of a test where one byte too far is caught.
//
// A table row runs three times: with its texts in exact-size heap blocks (AddressSanitizer sees
// both ends), flush against an unreadable page after them, and flush after such a page (every
// build faults there).
#ifndef PAGESCAN_TESTS_SUPPORT_PLACEMENT_H
#define PAGESCAN_TESTS_SUPPORT_PLACEMENT_H

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "rw/rwcstring.h"

namespace pagescan::tests {

// Where a table row stands; every row begins with one, written HERE.
struct Here {
  const char* file;
  int line;
};
#define HERE                \
  ::pagescan::tests::Here { \
    __FILE__, __LINE__      \
  }

// Hands out places for the texts of one run of a row, all alive until the placement dies.
class Placement {
 public:
  enum Kind { kExactBlock, kBeforeGuardPage, kAfterGuardPage };
  static constexpr Kind kKinds[] = {kExactBlock, kBeforeGuardPage, kAfterGuardPage};

  explicit Placement(Kind kind);
  Placement(const Placement&) = delete;
  Placement& operator=(const Placement&) = delete;
  ~Placement();

  Kind kind() const { return kind_; }
  const char* name() const;

  // The bytes alone, with nothing readable next to them on the placement's side.
  std::string_view bytes(std::string_view text);

  // The bytes and a closing NUL, which is the last readable byte.
  const char* cString(std::string_view text);

  // A string object that stands flush itself: of a text of up to 15 bytes, which stands in the
  // object, the place after the closing NUL of the longest one is unreadable. Longer ones are
  // built from pointer and length, so that their heap block is exact.
  // Inline, so that the tests of a library without string objects need none.
  RWCString& string(std::string_view text) {
    static_assert(sizeof(RWCString) % alignof(RWCString) == 0);
    const std::string_view source = bytes(text);
    auto* const made = new (reserve(sizeof(RWCString))) RWCString(source.data(), source.size());
    strings_.push_back({made, [](RWCString* string) { string->~RWCString(); }});
    return *made;
  }

  // The same for an argument that is only read.
  const RWCString& constString(std::string_view text) { return string(text); }

 private:
  class Block;

  char* reserve(std::size_t size);

  Kind kind_;
  std::vector<std::unique_ptr<Block>> blocks_;
  std::vector<std::pair<RWCString*, void (*)(RWCString*)>> strings_;  // and how each dies
};

// Calls check(row, placement), or check(row) where it takes no placement, for every row in every
// placement. A failure names the row's line and the placement.
template <typename Rows, typename Check>
void forEachPlacement(const Rows& rows, const Check& check) {
  for (const auto& row : rows) {
    for (const Placement::Kind kind : Placement::kKinds) {
      Placement placement(kind);
      const testing::ScopedTrace trace(row.here.file, row.here.line, placement.name());
      if constexpr (std::is_invocable_v<Check, decltype(row), Placement&>) {
        check(row, placement);
      } else {
        check(row);
      }
    }
  }
}

// Calls check(row) once for every row, where no text has to be placed.
template <typename Rows, typename Check>
void forEachRow(const Rows& rows, const Check& check) {
  for (const auto& row : rows) {
    const testing::ScopedTrace trace(row.here.file, row.here.line, "this row");
    check(row);
  }
}

// The bytes of a string, for comparisons: NUL bytes count and show in messages.
inline std::string_view bytesOf(const RWCString& text) {
  return {text.data(), text.length()};
}

// A string of these bytes, NUL included.
inline RWCString stringOf(std::string_view text) {
  return RWCString(text.data(), text.size());
}

}  // namespace pagescan::tests

#endif
