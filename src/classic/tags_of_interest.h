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

// A tag and its attributes; an empty cell ends them, and an empty tag ends the table. APPLET fills
// its row, so its attributes run on through the row below, that row's tag included. This is
// deliberate: an applet's "classid" is recorded too.
inline constexpr std::string_view kTagRows[][kCells] = {
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

// Every attribute of the table once; a place in this list is the attribute's id. The list is in
// order of the first letter. "OBJECT" is there because APPLET's row runs on; names are compared in
// lower case, so no attribute ever has it.
inline constexpr std::string_view kAttributeNames[] = {
    "OBJECT", "archive", "background",     "code",   "codebase", "classid", "data",
    "dynsrc", "href",    "implementation", "lowsrc", "rel",      "src",
};
inline constexpr std::size_t kAttributes = std::size(kAttributeNames);

// A set of attribute ids.
using AttributeSet = std::uint32_t;

inline constexpr std::size_t kMostOfOneTag = 10;

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
  const auto* found = std::find(std::begin(kAttributeNames), std::end(kAttributeNames), name);
  return static_cast<std::uint8_t>(found - std::begin(kAttributeNames));
}

// The attributes of the row, read through row ends up to the first empty cell.
constexpr TagOfInterest readRow(std::size_t row) {
  TagOfInterest tag{kTagRows[row][0], {}, 0};
  for (std::size_t cell = row * kCells + 1; !kTagRows[cell / kCells][cell % kCells].empty();
       ++cell) {
    tag.attributes[tag.count++] = attributeIdOfCell(kTagRows[cell / kCells][cell % kCells]);
  }
  return tag;
}

inline constexpr std::size_t kTags = 16;

// A row without attributes is left out.
inline constexpr std::array<TagOfInterest, kTags> kTagsOfInterest = [] {
  std::array<TagOfInterest, kTags> tags{};
  std::size_t count = 0;
  for (std::size_t row = 0; !kTagRows[row][0].empty(); ++row) {
    const TagOfInterest tag = readRow(row);
    if (tag.count > 0) tags[count++] = tag;
  }
  return tags;
}();
static_assert(!kTagsOfInterest.back().name.empty());
static_assert(std::all_of(kTagsOfInterest.begin(), kTagsOfInterest.end(),
                          [](const TagOfInterest& tag) {
                            return tag.wanted() < AttributeSet{1} << kAttributes;
                          }));

// The tag of this name in whatever case, or null.
const TagOfInterest* findTagOfInterest(std::string_view name);

inline constexpr std::size_t kNoAttribute = kAttributes;

// The id of the attribute of this name in whatever case, or kNoAttribute.
std::size_t findAttributeOfInterest(std::string_view name);

// The first place at or after `begin` at which "<" is followed by bytes that may be the first three
// of a tag of interest, or by a byte that is skipped in front of names; `end` when there is none,
// or no room for a tag.
const char* findTagOpening(const char* begin, const char* end);

// The bytes that end a tag's name, and that are skipped in front of one. "~" is one of them
// deliberately.
inline constexpr ByteClass kTagNameEnds = kHtmlWhiteSpace | ByteClass::of("<>~");

}  // namespace pagescan::internal

#endif
