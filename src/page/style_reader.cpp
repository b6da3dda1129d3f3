// References in CSS: style elements and attributes, and presentation attributes.
#include <utility>

#include "page/part_reader.h"

namespace pagescan::internal {
namespace {

// Whether CSS other than a sheet can hold a reference: all forms of them have a bracket.
bool mayHoldReferences(std::string_view raw) {
  return raw.find('(') != std::string_view::npos || raw.find('&') != std::string_view::npos;
}

}  // namespace

void PartReader::readStyle(const Found& found, StyleForm form, std::uint32_t begin,
                           std::uint32_t end) {
  if (!mayHoldReferences(text_.text().substr(begin, end - begin))) return;
  const std::string_view css = decode(begin, end, TextForm::attributeValue);
  styleReferences_.clear();
  internal::readStyle(css, form, styleReferences_);
  for (const StyleReference& reference : styleReferences_) {
    appendStyle(found, reference, text_.toPage(decoded_.rawSpan(reference.span)));
  }
}

// The text of an SVG style element is ordinary content: svgStyleText() brings it.
void PartReader::readSheet(const Situation& style, const Found& found, std::uint32_t begin,
                           std::uint32_t end) {
  if (!style.isHtml()) {
    svgSheets_.back().found = found;
    return;
  }
  const std::string_view css = decode(begin, end, TextForm::rawText);
  styleReferences_.clear();
  internal::readStyle(css, StyleForm::sheet, styleReferences_);
  for (const StyleReference& reference : styleReferences_) {
    appendStyle(found, reference, text_.toPage(decoded_.rawSpan(reference.span)));
  }
}

Encoding PartReader::encodingFor(Span text) {
  page_.noteBytes(text_.text().substr(text.begin, text.end - text.begin));
  return text_.encoding();
}

void PartReader::svgStyleText(std::uint32_t owner, Span text, bool isCdata) {
  if (svgSheets_.empty() || svgSheets_.back().owner != owner || !svgSheets_.back().found) return;
  SvgSheet& sheet = svgSheets_.back();
  if (sheet.pieces++ == 0) sheet.text.start(text_.text());
  page_.noteBytes(text_.text().substr(text.begin, text.end - text.begin));
  appendPiece(sheet.text, text_.text(), text.begin, text.end,
              isCdata ? TextForm::rawText : TextForm::text, text_.encoding());
}

void PartReader::svgStyleEnds(std::uint32_t owner) {
  if (svgSheets_.empty() || svgSheets_.back().owner != owner) return;
  const SvgSheet sheet = std::move(svgSheets_.back());
  svgSheets_.pop_back();
  if (sheet.pieces > 0) readSvgSheet(sheet);
}

// Keeps the values: where the markup around a piece stands far away, the bytes at a span do not
// tell how they are to be read.
void PartReader::readSvgSheet(const SvgSheet& sheet) {
  const std::string_view css = sheet.text.text();
  styleReferences_.clear();
  internal::readStyle(css, StyleForm::sheet, styleReferences_);
  for (const StyleReference& reference : styleReferences_) {
    const Span inPage = text_.toPage(sheet.text.rawSpan(reference.span));
    appendStyle(*sheet.found, reference, inPage);
    const auto length = reference.span.end - reference.span.begin;
    decodeCssValue(css.substr(reference.span.begin, length), reference.slot, decoded_);
    page_.values.push_back({inPage.begin, sheet.found->tag, std::string(decoded_.text())});
  }
}

void PartReader::appendStyle(Found found, const StyleReference& reference, Span inPage) {
  // The kind of a row of a user's own table stands for that of what would be loaded.
  if (reference.kind != Kind::load) found.kind = reference.kind;
  found.flags |= reference.flags;
  append(found, reference.slot, inPage);
}

}  // namespace pagescan::internal
