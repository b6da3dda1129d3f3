// Reads one text with markup for its references: the page, a noscript fragment, or the document of
// a srcdoc. What is nested in it is read by readers of their own.
#ifndef PAGESCAN_PAGE_PART_READER_H
#define PAGESCAN_PAGE_PART_READER_H

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "page/decoded_text.h"
#include "page/element_reader.h"
#include "page/json_strings.h"
#include "page/page_reading.h"
#include "page/rules.h"
#include "page/style_text.h"
#include "page/text_layer.h"
#include "page/white_space.h"

namespace pagescan::internal {

class PartReader {
 public:
  // text   which part.range is a range of. All must outlive the reader.
  PartReader(PageReading& page, const TextLayer& text, const Part& part);

  // Cost   linear in the text, and in what is nested in it to each depth
  void read();

  // What the ElementReader calls.
  static constexpr bool kTakesBareTags = false;  // no attribute, no place
  std::uint8_t startTag(const StartTag& tag) {
    if (tag.merged || tag.space != Namespace::html) return startRareTag(tag);
    return tag.attributeCount == 0 ? std::uint8_t{0} : readPlaces(tag);
  }
  void rawText(const StartTag& tag, Span text);
  void svgStyleText(std::uint32_t owner, Span text, bool isCdata);
  void svgStyleEnds(std::uint32_t owner);
  Encoding encodingFor(Span text);
  void bodyLeaves(std::uint32_t bodyBegin);

 private:
  // A place that was found: the references in it have all of this in common.
  struct Found {
    std::uint32_t tag;  // in the page
    NameId element;     // as in Reference
    NameId attribute;   // kUnknownName: the element's text
    Kind kind;
    Flags flags;
  };

  // The text of an SVG style element that is open. It comes in pieces.
  struct SvgSheet {
    std::uint32_t owner;         // where its tag begins
    std::optional<Found> found;  // none: no place of the table
    DecodedText text;
    std::uint32_t pieces = 0;
  };

  // part_reader.cpp
  std::uint8_t startRareTag(const StartTag& tag);
  std::uint8_t readPlaces(const StartTag& tag);
  void settleEncoding(const Situation& meta);
  void readPlace(const Situation& situation, const TagAttribute& attribute);
  bool readOwnPlace(const Situation& situation, const TagAttribute& attribute);
  bool tryPlace(const Place& place, const Situation& situation, const TagAttribute& attribute);
  Judgement judgeBase(const StartTag& tag, const TagAttribute& attribute);

  // slot_reader.cpp
  void readSlot(PlaceSlot slot, const Situation& situation, const TagAttribute& attribute,
                const Found& found);
  void readUrl(const Found& found, std::uint32_t begin, std::uint32_t end);
  void readRefresh(const Found& found, std::uint32_t begin, std::uint32_t end);
  void readJson(const Situation& script, const Found& found, std::uint32_t begin,
                std::uint32_t end);
  // Whether a value is white space, however that is written.
  static bool isBlankValue(std::string_view raw) {
    if (raw.empty()) return true;
    const bool startsBlank = kAsciiWhiteSpace.contains(raw[0]) || raw[0] == '&';
    return startsBlank && isWhiteSpaceText(raw);
  }
  // An empty URL means the document itself where a user goes somewhere or sends something.
  static bool mayBeBlank(Kind kind) {
    return kind == Kind::navigation || kind == Kind::form || kind == Kind::base;
  }
  template <typename Reader>
  void readList(Slot slot, const Found& found, std::uint32_t begin, std::uint32_t end);
  std::string_view decode(std::uint32_t begin, std::uint32_t end, TextForm form);
  void appendDecoded(const Found& found, Slot slot, Span inDecoded);
  void append(const Found& found, Slot slot, Span inPage);

  // style_reader.cpp
  void readStyle(const Found& found, StyleForm form, std::uint32_t begin, std::uint32_t end);
  void readSheet(const Situation& style, const Found& found, std::uint32_t begin,
                 std::uint32_t end);
  void readSvgSheet(const SvgSheet& sheet);
  void appendStyle(Found found, const StyleReference& reference, Span inPage);

  // nested_reader.cpp
  void readNoscript(const StartTag& tag, Span text);
  void readSrcdoc(const Situation& iframe, const TagAttribute& attribute);
  void readNested(const Part& part, const TextLayer& text);

  PageReading& page_;
  const TextLayer& text_;
  const Part& part_;
  const std::uint32_t parent_;  // Reference::parent of what is found
  const std::size_t firstReference_;
  ElementReader<PartReader>* reader_ = nullptr;

  // Storage that is used again and again.
  DecodedText scratch_;
  DecodedText decoded_;
  std::vector<StyleReference> styleReferences_;
  std::vector<JsonReference> jsonReferences_;
  std::vector<SvgSheet> svgSheets_;
};

// --- what nearly all references go through ---

inline void PartReader::readUrl(const Found& found, std::uint32_t begin, std::uint32_t end) {
  const std::string_view raw = text_.text().substr(begin, end - begin);
  if (isBlankValue(raw) && !mayBeBlank(found.kind)) return;
  append(found, Slot::url, text_.toPage(begin, end));
}

inline void PartReader::append(const Found& found, Slot slot, Span inPage) {
  Reference reference;
  reference.span = inPage;
  reference.tag = found.tag;
  reference.parent = parent_;
  reference.element = found.element;
  reference.attribute = found.attribute;
  reference.kind = found.kind;
  reference.slot = slot;
  reference.flags = found.flags;
  page_.references.append(reference);
}

}  // namespace pagescan::internal

#endif
