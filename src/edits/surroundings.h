// What stands around the value of a reference, layer by layer, and how it is delimited there.
//
//   page     <iframe srcdoc="&lt;p style='a:url(&quot;1&quot;)'>">
//   srcdoc   <p style='a:url("1")'>                     delimited by '
//                                                       the srcdoc attribute: by "
#ifndef PAGESCAN_EDITS_SURROUNDINGS_H
#define PAGESCAN_EDITS_SURROUNDINGS_H

#include <cstdint>
#include <memory>
#include <vector>

#include "page/page_reading.h"
#include "page/text_layer.h"
#include "pagescan/page.h"

namespace pagescan::internal {

// How the value of an attribute is delimited.
enum class Quote : std::uint8_t {
  doubled,  // a="x"
  single,   // a='x'
  bare,     // a=x
  absent,   // a
};

// What holds the value itself, inside of all srcdoc attributes.
enum class Holder : std::uint8_t {
  attribute,
  rawText,  // the text of an HTML element
  svgText,  // the text of an SVG style element
  sheet,    // a style sheet of its own
};

struct Surroundings {
  Holder holder;
  std::vector<Quote> quotes;  // of the attributes around, from the inside out
};

// Finds the surroundings of one reference after the other.
class SurroundingsFinder {
 public:
  // The page must outlive it.
  explicit SurroundingsFinder(const PageReading& page);

  // reference   of the page; they come in the order of the page, so that each srcdoc attribute is
  //             decoded once
  // Cost        the reference's tag, and the logarithm of the page for each layer
  Surroundings find(const Reference& reference);

 private:
  // The page, or the document of a srcdoc.
  struct Layer {
    std::uint32_t owner;  // its index in Documents
    Quote quote;          // of the srcdoc attribute
    const TextLayer* text;
    std::unique_ptr<TextLayer> decoded;  // of a srcdoc
  };
  // An attribute that was found.
  struct Attribute {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    Quote quote = Quote::absent;
  };

  void enter(const Document& document);
  Attribute attributeOf(const Layer& layer, std::uint32_t tag, NameId name) const;

  const PageReading& page_;
  std::vector<Layer> layers_;  // from the page to the document of the last reference
  // The last question and its answer: lists have many references in one attribute.
  std::uint32_t tag_ = kNoParent;
  NameId name_ = kUnknownName;
  Quote quote_ = Quote::absent;
};

}  // namespace pagescan::internal

#endif
