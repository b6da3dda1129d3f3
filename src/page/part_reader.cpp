// From start tags to places.
#include "page/part_reader.h"

#include "encoding/sniffing.h"
#include "page/place_lookup.h"
#include "page/reference_ids.h"

namespace pagescan::internal {
namespace {

// The encoding that a meta element names: by `charset`, or by `content` with the right http-equiv.
// Source   HTML Standard, 13.2.6.4.4 "The 'in head' insertion mode", "meta"
std::optional<Encoding> encodingNamedBy(const Situation& meta) {
  if (const auto label = meta.text(Attribute::charset)) {
    if (const auto encoding = encodingForLabel(*label)) return encoding;
  }
  if (!meta.is(Attribute::httpEquiv, "content-type")) return std::nullopt;
  const auto content = meta.text(Attribute::content);
  return content ? encodingFromMetaContent(*content) : std::nullopt;
}

// Whether a page of this encoding is read without a conversion before.
bool isReadAsItIs(Encoding encoding) {
  return !needsConversion(encoding) && encoding != Encoding::replacement;
}

// The text of an element as the tables of places have it: an attribute without a name.
TagAttribute textAsAttribute(Span text) {
  return {kUnknownName, text.begin, text.begin, text.begin, text.end};
}

}  // namespace

PartReader::PartReader(PageReading& page, const TextLayer& text, const Part& part)
    : page_(page),
      text_(text),
      part_(part),
      parent_(page.documents[part.document].parent),
      firstReference_(page.references.size()) {}

void PartReader::read() {
  ReaderOptions options;
  options.scripting = part_.scripting;
  if (part_.isFragment) options.context = kDivContext;
  options.quirks = part_.isQuirky;
  options.iframeSrcdoc = page_.documents[part_.document].srcdocs > 0;
  if (page_.own != nullptr) {
    options.elements = &page_.own->elements;
    options.attributes = &page_.own->attributes;
  }
  ElementReader<PartReader> reader(text_.text(), options, *this);
  reader_ = &reader;
  reader.read(part_.range);
}

std::uint8_t PartReader::startRareTag(const StartTag& tag) {
  if (tag.merged && part_.isFragment) return tag.note;  // into the root that holds the fragment
  if (tag.space != Namespace::svg || tag.name != id(Element::style)) return readPlaces(tag);
  svgSheets_.emplace_back().owner = tag.begin;
  const std::uint8_t note = readPlaces(tag);
  const Situation situation(*reader_, tag, text_.text(), part_.scripting, scratch_);
  readPlace(situation, textAsAttribute({tag.end, tag.end}));
  return note;
}

// Those of the tag's attributes. Returns the note for its children.
std::uint8_t PartReader::readPlaces(const StartTag& tag) {
  const Situation situation(*reader_, tag, text_.text(), part_.scripting, scratch_);
  if (!page_.encodingIsSettled && part_.document == 0 && tag.is(Element::meta)) {
    settleEncoding(situation);
  }
  for (std::uint32_t i = 0; i < tag.attributeCount; ++i) readPlace(situation, tag.attributes[i]);
  return tag.is(Element::video) || tag.is(Element::audio) ? mediaNotes(situation) : std::uint8_t{0};
}

void PartReader::rawText(const StartTag& tag, Span text) {
  if (tag.is(Element::noscript)) return readNoscript(tag, text);
  const Situation situation(*reader_, tag, text_.text(), part_.scripting, scratch_);
  readPlace(situation, textAsAttribute(text));
}

void PartReader::settleEncoding(const Situation& meta) {
  if (!meta.parentIs(Element::head) || meta.tag().inTemplate) return;
  const auto named = encodingNamedBy(meta);
  if (!named) return;
  const Encoding meant = encodingMeantByMeta(*named);
  page_.encodingIsSettled = true;
  if (meant == page_.encoding) return;
  page_.encoding = meant;
  page_.mustReadAgain = page_.dependsOnEncoding || !isReadAsItIs(meant);
  if (!page_.mustReadAgain) page_.text->setEncoding(meant);
}

void PartReader::readPlace(const Situation& situation, const TagAttribute& attribute) {
  if (page_.own != nullptr && readOwnPlace(situation, attribute)) return;
  const StartTag& tag = situation.tag();
  const Place* place = firstPlace(page_.profiles, tag.space, tag.name, attribute.name);
  while (place != nullptr && !tryPlace(*place, situation, attribute)) {
    place = nextPlace(place, page_.profiles, tag.space, tag.name);
  }
}

// Tries the rows for the element's name and those for any element, in the order of the table.
bool PartReader::readOwnPlace(const Situation& situation, const TagAttribute& attribute) {
  const StartTag& tag = situation.tag();
  auto [named, any] = page_.own->find(tag.space, tag.name, attribute.name);
  while (!named.empty() || !any.empty()) {
    auto& rows = any.empty() || (!named.empty() && named.front() < any.front()) ? named : any;
    if (tryPlace(page_.own->rows[rows.front()], situation, attribute)) return true;
    rows = rows.subspan(1);
  }
  return false;
}

bool PartReader::tryPlace(const Place& place, const Situation& situation,
                          const TagAttribute& attribute) {
  if ((place.profile & ~page_.profiles) != 0) return false;
  const StartTag& tag = situation.tag();
  Kind kind = place.kind;
  Flags flags = tag.inTemplate ? Flags{kTemplate} : Flags{0};
  if (place.rule != Rule::plain) {
    const auto judgement =
        place.rule == Rule::byBase ? judgeBase(tag, attribute) : judge(situation, attribute, place);
    if (!judgement) return false;
    kind = judgement->kind;
    flags |= judgement->flags;
  }
  flags |= part_.flags;
  const auto found = [&]() -> Found {
    return {text_.beginInPage(tag.begin), elementId(tag.space, tag.name), attribute.name, kind,
            flags};
  };
  if (place.slot == PlaceSlot::url) {
    readUrl(found(), attribute.valueBegin, attribute.valueEnd);
  } else {
    readSlot(place.slot, situation, attribute, found());
  }
  return true;
}

// The first base element with a href in the document counts, and no other.
Judgement PartReader::judgeBase(const StartTag& tag, const TagAttribute& attribute) {
  Document& document = page_.documents[part_.document];
  if (part_.isFragment || tag.inTemplate || tag.inShadow || document.hasBase) return {Kind::dead};
  document.hasBase = true;
  Reference& base = document.base;
  base.span = text_.toPage(attribute.valueBegin, attribute.valueEnd);
  base.tag = text_.beginInPage(tag.begin);
  base.parent = parent_;
  base.element = elementId(tag.space, tag.name);
  base.attribute = attribute.name;
  base.kind = Kind::base;
  base.slot = Slot::url;
  return {Kind::base};
}

// The body goes, with all in it; what html has got since stays.
void PartReader::bodyLeaves(std::uint32_t bodyBegin) {
  const std::uint32_t from = text_.beginInPage(bodyBegin);
  Document& document = page_.documents[part_.document];
  ReferenceList& references = page_.references;
  std::size_t first = references.size();
  while (first > firstReference_ && references[first - 1].tag >= from) --first;
  std::size_t kept = first;
  for (std::size_t i = first; i < references.size(); ++i) {
    const Reference reference = references[i];
    const bool isOfHtml = reference.parent == parent_ &&
                          reference.element == elementId(Namespace::html, id(Element::html));
    if (isOfHtml) references[kept++] = reference;
  }
  references.truncate(kept);
  if (document.hasBase && document.base.tag >= from) document.hasBase = false;
}

}  // namespace pagescan::internal
