// A serialised URL and where its components are, as the parser asks a base for them.
#ifndef PAGESCAN_URL_URL_VIEW_H
#define PAGESCAN_URL_URL_VIEW_H

#include <string_view>

#include "pagescan/url.h"
#include "url/scheme.h"

namespace pagescan::internal {

// Of a parsed URL; a view, which must not outlive it.
struct UrlView {
  std::string_view text;
  const UrlOffsets& at;
};

inline SchemeKind kindOf(const UrlView& url) {
  return schemeKindOf(url.text.substr(0, url.at.schemeEnd));
}

inline bool hasHost(const UrlView& url) {
  return url.at.hostBegin > url.at.schemeEnd + 1;
}

inline std::string_view pathOf(const UrlView& url) {
  return url.text.substr(url.at.pathBegin, url.at.queryBegin - url.at.pathBegin);
}

inline bool hasOpaquePath(const UrlView& url) {
  return !hasHost(url) && (pathOf(url).empty() || pathOf(url).front() != '/');
}

}  // namespace pagescan::internal

#endif
