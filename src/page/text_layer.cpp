#include "page/text_layer.h"

namespace pagescan::internal {

TextLayer::TextLayer(std::string_view page, std::size_t begin, Encoding encoding)
    : isPlain_(!needsConversion(encoding)), shift_(begin), encoding_(encoding) {
  if (isPlain_) {
    text_ = page.substr(begin);
    return;
  }
  converted_.emplace(page, encoding, begin);
  text_ = converted_->text();
  encoding_ = Encoding::utf8;
}

TextLayer::TextLayer(const TextLayer& outer, std::size_t begin, std::size_t end)
    : outer_(&outer), isPlain_(false), shift_(0), encoding_(Encoding::utf8) {
  decoded_.start(outer.text_);
  appendPiece(decoded_, outer.text_, begin, end, TextForm::attributeValue, outer.encoding_);
  text_ = decoded_.text();
}

std::size_t TextLayer::outerBegin(std::size_t at) const {
  if (isPlain_) return shift_ + at;
  return converted_ ? converted_->rawBegin(at) : decoded_.rawBegin(at);
}

std::size_t TextLayer::outerEnd(std::size_t at) const {
  if (isPlain_) return shift_ + at;
  return converted_ ? converted_->rawEnd(at) : decoded_.rawEnd(at);
}

Span TextLayer::throughLayers(std::size_t begin, std::size_t end) const {
  const bool isEmpty = begin == end;
  for (const TextLayer* layer = this; layer != nullptr; layer = layer->outer_) {
    end = layer->outerEnd(end);
    begin = isEmpty ? end : layer->outerBegin(begin);
  }
  return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

std::uint32_t TextLayer::throughLayers(std::size_t at) const {
  for (const TextLayer* layer = this; layer != nullptr; layer = layer->outer_) {
    at = layer->outerBegin(at);
  }
  return static_cast<std::uint32_t>(at);
}

std::size_t TextLayer::fromPage(std::size_t offset) const {
  return converted_ ? converted_->textAt(offset) : offset - shift_;
}

}  // namespace pagescan::internal
