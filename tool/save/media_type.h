// Media types of responses: what a Content-Type says, and the file extension that says the same.
#ifndef PAGESCAN_TOOL_SAVE_MEDIA_TYPE_H
#define PAGESCAN_TOOL_SAVE_MEDIA_TYPE_H

#include <string>
#include <string_view>

namespace pagescan::tool {

struct MediaType {
  std::string essence;  // "text/html", in lower case; empty when the header says none
  std::string charset;  // the label as given, only letters, digits and "-_.:+"; may be empty

  bool isPage() const { return essence == "text/html" || essence == "application/xhtml+xml"; }
  bool isStyleSheet() const { return essence == "text/css"; }
  bool isScript() const;

  // As a Content-Type: "text/html;charset=koi8-r". Nothing in it needs an escape in a URL.
  std::string text() const;
};

// What a Content-Type header says. Malformed parts count as not there.
MediaType mediaTypeOf(std::string_view contentType);

// The extension, without a dot, with which a browser takes a file for that type. Types that are
// not in our table keep the extension of the URL, unless a browser would take it for a page, a
// style sheet or a script: "bin", then. Only lower case letters and digits.
std::string extensionFor(const MediaType& type, std::string_view extensionOfUrl);

}  // namespace pagescan::tool

#endif
