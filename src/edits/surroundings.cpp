#include "edits/surroundings.h"

#include <algorithm>

#include "page/names.h"
#include "page/places_table.h"
#include "page/reference_ids.h"
#include "page/tag_scanner.h"

namespace pagescan::internal {
namespace {

// Where in the text of a layer the tag begins that begins at an offset of the page: the first place
// that stems from there.
std::size_t tagInLayer(const TextLayer& layer, std::uint32_t tag) {
  std::size_t begin = 0;
  std::size_t end = layer.text().size();
  while (begin < end) {
    const std::size_t middle = begin + (end - begin) / 2;
    if (layer.beginInPage(middle) < tag) {
      begin = middle + 1;
    } else {
      end = middle;
    }
  }
  return begin;
}

Quote quoteBefore(const char* value, const char* nameEnd) {
  if (value == nameEnd) return Quote::absent;
  if (value[-1] == '"') return Quote::doubled;
  return value[-1] == '\'' ? Quote::single : Quote::bare;
}

}  // namespace

SurroundingsFinder::SurroundingsFinder(const PageReading& page) : page_(page) {
  layers_.push_back({0, Quote::absent, page.text.get(), nullptr});
}

// The first attribute of that name is the one that counts.
SurroundingsFinder::Attribute SurroundingsFinder::attributeOf(const Layer& layer, std::uint32_t tag,
                                                              NameId name) const {
  const std::string_view text = layer.text->text();
  const std::size_t begin = tagInLayer(*layer.text, tag);
  if (begin == text.size()) return {};
  const char* const end = text.data() + text.size();
  const ExtraNames* const extras = page_.own == nullptr ? nullptr : &page_.own->attributes;
  Attribute found;
  bool isFound = false;
  const auto see = [&](const char* at, const NameKey& key, const char* value, const char* stop) {
    if (isFound) return;
    NameId seen = findAttribute(at, key);
    if (seen == kUnknownName && extras != nullptr) seen = extras->find({at, key.length});
    if (seen != name) return;
    isFound = true;
    found = {static_cast<std::uint32_t>(value - text.data()),
             static_cast<std::uint32_t>(stop - text.data()), quoteBefore(value, at + key.length)};
  };
  PlainBytes bytes(end);
  scanAttributes(scanTagName(text.data() + begin + 1, end).end, bytes, see);
  return found;
}

// Makes layers_ lead to the document. Those around it that are there already are used again.
void SurroundingsFinder::enter(const Document& document) {
  const Document& owner = page_.documents[document.owner];
  const auto isOpen = [&](const Layer& layer) { return layer.owner == document.owner; };
  const auto open = std::find_if(layers_.begin(), layers_.end(), isOpen);
  if (open != layers_.end()) {
    layers_.erase(open + 1, layers_.end());
    return;
  }
  enter(page_.documents[owner.outer]);
  const TextLayer& outer = *layers_.back().text;
  const Attribute srcdoc =
      attributeOf(layers_.back(), owner.parent, id(internal::Attribute::srcdoc));
  auto text = std::make_unique<TextLayer>(outer, srcdoc.begin, srcdoc.end);
  const TextLayer* const decoded = text.get();
  layers_.push_back({document.owner, srcdoc.quote, decoded, std::move(text)});
}

Surroundings SurroundingsFinder::find(const Reference& reference) {
  Surroundings result;
  enter(page_.documents.of(reference.parent));
  if (reference.attribute != kUnknownName) {
    if (reference.tag != tag_ || reference.attribute != name_) {
      quote_ = attributeOf(layers_.back(), reference.tag, reference.attribute).quote;
      tag_ = reference.tag;
      name_ = reference.attribute;
    }
    result.holder = Holder::attribute;
    result.quotes.push_back(quote_);
  } else {
    const bool isSvg = spaceOf(reference.element) == Namespace::svg;
    result.holder = isSvg ? Holder::svgText : Holder::rawText;
  }
  for (std::size_t i = layers_.size(); --i > 0;) result.quotes.push_back(layers_[i].quote);
  return result;
}

}  // namespace pagescan::internal
