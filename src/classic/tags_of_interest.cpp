#include "classic/tags_of_interest.h"

#include "base/byte_class.h"
#include "base/kernels.h"
#include "base/search.h"

namespace pagescan::internal {
namespace {

// The first two letters tell the tags apart.
constexpr std::size_t pairCode(char first, char second) {
  return letterCode(first) * kLetterCodes + letterCode(second);
}

constexpr std::uint8_t kNoTag = kTags;

constexpr auto kTagsByPair = [] {
  std::array<std::uint8_t, kLetterCodes * kLetterCodes> tags{};
  tags.fill(kNoTag);
  for (std::size_t i = 0; i < kTags; ++i) {
    const std::string_view name = kTagsOfInterest[i].name;
    tags[pairCode(name[0], name[1])] = static_cast<std::uint8_t>(i);
  }
  return tags;
}();
static_assert(
    std::count_if(kTagsByPair.begin(), kTagsByPair.end(),
                  [](std::uint8_t tag) { return tag != kNoTag; }) == kTags,
    "two tags of the table begin with the same two letters, by which they are told apart");

// A letter after the first one of a tag's name is of one of seven kinds. The eighth is for the
// bytes that are skipped before names: anything may follow those.
constexpr unsigned char kindOf(char second) {
  return static_cast<unsigned char>(1U << letterCode(second) % 7);
}
constexpr unsigned char kAnything = 1U << 7U;

constexpr TagFilter kOpenings = [] {
  TagFilter filter{};
  const auto addLetter = [&](std::size_t place, char letter, unsigned char kind) {
    for (const char c : {toUpper(letter), toLower(letter)}) filter.kinds[place][toByte(c)] |= kind;
  };
  const auto addAll = [&](std::size_t place, unsigned char kind) {
    for (unsigned char& kinds : filter.kinds[place]) kinds |= kind;
  };
  for (const TagOfInterest& tag : kTagsOfInterest) {
    const unsigned char kind = kindOf(tag.name[1]);
    addLetter(0, tag.name[0], kind);
    addLetter(1, tag.name[1], kind);
    tag.name.size() > 2 ? addLetter(2, tag.name[2], kind) : addAll(2, kind);
  }
  for (std::size_t byte = 0; byte < filter.kinds[0].size(); ++byte) {
    if (kTagNameEnds.contains(static_cast<char>(byte))) filter.kinds[0][byte] |= kAnything;
  }
  addAll(1, kAnything);
  addAll(2, kAnything);
  return filter;
}();

// Where the attributes that begin with a letter stand in the list of names.
struct Range {
  std::uint8_t begin;
  std::uint8_t end;
};

constexpr auto kAttributesByLetter = [] {
  std::array<Range, kLetterCodes> ranges{};
  for (std::uint8_t id = 0; id < kAttributes; ++id) {
    Range& range = ranges[letterCode(kAttributeNames[id].front())];
    if (range.end == 0) range.begin = id;
    range.end = static_cast<std::uint8_t>(id + 1);
  }
  return ranges;
}();

bool equalsInLowerCase(std::string_view text, std::string_view lower) {
  return text.size() == lower.size() && std::equal(text.begin(), text.end(), lower.begin(),
                                                   [](char a, char b) { return toLower(a) == b; });
}

}  // namespace

const TagOfInterest* findTagOfInterest(std::string_view name) {
  if (name.size() < 2) return nullptr;
  const std::uint8_t tag = kTagsByPair[pairCode(name[0], name[1])];
  if (tag == kNoTag || !equalsIgnoringCase(name, kTagsOfInterest[tag].name)) return nullptr;
  return &kTagsOfInterest[tag];
}

std::size_t findAttributeOfInterest(std::string_view name) {
  if (name.empty()) return kNoAttribute;
  const Range range = kAttributesByLetter[letterCode(name.front())];
  for (std::size_t id = range.begin; id < range.end; ++id) {
    if (equalsInLowerCase(name, kAttributeNames[id])) return id;
  }
  return kNoAttribute;
}

const char* findTagOpening(const char* begin, const char* end) {
  constexpr std::ptrdiff_t kShortestTag = 3;  // of a name and the byte that ends it
  if (end - begin <= kShortestTag) return end;
  const char* last = end - kShortestTag;
  const char* found = kernels().findTag(begin, last, kOpenings);
  return found == last ? end : found;
}

}  // namespace pagescan::internal
