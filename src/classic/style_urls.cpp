#include "classic/style_urls.h"

#include "base/byte_class.h"
#include "rw/rwbounds.h"
#include "rw/rwcstring.h"

namespace pagescan::internal {
namespace {

constexpr ByteClass kBeforeProperty = kHtmlWhiteSpace | ByteClass::of(";{");
constexpr std::string_view kComment = "/*";
constexpr std::string_view kCommentEnd = "*/";
constexpr std::string_view kUrl = "url(";
constexpr char kQuote = '"';

std::string_view strip(std::string_view text, char byte) {
  const std::size_t first = text.find_first_not_of(byte);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(byte) - first + 1);
}

}  // namespace

StyleUrlScanner::StyleUrlScanner(std::string_view css)
    : begin_(css.data()),
      end_(begin_ + css.size()),
      at_(begin_),
      comments_(end_, TextFinder(kComment)),
      commentEnds_(end_, TextFinder(kCommentEnd)),
      imports_(end_, TextFinder("@import")),
      urls_(end_, TextFinder(kUrl)),
      quotes_(end_, ByteFinder(kQuote)),
      parentheses_(end_, ByteFinder(')')),
      closingQuotes_(end_, ByteFinder(kQuote)),
      semicolons_(end_, ByteFinder(';')),
      firstColon_(findByte(begin_, end_, ':')),
      firstColonAfterStart_(findByte(findFirstOf(begin_, end_, kBeforeProperty), end_, ':')) {}

bool StyleUrlScanner::next(StyleUrl& url) {
  Step result = Step::again;
  while (result == Step::again) result = step(url);
  return result == Step::found;
}

// A place that was not found is the end, which lies after every place that was.
StyleUrlScanner::Step StyleUrlScanner::step(StyleUrl& url) {
  const char* comment = comments_.from(at_);
  const char* import = imports_.from(at_);
  const Token token = findToken();
  if (comment < import && comment < token.begin) return passComment(comment);
  if (token.urlBegin == end_ || token.urlEnd == end_) return Step::stop;
  return import < token.begin ? takeImport(import, token, url) : takeUrl(token, url);
}

// Any "url(" in the rest of the text goes before a quote.
StyleUrlScanner::Token StyleUrlScanner::findToken() {
  const char* begin = urls_.from(at_);
  if (begin != end_) {
    const char* urlBegin = begin + kUrl.size();
    return {begin, urlBegin, parentheses_.from(urlBegin)};
  }
  begin = quotes_.from(at_);
  if (begin == end_) return {end_, end_, end_};
  return {begin, begin + 1, closingQuotes_.from(begin + 1)};
}

// The end is searched from the place of the scan: a stray one before the comment makes its
// opening merely skipped.
StyleUrlScanner::Step StyleUrlScanner::passComment(const char* comment) {
  const char* commentEnd = commentEnds_.from(at_);
  if (commentEnd == end_) return Step::stop;
  at_ = commentEnd > comment ? commentEnd + kCommentEnd.size() : comment + kComment.size();
  return Step::again;
}

// Only the first URL after an @import belongs to it, and only before its ";".
StyleUrlScanner::Step StyleUrlScanner::takeImport(const char* import, const Token& token,
                                                  StyleUrl& url) {
  const char* semicolon = semicolons_.from(import);
  if (semicolon == end_) return Step::stop;
  at_ = semicolon + 1;
  if (token.urlEnd > semicolon) return Step::again;
  url = urlOf(token);
  return url.text.empty() ? Step::again : Step::found;
}

// A mere fragment is no resource.
StyleUrlScanner::Step StyleUrlScanner::takeUrl(const Token& token, StyleUrl& url) {
  checkProperty(token.urlBegin);
  at_ = token.urlEnd + 1;
  url = urlOf(token);
  return url.text.empty() || url.text.front() == '#' ? Step::again : Step::found;
}

// The name before the last ":" must begin after some byte that ends what came before. The
// last ":" lies after such a byte just when any does.
void StyleUrlScanner::checkProperty(const char* urlBegin) const {
  const bool hasName = firstColon_ < urlBegin;
  const bool hasStart = firstColonAfterStart_ < urlBegin;
  if (hasName && !hasStart) throw RWBoundsErr(RWCString::npos, 0);
}

StyleUrl StyleUrlScanner::urlOf(const Token& token) const {
  const std::string_view raw(token.urlBegin,
                             static_cast<std::size_t>(token.urlEnd - token.urlBegin));
  const auto offset = static_cast<std::size_t>(token.urlBegin - begin_);
  const char first = *token.urlBegin;
  if (first != '"' && first != '\'') return {raw, offset};
  return {strip(raw, first), offset + 1};
}

}  // namespace pagescan::internal
