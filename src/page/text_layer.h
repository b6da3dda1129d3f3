// Texts inside texts, and where their bytes stand in the page.
//
//   page     <iframe srcdoc="&lt;img src=&quot;a&amp;amp;b&quot;>">
//   srcdoc   <img src="a&amp;b">
//
// A layer is the page, or the decoded value of a srcdoc in the layer around it. Offsets count bytes
// of a layer's own text, but for those in the page. Constant once it is built.
#ifndef PAGESCAN_PAGE_TEXT_LAYER_H
#define PAGESCAN_PAGE_TEXT_LAYER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "encoding/encoding.h"
#include "encoding/mapped_text.h"
#include "page/decoded_text.h"
#include "pagescan/page.h"

namespace pagescan::internal {

class TextLayer {
 public:
  // A page from `begin` on, which must outlive the layer. Where bytes of its encoding cannot be
  // read as they are, the text is converted to UTF-8.
  TextLayer(std::string_view page, std::size_t begin, Encoding encoding);

  // The document of a srcdoc whose value is the bytes [begin, end) of the text around it, which
  // must outlive it.
  TextLayer(const TextLayer& outer, std::size_t begin, std::size_t end);

  TextLayer(const TextLayer&) = delete;
  TextLayer& operator=(const TextLayer&) = delete;

  std::string_view text() const { return text_; }

  // How text() is to be read.
  Encoding encoding() const { return encoding_; }

  // For a page that is read as it is, and turns out to be of another encoding of that kind.
  void setEncoding(Encoding encoding) { encoding_ = encoding; }

  // The bytes of the page that spell text()[begin, end); of an empty range the empty one after the
  // character before it.
  // Cost   a search in each layer that is not plain
  Span toPage(std::size_t begin, std::size_t end) const {
    if (!isPlain_) return throughLayers(begin, end);
    return {static_cast<std::uint32_t>(shift_ + begin), static_cast<std::uint32_t>(shift_ + end)};
  }
  Span toPage(Span span) const { return toPage(span.begin, span.end); }

  // Where in the page the character begins that holds text()[at].
  std::uint32_t beginInPage(std::size_t at) const {
    return isPlain_ ? static_cast<std::uint32_t>(shift_ + at) : throughLayers(at);
  }

  // Where in text() the character stands that begins at an offset of the page, of the page's layer
  // alone.
  // Cost   logarithmic in the page
  std::size_t fromPage(std::size_t offset) const;

 private:
  Span throughLayers(std::size_t begin, std::size_t end) const;
  std::uint32_t throughLayers(std::size_t at) const;
  std::size_t outerBegin(std::size_t at) const;
  std::size_t outerEnd(std::size_t at) const;

  const TextLayer* outer_ = nullptr;
  bool isPlain_;       // the page as it is,
  std::size_t shift_;  // from here on
  Encoding encoding_;
  std::optional<MappedText> converted_;
  DecodedText decoded_;
  std::string_view text_;
};

}  // namespace pagescan::internal

#endif
