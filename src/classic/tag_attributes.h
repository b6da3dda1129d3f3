// Reads the attributes of interest of a page's tags, in linear time for the page as a whole.
//
// The reading of a tag's attributes is not bounded by the tag's ">": a quoted value may run past
// it, and then more attributes follow, up to the end of the page. In
//
//   <img a=">" <img b=">" <img c=">" src=x>
//           1          2          3       end
//
// the three tags end at 1, 2 and 3, the first ">" that follows each name. The value in quotes leads
// each reading past its ">", and all three go on to the end: the page yields three records of x. So
// every tag reads all that follows it, and on a long page of such tags that is a square. Once the
// readings have looked at as many bytes past their tags as the page has, they leave marks. A mark
// stands where one attribute of a reading begins, about one in 128 bytes, and knows the first
// attribute of each name that the reading found from there on. A later reading that comes to begin
// an attribute at a mark would find the same: it takes that over and ends.
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
  TagAttributeReader(const char* begin, const char* end) : begin_(begin), end_(end) {}

  // Adds the wanted attributes, and maybe others, of a tag whose name ends at `nameEnd` and whose
  // first ">" is at `tagEnd`. What CHTMLAttributeFinder finds under the wanted names is what is
  // found here.
  // Cost   linear in the page for all calls together, in the order of the tags.
  void read(const char* nameEnd, const char* tagEnd, AttributeSet wanted, FoundAttributes& found);

  // How many bytes all readings so far have looked at past the ">" of their tags.
  std::ptrdiff_t readPastTags() const { return readPastTags_; }

 private:
  struct Occurrence {
    std::size_t id;
    std::string_view value;
  };

  // For each id the place of its first occurrence after a mark in occurrences_, plus one; or 0.
  using Firsts = std::array<std::uint32_t, kAttributes>;

  // What one reading meets past its tag: marks, and occurrences between them.
  struct Event {
    const char* mark;  // null for an occurrence
    std::uint32_t occurrence;
  };
  using Trail = std::vector<Event>;

  bool hasReadFar() const { return readPastTags_ > end_ - begin_; }
  bool crossesLine(const char* from, const char* to) const;
  const Firsts* markAt(const char* at) const;
  void keep(const Trail& trail, const Firsts* after);
  void addKnown(const Firsts& known, FoundAttributes& found) const;

  const char* begin_;
  const char* end_;
  std::ptrdiff_t readPastTags_ = 0;
  std::unordered_map<const char*, Firsts> marks_;
  std::vector<Occurrence> occurrences_;
};

}  // namespace pagescan::internal

#endif
