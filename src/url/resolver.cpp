#include "url/resolver.h"

#include "url/parser.h"
#include "url/plain_links.h"

namespace pagescan::internal {

Encoding queryEncodingForLabel(std::string_view label) {
  if (label == "UTF-8") return Encoding::utf8;
  return outputEncodingOf(encodingForLabel(label).value_or(Encoding::utf8));
}

bool resolveInto(std::string& out, std::string_view url, const Base& base, Encoding queryEncoding) {
  if (PlainLinks(base).resolve(out, url)) return true;
  queryEncoding = outputEncodingOf(queryEncoding);
  UrlOffsets at;
  if (base.url() == nullptr) return parseUrl(out, at, url, nullptr, queryEncoding);
  const UrlView view{base.url()->href(), base.url()->offsets()};
  return parseUrl(out, at, url, &view, queryEncoding);
}

}  // namespace pagescan::internal
