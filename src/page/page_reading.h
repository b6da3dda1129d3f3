// What the reading of a page finds, and what the parts of a page share while they are read.
#ifndef PAGESCAN_PAGE_PAGE_READING_H
#define PAGESCAN_PAGE_PAGE_READING_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "encoding/encoding.h"
#include "page/documents.h"
#include "page/places_table.h"
#include "page/reference_list.h"
#include "page/text_layer.h"
#include "pagescan/page.h"

namespace pagescan::internal {

// The value of a reference whose bytes do not tell it: CSS of an SVG style element, which may be
// split by markup and stand in CDATA sections.
struct StoredValue {
  std::uint32_t begin;  // Reference::span.begin
  std::uint32_t tag;    // Reference::tag
  std::string value;
};

struct PageReading {
  PageReading(std::string_view url, Profiles wanted, const Places::Table* ownPlaces)
      : documents(url), profiles(wanted), own(ownPlaces) {}

  // Says that the meaning of some bytes was looked at.
  void noteBytes(std::string_view bytes);

  std::unique_ptr<TextLayer> text;  // the page's own
  ReferenceList references;
  Documents documents;
  std::vector<StoredValue> values;

  Profiles profiles;
  const Places::Table* own;

  // The encoding of the page as far as it is known: the first meta of the head that names one
  // settles it. The page must be read again where something was read before that depends on it.
  Encoding encoding = Encoding::windows1252;
  bool encodingIsSettled = false;
  bool dependsOnEncoding = false;
  bool mustReadAgain = false;
};

// One text with markup: the page, a noscript fragment, or the document of a srcdoc.
struct Part {
  Span range;                  // of the text of its layer
  std::uint32_t document = 0;  // in PageReading::documents
  Flags flags = 0;             // of the place where it stands
  bool scripting = true;
  bool isFragment = false;
  bool isQuirky = false;  // of a fragment: the mode of the document around it
};

// Nested parts are read to this depth. Each reading of a srcdoc decodes all that is nested deeper,
// so the limit keeps the cost linear, and the C++ stack small.
inline constexpr int kMaxDepth = 32;

// The encoding of a page, and whether a meta in it has no say.
// charset  a label from outside the page
struct KnownEncoding {
  Encoding encoding;
  bool isSettled;
  std::size_t bomLength;
};
KnownEncoding encodingOf(std::string_view bytes, std::string_view charset);

// Reads a page.
// bytes    at most 2^32-1; must outlive the result
std::unique_ptr<PageReading> readPage(std::string_view bytes, const PageOptions& options);

}  // namespace pagescan::internal

#endif
