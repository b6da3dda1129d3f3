// From the text of a place to references.
#include "page/part_reader.h"
#include "page/refresh.h"
#include "page/srcset.h"
#include "page/url_lists.h"

namespace pagescan::internal {
namespace {

bool hasReference(std::string_view raw) {
  return raw.find('&') != std::string_view::npos;
}

}  // namespace

void PartReader::readSlot(PlaceSlot slot, const Situation& situation, const TagAttribute& attribute,
                          const Found& found) {
  const std::uint32_t begin = attribute.valueBegin;
  const std::uint32_t end = attribute.valueEnd;
  switch (slot) {
    case PlaceSlot::url:
      return readUrl(found, begin, end);
    case PlaceSlot::urlList:
      return readList<UrlListReader>(Slot::urlList, found, begin, end);
    case PlaceSlot::commaList:
      return readList<CommaListReader>(Slot::commaList, found, begin, end);
    case PlaceSlot::srcset:
      return readList<SrcsetReader>(Slot::srcset, found, begin, end);
    case PlaceSlot::refresh:
      return readRefresh(found, begin, end);
    case PlaceSlot::nestedPage:
      return readSrcdoc(situation, attribute);
    case PlaceSlot::sheet:
      return readSheet(situation, found, begin, end);
    case PlaceSlot::value:
      return readStyle(found, StyleForm::value, begin, end);
    case PlaceSlot::declarations:
      return readStyle(found, StyleForm::declarations, begin, end);
    case PlaceSlot::json:
      return readJson(situation, found, begin, end);
  }
}

void PartReader::readRefresh(const Found& found, std::uint32_t begin, std::uint32_t end) {
  const auto url = findRefreshUrl(decode(begin, end, TextForm::attributeValue));
  if (url && url->begin != url->end) appendDecoded(found, Slot::refresh, *url);
}

void PartReader::readJson(const Situation& script, const Found& found, std::uint32_t begin,
                          std::uint32_t end) {
  const auto form = jsonFormOf(script);
  if (!form) return;
  jsonReferences_.clear();
  readJsonStrings(decode(begin, end, TextForm::rawText), *form, jsonReferences_);
  for (const JsonReference& reference : jsonReferences_) {
    Found string = found;
    string.kind = reference.kind;
    appendDecoded(string, Slot::json, reference.span);
  }
}

template <typename Reader>
void PartReader::readList(Slot slot, const Found& found, std::uint32_t begin, std::uint32_t end) {
  const std::string_view raw = text_.text().substr(begin, end - begin);
  if (hasReference(raw)) {
    Reader reader(decode(begin, end, TextForm::attributeValue));
    while (const auto item = reader.next()) appendDecoded(found, slot, *item);
    return;
  }
  // What delimits the items is ASCII, and stands for itself in every encoding that is read as it
  // is.
  Reader reader(raw);
  while (const auto item = reader.next()) {
    append(found, slot, text_.toPage(begin + item->begin, begin + item->end));
  }
}

std::string_view PartReader::decode(std::uint32_t begin, std::uint32_t end, TextForm form) {
  page_.noteBytes(text_.text().substr(begin, end - begin));
  decoded_.start(text_.text());
  appendPiece(decoded_, text_.text(), begin, end, form, text_.encoding());
  return decoded_.text();
}

void PartReader::appendDecoded(const Found& found, Slot slot, Span inDecoded) {
  append(found, slot, text_.toPage(decoded_.rawSpan(inDecoded)));
}

}  // namespace pagescan::internal
