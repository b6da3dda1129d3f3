// The states from the path on.
#include <algorithm>

#include "url/parser_states.h"
#include "url/percent_encoding.h"
#include "url/percent_sets.h"
#include "url/query.h"

namespace pagescan::internal {

using std::string_view;

// "Path start state".
bool Parser::pathStart() {
  if (!isSpecial() && (atEnd() || atQueryOrFragment())) return query();
  if (atSlash()) skip(1);
  return path();
}

std::size_t Parser::pathSegmentSize() const {
  static constexpr ByteClass kEnds = ByteClass::of("/?#");
  const auto end = std::find_if(rest_.begin(), rest_.end(), [this](char c) {
    return kEnds.contains(c) || (c == '\\' && isSpecial());
  });
  return static_cast<std::size_t>(end - rest_.begin());
}

// "Path state": after the slash before a segment.
bool Parser::path() {
  PathWriter writer = pathWriter();
  for (bool isLast = false; !isLast;) {
    const string_view segment = take(pathSegmentSize());
    isLast = !atSlash();
    writer.append(segment, isLast);
    if (!isLast) skip(1);
  }
  if (!hasHost() && string_view(out_).substr(at_.pathBegin, 2) == "//") {
    out_.insert(at_.pathBegin, "/.");
    at_.pathBegin += 2;
  }
  return query();
}

// "Opaque path state": spaces stay, but for one right before a query or fragment.
bool Parser::opaquePath() {
  writeNoHost();
  const string_view path = take(rest_.find_first_of("?#"));
  const bool endsInSpace = !atEnd() && !path.empty() && path.back() == ' ';
  appendPercentEncoded(out_, path.substr(0, path.size() - (endsInSpace ? 1 : 0)), kC0ControlSet);
  if (endsInSpace) out_ += "%20";
  return query();
}

// "Query state", where a query begins here.
bool Parser::query() {
  at_.queryBegin = out_.size();
  if (at('?')) {
    const string_view text = take(rest_.find('#')).substr(1);
    const bool isWebSocket = kind_ == SchemeKind::ws || kind_ == SchemeKind::wss;
    const Encoding encoding = isSpecial() && !isWebSocket ? queryEncoding_ : Encoding::utf8;
    out_ += '?';
    appendEncodedQuery(out_, text, isSpecial() ? kSpecialQuerySet : kQuerySet, encoding);
  }
  at_.fragmentBegin = out_.size();
  return fragment();
}

// "Fragment state", where a fragment begins here.
bool Parser::fragment() {
  if (at('#')) {
    out_ += '#';
    appendPercentEncoded(out_, rest_.substr(1), kFragmentSet);
  }
  return true;
}

}  // namespace pagescan::internal
