#include "page/values.h"

#include <algorithm>
#include <utility>

#include "base/byte_class.h"
#include "base/near_vector.h"
#include "page/json_strings.h"
#include "page/reference_ids.h"
#include "page/style_text.h"

namespace pagescan::internal {
namespace {

bool isCss(Slot slot) {
  return slot == Slot::cssUrl || slot == Slot::cssString;
}

constexpr ByteClass kDecoded =
    ByteClass::range('\x80', '\xFF') | ByteClass::of("&\r\\") | ByteClass::range('\0', '\0');

const StoredValue* storedValue(const std::vector<StoredValue>& values, const Reference& reference) {
  const std::pair wanted(reference.span.begin, reference.tag);
  const auto found = std::lower_bound(
      values.begin(), values.end(), wanted,
      [](const StoredValue& a, const auto& b) { return std::pair(a.begin, a.tag) < b; });
  return found == values.end() ? nullptr : &*found;
}

}  // namespace

// A vector at a time; the last one may hold bytes that were looked at before.
bool isPlainValue(std::string_view raw) {
  using Vector = NearVector;
  const std::size_t size = raw.size();
  if (size < Vector::kWidth) {
    return std::none_of(raw.begin(), raw.end(), [](char c) { return kDecoded.contains(c); });
  }
  auto decoded = Vector::fill(0);
  const auto take = [&](const char* at) {
    const auto bytes = Vector::load(at);
    const auto is = [bytes](char c) { return Vector::equal(bytes, Vector::fill(c)); };
    decoded = Vector::either(decoded, Vector::either(bytes, Vector::either(is('&'), is('\r'))));
    decoded = Vector::either(decoded, Vector::either(is('\\'), is('\0')));
  };
  for (std::size_t at = 0; at + Vector::kWidth < size; at += Vector::kWidth) take(raw.data() + at);
  take(raw.data() + size - Vector::kWidth);
  return Vector::mask(decoded) == 0;  // the top bits: of each byte found, and of those above ASCII
}

bool isOfSvgStyle(const Reference& reference) {
  return reference.attribute == kUnknownName &&
         reference.element == elementId(Namespace::svg, id(Element::style));
}

std::string_view writtenAt(const PageReading& page, Span span) {
  const TextLayer& layer = *page.text;
  const std::size_t begin = layer.fromPage(span.begin);
  return layer.text().substr(begin, layer.fromPage(span.end) - begin);
}

void ValueReader::decodeSrcdocs(std::uint32_t parent, std::string_view& text, Encoding& encoding) {
  for (int i = 0; i < page_.documents.of(parent).srcdocs; ++i) {
    text = decoded(text, [&](std::string_view raw, DecodedText& result) {
      decodeAttributeValue(raw, encoding, result);
    });
    encoding = Encoding::utf8;
  }
}

std::string_view ValueReader::readMarkup(Span span, std::uint32_t parent) {
  std::string_view text = writtenAt(page_, span);
  Encoding encoding = page_.text->encoding();
  decodeSrcdocs(parent, text, encoding);
  return decoded(text, [&](std::string_view raw, DecodedText& result) {
    decodeText(raw, TextForm::rawText, encoding, result);
  });
}

std::string_view ValueReader::read(const Reference& reference) {
  if (isOfSvgStyle(reference)) {
    const StoredValue* const stored = storedValue(page_.values, reference);
    return stored == nullptr ? std::string_view() : stored->value;
  }
  std::string_view text = writtenAt(page_, reference.span);
  if (isPlainValue(text)) return text;
  Encoding encoding = page_.text->encoding();
  decodeSrcdocs(reference.parent, text, encoding);
  const bool isAttribute = reference.attribute != kUnknownName;
  text = decoded(text, [&](std::string_view raw, DecodedText& result) {
    decodeText(raw, isAttribute ? TextForm::attributeValue : TextForm::rawText, encoding, result);
  });
  if (isCss(reference.slot)) {
    return decoded(text, [&](std::string_view raw, DecodedText& result) {
      decodeCssValue(raw, reference.slot, result);
    });
  }
  return reference.slot == Slot::json ? decoded(text, decodeJsonString) : text;
}

}  // namespace pagescan::internal
