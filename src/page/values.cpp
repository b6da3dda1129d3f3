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

std::string_view ValueReader::decodedAt(Span span, TextForm form) {
  const TextLayer& layer = *page_.text;
  const std::string_view written = writtenAt(page_, span);
  const auto begin = static_cast<std::size_t>(written.data() - layer.text().data());
  value_.clear();
  value_.reserve(written.size());
  appendTextOf(value_, layer.text(), begin, begin + written.size(), form, layer.encoding());
  return value_;
}

// The layers of srcdoc attributes but for the first one, which is that of the page.
void ValueReader::decodeSrcdocs(int srcdocs, std::string_view& text) {
  for (int i = 1; i < srcdocs; ++i) {
    text = decoded(text, [&](std::string_view raw, DecodedText& result) {
      decodeAttributeValue(raw, Encoding::utf8, result);
    });
  }
}

std::string_view ValueReader::readText(Span span, std::uint32_t parent, TextForm form) {
  const int srcdocs = page_.documents.of(parent).srcdocs;
  if (srcdocs == 0) return decodedAt(span, form);
  std::string_view text = decodedAt(span, TextForm::attributeValue);
  decodeSrcdocs(srcdocs, text);
  return decoded(text, [&](std::string_view raw, DecodedText& result) {
    decodeText(raw, form, Encoding::utf8, result);
  });
}

std::string_view ValueReader::readMarkup(Span span, std::uint32_t parent) {
  return readText(span, parent, TextForm::rawText);
}

std::string_view ValueReader::read(const Reference& reference) {
  if (isOfSvgStyle(reference)) {
    const StoredValue* const stored = storedValue(page_.values, reference);
    return stored == nullptr ? std::string_view() : stored->value;
  }
  const std::string_view written = writtenAt(page_, reference.span);
  if (isPlainValue(written)) return written;
  const bool isAttribute = reference.attribute != kUnknownName;
  const std::string_view text = readText(
      reference.span, reference.parent, isAttribute ? TextForm::attributeValue : TextForm::rawText);
  if (isCss(reference.slot)) {
    return decoded(text, [&](std::string_view raw, DecodedText& result) {
      decodeCssValue(raw, reference.slot, result);
    });
  }
  return reference.slot == Slot::json ? decoded(text, decodeJsonString) : text;
}

}  // namespace pagescan::internal
