// Lists of URLs in an attribute value: between white space, or between commas.
//
// Values are decoded UTF-8 of at most 2^32-1 bytes; spans are byte offsets in them, half-open.
// A reader keeps a view of the value. Nothing allocates; reading a list to its end is linear.
#ifndef PAGESCAN_PAGE_URL_LISTS_H
#define PAGESCAN_PAGE_URL_LISTS_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "pagescan/page.h"

namespace pagescan::internal {

// The items of a list between ASCII white space ("ping", "itemtype").
// Source   Infra Standard, 4.6 "split on ASCII whitespace"
class UrlListReader {
 public:
  explicit UrlListReader(std::string_view value) : value_(value) {}

  // The next item, which is not empty; std::nullopt after the last one.
  std::optional<Span> next();

 private:
  std::string_view value_;
  std::size_t at_ = 0;
};

// The items of a list between commas, white space around each left out ("archive" of an applet).
class CommaListReader {
 public:
  explicit CommaListReader(std::string_view value) : value_(value) {}

  // The next item that is not empty; std::nullopt after the last one.
  std::optional<Span> next();

 private:
  std::string_view value_;
  std::size_t at_ = 0;
};

}  // namespace pagescan::internal

#endif
