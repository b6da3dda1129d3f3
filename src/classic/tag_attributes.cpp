#include "classic/tag_attributes.h"

#include <algorithm>

#include "base/attribute_scan.h"
#include "base/byte_class.h"
#include "base/search.h"

namespace pagescan::internal {
namespace {

// A reading leaves a mark at an attribute that takes it over a line of so many bytes, at most one
// in each. Fewer cost less memory, more spare more reading.
constexpr std::ptrdiff_t kBytesPerLine = 128;

}  // namespace

bool TagAttributeReader::crossesLine(const char* from, const char* to) const {
  return (from - begin_) / kBytesPerLine != (to - begin_) / kBytesPerLine;
}

const TagAttributeReader::Firsts* TagAttributeReader::markAt(const char* at) const {
  const auto found = marks_.find(at);
  return found == marks_.end() ? nullptr : &found->second;
}

void TagAttributeReader::addKnown(const Firsts& known, FoundAttributes& found) const {
  for (const std::uint32_t place : known) {
    if (place == 0) continue;
    const Occurrence& occurrence = occurrences_[place - 1];
    found.add(occurrence.id, occurrence.value);
  }
}

// From the end of the trail to its start, so that each mark knows all that follows it.
void TagAttributeReader::keep(const Trail& trail, const Firsts* after) {
  Firsts firsts = after ? *after : Firsts{};
  for (auto event = trail.rbegin(); event != trail.rend(); ++event) {
    if (event->mark) {
      marks_.emplace(event->mark, firsts);
    } else {
      firsts[occurrences_[event->occurrence].id] = event->occurrence + 1;
    }
  }
}

void TagAttributeReader::read(const char* nameEnd, const char* tagEnd, AttributeSet wanted,
                              FoundAttributes& found) {
  // The byte that ended the name is stepped over unseen, be it the tag's own ">".
  const char* at = skipWhiteSpace(nameEnd + 1, end_);
  Trail trail;
  const Firsts* known = nullptr;
  while (at < end_ && (!trail.empty() || !found.hasAll(wanted))) {
    const bool usesMarks = at > tagEnd && hasReadFar();
    if (usesMarks && (known = markAt(at))) break;
    const ScannedAttribute step = scanAttribute(at, end_);
    if (step.readTo > tagEnd) readPastTags_ += step.readTo - std::max(at, tagEnd);
    if (usesMarks && crossesLine(at, step.readTo)) trail.push_back({at, 0});
    const std::size_t id = findAttributeOfInterest(step.name);
    if (id != kNoAttribute) {
      found.add(id, step.value);
      if (!trail.empty()) {
        trail.push_back({nullptr, static_cast<std::uint32_t>(occurrences_.size())});
        occurrences_.push_back({id, step.value});
      }
    }
    if (step.isLast) break;
    at = step.next;
  }
  if (known) addKnown(*known, found);
  if (!trail.empty()) keep(trail, known);
}

}  // namespace pagescan::internal
