// Finds where tags, names and values begin and end in a page. The bytes that matter are marked for
// some blocks of the page together (TagMarks); after that, each search is a look at 57 bits or
// more.
//
//   page    <a href="x">text</a>
//   "<"     1...............1...
//   names   ..1....1...1......11     white space, "/", ">", "="
//   quotes  ........1.1.........
//
// What lies farther off, or where the page ends, is found a byte or a word at a time: nothing is
// read outside the text, and no block is marked more than twice.
#ifndef PAGESCAN_PAGE_MARKED_BYTES_H
#define PAGESCAN_PAGE_MARKED_BYTES_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/kernels.h"
#include "base/words.h"
#include "page/name_tables.h"

namespace pagescan::internal {

class MarkedBytes {
 public:
  // text  must outlive this
  explicit MarkedBytes(std::string_view text) : begin_(text.data()), end_(begin_ + text.size()) {
    const bool canMark = kernels().tagMarksPay && text.size() >= TagMarks::kBlock;
    if (canMark) lastMark_ = end_ - kBlock;
  }

  const char* end() const { return end_; }

  // The first "<" from `from` on, or the end.
  const char* opening(const char* from) {
    const std::uint64_t found = bitsFrom(marks_.openings, from);
    return found != 0 ? from + std::countr_zero(found) : openingFarther(from);
  }

  // The first `quote` from `from` on, or the end.
  const char* quote(const char* from, char quote) {
    const std::uint64_t found = quote == '"' ? bitsFrom(marks_.quotes, from) : 0;
    return found != 0 ? from + std::countr_zero(found) : quoteFarther(from, quote);
  }

  // A name, whose first byte belongs to it in any case, as scanTagName and scanAttributeName see
  // it.
  ScannedName tagName(const char* name) {
    const char* const end = nearEnd(name);
    if (end == nullptr || *end == '=') return tagNameFarther(name);
    return {end, keyOf(name, end)};
  }
  ScannedName attributeName(const char* name) {
    const char* const end = nearEnd(name);
    if (end == nullptr) return attributeNameFarther(name);
    return {end, keyOf(name, end)};
  }

 private:
  static constexpr std::ptrdiff_t kBlock = TagMarks::kBlock;
  static constexpr std::ptrdiff_t kWord = 8;

  // The marks of at least 57 bytes; those that were not marked have none.
  std::uint64_t bitsFrom(const TagMarks::Words& words, const char* from) const {
    const auto place = static_cast<std::size_t>(from - begin_);
    if (place >= marked_) return 0;
    const auto* const bytes = reinterpret_cast<const char*>(words.data());
    return loadWord<std::uint64_t>(bytes + place / 8) >> (place % 8);
  }

  // The end of a name that is marked and has a word of readable bytes; else null.
  const char* nearEnd(const char* name) const {
    if (end_ - name < kWord) return nullptr;
    const std::uint64_t found = bitsFrom(marks_.nameEnds, name + 1);
    return found == 0 ? nullptr : name + 1 + std::countr_zero(found);
  }

  static NameKey keyOf(const char* name, const char* end) {
    const auto length = static_cast<std::uint64_t>(end - name);
    if (length > kWord) return {wordAt(name), wordAt(end - kWord), length};
    return {wordAt(name) << (64 - 8 * length), 0, length};
  }

  // Marks blocks from `from` on if less than one is marked there and one more can be.
  bool markFrom(const char* from) {
    const char* const markedEnd = begin_ + marked_;
    if (from > lastMark_ || markedEnd > lastMark_ || markedEnd - from >= kBlock) return false;
    mark(from);
    return true;
  }
  void mark(const char* from);

  ScannedName tagNameFarther(const char* name);
  ScannedName attributeNameFarther(const char* name);
  const char* openingFarther(const char* from);
  const char* quoteFarther(const char* from, char quote);

  TagMarks marks_{};
  const char* begin_;       // of the blocks that are marked
  std::size_t marked_ = 0;  // their bytes
  const char* end_;
  const char* lastMark_ = nullptr;  // the last place from which a block can be marked, if any
};

}  // namespace pagescan::internal

#endif
