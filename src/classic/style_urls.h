// Finds the URLs that style text pulls in: url(...), the targets of @import and, where no "url("
// follows, double-quoted strings.
#ifndef PAGESCAN_STYLE_URLS_H
#define PAGESCAN_STYLE_URLS_H

#include <string_view>

#include "base/forward_search.h"

namespace pagescan::internal {

struct StyleUrl {
  std::string_view text;  // a single kind of quotes around it removed, nothing else
  std::size_t offset;
};

// Reads a text from left to right, keeping the place of each token until the scan passes it: the
// cost is linear in the text for all URLs together.
class StyleUrlScanner {
 public:
  // `css` must outlive the scanner.
  explicit StyleUrlScanner(std::string_view css);

  // The next URL that is to be recorded; false at the end of the scan.
  // Fails   RWBoundsErr at a url(...) whose property's name begins the text.
  bool next(StyleUrl& url);

 private:
  // What opens a URL: "url(" or a double quote.
  struct Token {
    const char* begin;
    const char* urlBegin;
    const char* urlEnd;
  };

  enum class Step { again, found, stop };

  Step step(StyleUrl& url);
  Step passComment(const char* comment);
  Token findToken();
  Step takeImport(const char* import, const Token& token, StyleUrl& url);
  Step takeUrl(const Token& token, StyleUrl& url);
  void checkProperty(const char* urlBegin) const;
  StyleUrl urlOf(const Token& token) const;

  const char* begin_;
  const char* end_;
  const char* at_;
  ForwardTextSearch comments_;
  ForwardTextSearch commentEnds_;
  ForwardTextSearch imports_;
  ForwardTextSearch urls_;
  ForwardByteSearch quotes_;
  ForwardByteSearch parentheses_;
  ForwardByteSearch closingQuotes_;
  ForwardByteSearch semicolons_;
  const char* firstColon_;
  const char* firstColonAfterStart_;  // after the first byte that a property can begin after
};

}  // namespace pagescan::internal

#endif
