// The public face of a style sheet's reading.
#include "pagescan/style_sheet.h"

#include <limits>
#include <utility>

#include "encoding/sniffing.h"
#include "page/page_state.h"
#include "page/resolving.h"
#include "page/style_text.h"
#include "page/values.h"

namespace pagescan {
namespace {

using internal::Encoding;

// Source   CSS Syntax 3, 3.2 "The input byte stream"
internal::KnownEncoding encodingOfSheet(std::string_view bytes, std::string_view charset) {
  if (const auto bom = internal::bomOf(bytes)) return {bom->encoding, true, bom->length};
  if (const auto named = internal::encodingForLabel(charset)) return {*named, true, 0};
  return {internal::encodingFromCharsetRule(bytes).value_or(Encoding::utf8), true, 0};
}

}  // namespace

StyleSheet::StyleSheet(std::string_view bytes, const StyleSheetOptions& options)
    : state_(std::make_unique<State>(bytes, options)) {
  using namespace internal;
  PageReading& reading = state_->reading;
  if (!error().empty()) bytes = {};
  const KnownEncoding known = encodingOfSheet(bytes, options.charset);
  reading.encoding = known.encoding;
  if (known.encoding == Encoding::replacement) bytes = {};
  reading.text =
      std::make_unique<TextLayer>(bytes, std::min(known.bomLength, bytes.size()), known.encoding);
  DecodedText css;
  decodeText(reading.text->text(), TextForm::rawText, reading.text->encoding(), css);
  std::vector<StyleReference> found;
  readStyle(css.text(), StyleForm::sheet, found);
  state_->references.reserve(found.size());
  for (const StyleReference& reference : found) {
    const Span inPage = reading.text->toPage(css.rawSpan(reference.span));
    state_->references.push_back(
        Reference{inPage, 0, kNoParent, 0, 0, reference.kind, reference.slot, reference.flags});
  }
}

StyleSheet::StyleSheet(StyleSheet&&) noexcept = default;
StyleSheet& StyleSheet::operator=(StyleSheet&&) noexcept = default;
StyleSheet::~StyleSheet() = default;

std::string_view StyleSheet::error() const {
  const bool isTooLarge = state_->bytes.size() > std::numeric_limits<std::uint32_t>::max();
  return isTooLarge ? "the style sheet has more than 4294967295 bytes" : "";
}

std::string_view StyleSheet::bytes() const {
  return state_->bytes;
}

const std::vector<Reference>& StyleSheet::references() const {
  return state_->references;
}

std::string_view StyleSheet::raw(const Reference& reference) const {
  return state_->bytes.substr(reference.span.begin, reference.span.end - reference.span.begin);
}

std::string StyleSheet::value(const Reference& reference) const {
  return std::string(internal::ValueReader(state_->reading).read(reference));
}

void StyleSheet::valueInto(const Reference& reference, std::string& result) const {
  result = internal::ValueReader(state_->reading).read(reference);
}

std::optional<std::string> StyleSheet::url(const Reference& reference) const {
  std::string result;
  if (!urlInto(reference, result)) return std::nullopt;
  return result;
}

bool StyleSheet::urlInto(const Reference& reference, std::string& result) const {
  if (internal::resolveReference(state_->reading, reference, result)) return true;
  result.clear();
  return false;
}

std::string_view StyleSheet::encoding() const {
  return internal::nameOf(state_->reading.encoding);
}

}  // namespace pagescan
