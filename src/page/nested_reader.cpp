// Markup inside markup: noscript elements and srcdoc attributes.
#include "page/part_reader.h"
#include "page/words.h"

namespace pagescan::internal {

// The text of a noscript element with scripting on, read as a browser without scripts would: as
// the content of a div.
void PartReader::readNoscript(const StartTag& tag, Span text) {
  if (page_.documents[part_.document].depth >= kMaxDepth) return;
  Part part;
  part.document = page_.documents.addFragment(text_.beginInPage(tag.begin), part_.document);
  part.flags = static_cast<Flags>(part_.flags | kNoscript | (tag.inTemplate ? kTemplate : 0));
  part.scripting = false;
  part.isFragment = true;
  part.isQuirky = reader_->quirks() == QuirksMode::full;
  part.range = text;
  readNested(part, text_);
}

void PartReader::readSrcdoc(const Situation& iframe, const TagAttribute& attribute) {
  const StartTag& tag = iframe.tag();
  if (page_.documents[part_.document].depth >= kMaxDepth) return;
  if (attribute.valueBegin == attribute.valueEnd) return;
  const auto sandbox = iframe.text(Attribute::sandbox);
  Part part;
  part.scripting = part_.scripting && (!sandbox || hasWord(*sandbox, "allow-scripts"));
  part.document = page_.documents.addSrcdoc(text_.beginInPage(tag.begin), part_.document);
  part.flags = static_cast<Flags>(part_.flags | kNested | (tag.inTemplate ? kTemplate : 0));
  page_.noteBytes(iframe.rawOf(attribute));
  const TextLayer text(text_, attribute.valueBegin, attribute.valueEnd);
  part.range = {0, static_cast<std::uint32_t>(text.text().size())};
  readNested(part, text);
}

void PartReader::readNested(const Part& part, const TextLayer& text) {
  const std::size_t before = page_.references.size();
  PartReader(page_, text, part).read();
  const bool isEmpty = page_.references.size() == before;
  if (isEmpty) page_.documents.truncate(part.document);
}

}  // namespace pagescan::internal
