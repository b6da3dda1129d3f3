// Reads the attributes of interest of a page's tags, in linear time for the page as a whole.
//
// The reading of a tag's attributes is not bounded by the tag's ">": a quoted value may run past it
// and more attributes follow, up to the end of the page. On a page made for it every tag would read
// all that follows. So once the readings have run as far past their tags as the page is long, they
// leave marks, and a later reading that comes to a mark takes over what was found behind it.
#ifndef PAGESCAN_TAG_ATTRIBUTES_H
#define PAGESCAN_TAG_ATTRIBUTES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "classic/tags_of_interest.h"

namespace pagescan::internal {

// The first attribute of each name of interest.
class FoundAttributes {
 public:
  bool has(std::size_t id) const { return (set_ & bit(id)) != 0; }
  bool hasAny(AttributeSet ids) const { return (set_ & ids) != 0; }
  bool hasAll(AttributeSet ids) const { return (set_ & ids) == ids; }

  // The value; for an attribute without one an empty view of nothing.
  std::string_view value(std::size_t id) const { return {values_[id].begin, values_[id].length}; }

  // Keeps the first value of each id.
  void add(std::size_t id, std::string_view value) {
    if (has(id)) return;
    set_ |= bit(id);
    values_[id] = {value.data(), value.size()};
  }

 private:
  static AttributeSet bit(std::size_t id) { return AttributeSet{1} << id; }

  struct Value {
    const char* begin;
    std::size_t length;
  };

  AttributeSet set_ = 0;
  Value values_[kAttributes];  // there where the set says so, left unset elsewhere
};

class TagAttributeReader {
 public:
  // `begin` and `end` bound the page, which must stay as it is while the reader is used.
  TagAttributeReader(const char* begin, const char* end)
      : begin_(begin), end_(end), unmarked_(end - begin) {}

  // Adds the wanted attributes, and maybe others, of a tag whose name ends at `nameEnd` and whose
  // first ">" is at `tagEnd`. What CHTMLAttributeFinder finds under the wanted names is what is
  // found here.
  // Cost   linear in the page for all calls together, in the order of the tags.
  void read(const char* nameEnd, const char* tagEnd, AttributeSet wanted, FoundAttributes& found);

 private:
  struct Occurrence {
    std::size_t id;
    std::string_view value;
  };

  // For each id the place of its first occurrence behind a mark in occurrences_, plus one; or 0.
  using Firsts = std::array<std::uint32_t, kAttributes>;

  // What one reading meets past its tag: marks, and occurrences between them.
  struct Event {
    const char* mark;  // null for an occurrence
    std::uint32_t occurrence;
  };
  using Trail = std::vector<Event>;

  bool crossesLine(const char* from, const char* to) const;
  const Firsts* markAt(const char* at) const;
  void keep(const Trail& trail, const Firsts* behind);
  void addKnown(const Firsts& known, FoundAttributes& found) const;

  const char* begin_;
  const char* end_;
  std::ptrdiff_t unmarked_;  // so many bytes may be read past tags without marks
  std::unordered_map<const char*, Firsts> marks_;
  std::vector<Occurrence> occurrences_;
};

}  // namespace pagescan::internal

#endif
