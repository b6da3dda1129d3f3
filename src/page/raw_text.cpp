#include "page/raw_text.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "encoding/decoder.h"
#include "page/tag_scanner.h"

namespace pagescan::internal {

namespace {

const char* find(const char* begin, const char* end, char c) {
  const auto* found =
      static_cast<const char*>(std::memchr(begin, c, static_cast<std::size_t>(end - begin)));
  return found == nullptr ? end : found;
}

// Whether `name` stands at `at`, ASCII case ignored, and the name of a tag ends after it.
bool isTagName(const char* at, const char* end, std::string_view name) {
  if (static_cast<std::size_t>(end - at) <= name.size()) return false;
  for (const char c : name) {
    if (toLower(*at++) != toLower(c)) return false;
  }
  return kTagNameEnd.contains(*at);
}

bool isEndTag(const char* open, const char* end, std::string_view name) {
  return end - open > 2 && open[1] == '/' && isTagName(open + 2, end, name);
}

// After the first "-->" at or after `begin`, or `end`.
const char* dashesEnd(const char* begin, const char* end) {
  for (const char* at = begin;; ++at) {
    at = find(at, end, '>');
    if (at == end) return end;
    if (at - begin >= 2 && at[-1] == '-' && at[-2] == '-') return at + 1;
  }
}

}  // namespace

const char* rawTextEnd(const char* begin, const char* end, std::string_view name) {
  if (name.empty()) return end;
  for (const char* at = find(begin, end, '<'); at != end; at = find(at + 1, end, '<')) {
    if (isEndTag(at, end, name)) return at;
  }
  return end;
}

// From "<!--" to the next "-->" the script is escaped; there, "<script" makes it doubly escaped
// until "</script", and only outside of that an end tag is one.
const char* scriptEnd(const char* begin, const char* end, std::string_view name) {
  const char* escapedEnd = begin;  // not escaped at or after it
  bool isDouble = false;
  for (const char* at = find(begin, end, '<'); at != end; at = find(at + 1, end, '<')) {
    const bool isEscaped = at < escapedEnd;
    if (!isEscaped) isDouble = false;
    if (isDouble) {
      if (isEndTag(at, end, "script")) isDouble = false;
    } else if (!name.empty() && isEndTag(at, end, name)) {
      return at;
    } else if (isEscaped) {
      isDouble = isTagName(at + 1, end, "script");
    } else if (end - at >= 4 && std::memcmp(at, "<!--", 4) == 0) {
      escapedEnd = dashesEnd(at + 2, end);
    }
  }
  return end;
}

const char* commentEnd(const char* begin, const char* end) {
  if (begin != end && *begin == '>') return begin + 1;
  if (end - begin >= 2 && begin[0] == '-' && begin[1] == '>') return begin + 2;
  for (const char* at = find(begin, end, '>'); at != end; at = find(at + 1, end, '>')) {
    const char* dashes = at != begin && at[-1] == '!' ? at - 1 : at;
    if (dashes - begin >= 2 && dashes[-1] == '-' && dashes[-2] == '-') return at + 1;
  }
  return end;
}

const char* cdataEnd(const char* begin, const char* end, Encoding encoding) {
  constexpr std::string_view kClose = "]]>";
  std::string decoded;
  for (const char* from = begin;;) {
    const std::string_view left(from, static_cast<std::size_t>(end - from));
    const std::size_t close = left.find(kClose);
    if (close == std::string_view::npos) return end;
    decoded.clear();
    appendDecoded(decoded, left.substr(0, close + kClose.size()), encoding);
    if (decoded.ends_with(kClose)) return from + close;
    from += close + 1;  // a character ended there
  }
}

bool startsDoctype(std::string_view text) {
  constexpr std::string_view kStart = "<!doctype";
  return text.size() >= kStart.size() && std::equal(kStart.begin(), kStart.end(), text.begin(),
                                                    [](char a, char b) { return a == toLower(b); });
}

}  // namespace pagescan::internal
