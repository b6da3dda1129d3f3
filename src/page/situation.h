// What a rule may ask about the start tag that it judges.
#ifndef PAGESCAN_PAGE_SITUATION_H
#define PAGESCAN_PAGE_SITUATION_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "page/decoded_text.h"
#include "page/element_reader.h"
#include "page/names.h"
#include "page/places.h"

namespace pagescan::internal {

class PartReader;

// Notes that a start tag leaves for its children.
enum Note : std::uint8_t {
  kHasSource = 1,    // a video or audio with a src
  kPreloadNone = 2,  // with preload=none
  kLoadsLazily = 4,  // with loading=lazy, where that counts
};

// One start tag in its document. Texts that it returns are valid until the next call.
class Situation {
 public:
  // source   what the offsets of the tag count in
  Situation(const ElementReader<PartReader>& reader, const StartTag& tag, std::string_view source,
            bool scripting, DecodedText& scratch)
      : reader_(reader), tag_(tag), source_(source), scripting_(scripting), scratch_(scratch) {}

  const StartTag& tag() const { return tag_; }
  bool scripting() const { return scripting_; }

  // In any namespace.
  bool isNamed(Element element) const { return tag_.name == id(element); }
  bool isHtml() const { return tag_.space == Namespace::html; }
  bool parentIs(Element element) const {
    return tag_.parent.space == Namespace::html && tag_.parent.name == id(element);
  }
  bool parentNoted(Note note) const { return (tag_.parent.note & note) != 0; }

  // Whether an HTML element of a name is open around the tag.
  bool isInside(Element element) const { return reader_.isOpenAround(element); }

  bool has(Attribute attribute) const { return tag_.find(attribute) != nullptr; }

  // The value of an attribute, character references read; none when the tag has no such attribute.
  // Bytes beyond ASCII stay in the document's encoding.
  std::optional<std::string_view> text(Attribute attribute) const;

  // Whether the tag has the attribute and it equals a word in lower case, ASCII case ignored.
  bool is(Attribute attribute, std::string_view word) const;

  // Whether the tag has the attribute and it is not empty.
  bool isFilled(Attribute attribute) const;

  // Whether loading=lazy puts off what the tag loads.
  bool loadsLazily() const { return scripting_ && is(Attribute::loading, "lazy"); }

  std::string_view rawOf(const TagAttribute& attribute) const {
    return source_.substr(attribute.valueBegin, attribute.valueEnd - attribute.valueBegin);
  }

  // The decoded value of one of the tag's attributes.
  std::string_view textOf(const TagAttribute& attribute) const;

 private:
  const ElementReader<PartReader>& reader_;
  const StartTag& tag_;
  std::string_view source_;
  bool scripting_;
  DecodedText& scratch_;
};

}  // namespace pagescan::internal

#endif
