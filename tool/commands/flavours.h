// The names that the command line has for the flavours of URL encoding.
#ifndef PAGESCAN_TOOL_FLAVOURS_H
#define PAGESCAN_TOOL_FLAVOURS_H

#include "zkurlencoding.h"

namespace pagescan::tool {

struct Flavour {
  const char* name;
  UrlEncoding::EncodingType type;
  const char* description;
};

// In the order in which the library tries them.
inline constexpr Flavour kFlavours[] = {
    {"none", UrlEncoding::eNone, "encodes nothing; decoding still turns + into a blank"},
    {"browser", UrlEncoding::eBrowser, "forms as browsers send them: blank +, keeps @*_-."},
    {"escape", UrlEncoding::eEscape, "escape(): blank %20, keeps @*_-.+/"},
    {"uri", UrlEncoding::eEscapeURI,
     "encodeURI(): keeps the delimiters of a URI, but not the comma"},
    {"uri-component", UrlEncoding::eEscapeURIComponent, "encodeURIComponent()"},
    {"browser-sign", UrlEncoding::eBrowserSign, "browser, with @ escaped"},
    {"chrome", UrlEncoding::eChrome, "Chrome's forms: blank +"},
    {"chrome94", UrlEncoding::eChrome94, "Chrome 94's queries: blank %20, keeps % itself"},
    {"siebel", UrlEncoding::eSiebel, "lower-case digits, blank %20, keeps !$_()+*',-."},
};

}  // namespace pagescan::tool

#endif
