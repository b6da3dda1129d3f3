// The tags that a page is searched for, and the attributes that are recorded of each.
#ifndef PAGESCAN_TAGS_OF_INTEREST_H
#define PAGESCAN_TAGS_OF_INTEREST_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "base/byte_class.h"

namespace pagescan::internal {

inline constexpr std::size_t kCells = 6;

// A tag and its attributes: whoever adds a tag or an attribute adds it here, in lower case except
// the tag. All else follows at compile time. An empty cell ends the attributes, and an empty tag
// the table. APPLET fills its row, so its attributes run on through the row below, that row's tag
// included. Hosts rely on it: an applet's "classid" is recorded too.
inline constexpr const char* kTagRows[][kCells] = {
    {"BASE", "href"},
    {"BODY", "background"},
    {"TABLE", "background"},
    {"TD", "background"},
    {"TH", "background"},
    {"APPLET", "code", "codebase", "src", "archive", "data"},
    {"OBJECT", "code", "codebase", "classid", "archive"},
    {"EMBED", "src"},
    {"FRAME", "src"},
    {"IFRAME", "src"},
    {"IMG", "src", "lowsrc", "dynsrc"},
    {"SCRIPT", "src"},
    {"LINK", "href", "rel"},
    {"INPUT", "src"},
    {"XML", "src"},
    {"TEST"},
    {"?IMPORT", "implementation"},
    {},
};

// A cell by its place, counted through all rows; a text of nothing where it is empty.
constexpr std::string_view cellAt(std::size_t at) {
  const char* cell = kTagRows[at / kCells][at % kCells];
  return cell ? cell : std::string_view();
}

// Calls use(name) for each attribute of a row, read through row ends up to the first empty cell.
template <class Use>
constexpr void forEachAttribute(std::size_t row, Use use) {
  for (std::size_t at = row * kCells + 1; !cellAt(at).empty(); ++at) use(cellAt(at));
}

constexpr std::size_t countAttributes(std::size_t row) {
  std::size_t count = 0;
  forEachAttribute(row, [&](std::string_view) { ++count; });
  return count;
}

// A row without attributes is left out.
inline constexpr std::size_t kTags = [] {
  std::size_t count = 0;
  for (std::size_t row = 0; kTagRows[row][0]; ++row) count += countAttributes(row) > 0;
  return count;
}();

inline constexpr std::size_t kMostOfOneTag = [] {
  std::size_t most = 0;
  for (std::size_t row = 0; kTagRows[row][0]; ++row) {
    most = std::max(most, countAttributes(row));
  }
  return most;
}();

// The low five bits of a letter are the same in either case. Other bytes share them: whatever is
// looked up by them must be compared in full afterwards.
inline constexpr std::size_t kLetterCodes = 32;
constexpr std::size_t letterCode(char c) {
  return toByte(c) % kLetterCodes;
}

// The attributes of the table, each once and in the order of their first letters, in an array of
// the length asked for; how many there are.
template <std::size_t kLength>
constexpr std::size_t collectAttributes(std::array<std::string_view, kLength>& names) {
  auto* end = names.data();
  for (std::size_t row = 0; kTagRows[row][0]; ++row) {
    forEachAttribute(row, [&](std::string_view name) {
      if (std::find(names.data(), end, name) == end) *end++ = name;
    });
  }
  std::sort(names.data(), end, [](std::string_view a, std::string_view b) {
    return letterCode(a.front()) < letterCode(b.front());
  });
  return static_cast<std::size_t>(end - names.data());
}

inline constexpr std::size_t kAttributes = [] {
  std::array<std::string_view, std::size(kTagRows) * kCells> names;
  return collectAttributes(names);
}();

// A place in this list is the attribute's id. "OBJECT" is in it because APPLET's row runs on; names
// are compared in lower case, so no attribute ever has it.
inline constexpr auto kAttributeNames = [] {
  std::array<std::string_view, kAttributes> names;
  collectAttributes(names);
  return names;
}();

// A set of attribute ids.
using AttributeSet = std::uint32_t;
static_assert(kAttributes < 32, "the table has more attributes than AttributeSet has bits");

struct TagOfInterest {
  std::string_view name;
  std::array<std::uint8_t, kMostOfOneTag> attributes;  // ids, in the order of their recording
  std::size_t count;

  constexpr const std::uint8_t* begin() const { return attributes.data(); }
  constexpr const std::uint8_t* end() const { return attributes.data() + count; }

  constexpr AttributeSet wanted() const {
    AttributeSet ids = 0;
    for (const std::uint8_t id : *this) ids |= AttributeSet{1} << id;
    return ids;
  }
};

constexpr std::uint8_t attributeIdOfCell(std::string_view name) {
  const auto* found = std::find(kAttributeNames.begin(), kAttributeNames.end(), name);
  return static_cast<std::uint8_t>(found - kAttributeNames.begin());
}

inline constexpr std::array<TagOfInterest, kTags> kTagsOfInterest = [] {
  std::array<TagOfInterest, kTags> tags{};
  std::size_t count = 0;
  for (std::size_t row = 0; kTagRows[row][0]; ++row) {
    if (countAttributes(row) == 0) continue;
    TagOfInterest& tag = tags[count++];
    tag.name = kTagRows[row][0];
    forEachAttribute(
        row, [&](std::string_view name) { tag.attributes[tag.count++] = attributeIdOfCell(name); });
  }
  return tags;
}();

// The tag of this name in whatever case, or null.
const TagOfInterest* findTagOfInterest(std::string_view name);

inline constexpr std::size_t kNoAttribute = kAttributes;

// The id of the attribute of this name in whatever case, or kNoAttribute.
std::size_t findAttributeOfInterest(std::string_view name);

// The first place at or after `begin` at which "<" is followed by bytes that may be the first three
// of a tag of interest, or by a byte that is skipped before names; `end` when there is none,
// or no room for a tag.
const char* findTagOpening(const char* begin, const char* end);

// The bytes that end a tag's name, and that are skipped before one. "~" is one of them.
inline constexpr ByteClass kTagNameEnds = kHtmlWhiteSpace | ByteClass::of("<>~");

}  // namespace pagescan::internal

#endif
