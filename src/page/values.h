// What the references of a page spell.
#ifndef PAGESCAN_PAGE_VALUES_H
#define PAGESCAN_PAGE_VALUES_H

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "page/decoded_text.h"
#include "page/page_reading.h"

namespace pagescan::internal {

// Decodes one value after another. Not for several threads at once, but several may read one page.
class ValueReader {
 public:
  // The reading must outlive it.
  explicit ValueReader(const PageReading& page) : page_(page) {}

  // The value in UTF-8, decoded by every layer. Valid until the next call, and while the page is.
  std::string_view read(const Reference& reference);

  // Markup of the document or fragment that stands in the tag at `parent`, in UTF-8: a part of the
  // page, decoded by the layers of srcdoc attributes alone. Valid as above.
  std::string_view readMarkup(Span span, std::uint32_t parent);

 private:
  // The text of the page's own layer at a span, decoded; in value_.
  std::string_view decodedAt(Span span, TextForm form);

  // What stands at a span in the document or fragment of `parent`.
  std::string_view readText(Span span, std::uint32_t parent, TextForm form);

  void decodeSrcdocs(int srcdocs, std::string_view& text);

  // Decodes `text` by decode(text, result) into the one of the two that it does not stand in. What
  // is its own decoding stays where it is.
  template <class Decode>
  std::string_view decoded(std::string_view text, const Decode& decode) {
    DecodedText& next = texts_[current_ ^ 1U];
    decode(text, next);
    const std::string_view result = next.text();
    const std::less_equal<const char*> notAfter;
    const bool isSame =
        notAfter(text.data(), result.data()) && notAfter(result.data(), text.data() + text.size());
    if (!isSame) current_ ^= 1U;
    return result;
  }

  const PageReading& page_;
  std::string value_;
  std::array<DecodedText, 2> texts_;
  unsigned current_ = 0;
};

// Whether bytes are their own value in a URL, whatever their layer: ASCII without what a layer
// decodes.
bool isPlainValue(std::string_view raw);

// Whether a reference stands in the text of an SVG style element: markup may split what it spells.
bool isOfSvgStyle(const Reference& reference);

// The text of the page's own layer at a span of the page.
std::string_view writtenAt(const PageReading& page, Span span);

}  // namespace pagescan::internal

#endif
