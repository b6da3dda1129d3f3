// Bytes that take the place of others, and where everything stands afterwards.
#ifndef PAGESCAN_EDITS_CHANGES_H
#define PAGESCAN_EDITS_CHANGES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "edits/spelling.h"
#include "pagescan/page.h"

namespace pagescan::internal {

inline constexpr std::size_t kNoReference = static_cast<std::size_t>(-1);

struct Change {
  Span span;              // of the page
  Spelling bytes;         // what comes in its place
  std::size_t edit;       // whose change it is
  std::size_t reference;  // that it gives a value to; kNoReference: other bytes

  std::size_t size() const { return bytes.before.size() + bytes.value.size() + bytes.after.size(); }
};

// Changes in the order of the page, which do not overlap.
class Changes {
 public:
  explicit Changes(std::vector<Change> inOrder);

  bool isEmpty() const { return all_.empty(); }
  const std::vector<Change>& all() const { return all_; }

  // The size of the page with all changes.
  std::uint64_t sizeAfter(std::string_view page) const;
  std::string applyTo(std::string_view page) const;

  // Where what began, or ended, at an offset of the page does afterwards. What is inserted at an
  // offset comes before what began there, and after what ended there.
  // Cost   logarithmic in the changes
  std::int64_t beginAfter(std::uint32_t offset) const;
  std::int64_t endAfter(std::uint32_t offset) const;

  // Where the bytes of all()[i], or its value alone, stand afterwards.
  Span bytesAfter(std::size_t i) const;
  Span valueAfter(std::size_t i) const;

  // The last change that begins, afterwards, at the offset or before it; the first one if there is
  // none.
  // Cost   logarithmic in the changes
  std::size_t nearest(std::uint32_t offsetAfter) const;

  // Whether what stood at the span has lost bytes, or got some within, by a change of other bytes.
  bool touches(Span span) const;

 private:
  std::vector<Change> all_;
  std::vector<std::int64_t> shifts_;  // of what comes before change i; the last one: after all
};

}  // namespace pagescan::internal

#endif
