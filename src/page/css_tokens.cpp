#include "page/css_tokens.h"

#include <algorithm>

#include "base/kernels.h"
#include "page/css_characters.h"
#include "page/white_space.h"

namespace pagescan::internal {
namespace {

std::size_t find(std::string_view css, std::size_t at,
                 const char* (*search)(const char* begin, const char* end)) {
  const char* const text = css.data();
  return static_cast<std::size_t>(search(text + at, text + css.size()) - text);
}

std::size_t badUrlEnd(std::string_view css, std::size_t at) {
  constexpr ByteClass kStops = ByteClass::of(")\\");
  for (;;) {
    at = findIn(css, at, kStops);
    if (at == css.size()) return at;
    if (css[at] == ')') return at + 1;
    at += isCssEscape(css, at) ? readCssEscape(css, at).length : 1;
  }
}

}  // namespace

// Of an escape, the first character alone is passed: its further digits end no string. The new line
// after them belongs to it, which is looked into when one is met.
CssContentEnd readCssString(std::string_view css, std::size_t begin) {
  const char quote = css[begin - 1];
  std::size_t escape = css.size();  // the last one
  for (std::size_t at = begin;;) {
    at = find(css, at, kernels().findStringMark);
    if (at == css.size()) return {at, at};
    if (css[at] == quote) return {at, at + 1};
    if (css[at] == '\\') {
      escape = at;
      at += isCssEscape(css, at) ? std::min<std::size_t>(2, css.size() - at)
                                 : 1 + cssNewLineLength(css, at + 1);
    } else if (kCssNewLine.contains(css[at])) {
      const std::size_t escapeEnd =
          escape < at ? escape + readCssEscape(css, escape).length : std::size_t{0};
      if (escapeEnd <= at) return {CssContentEnd::kBad, at};
      at = escapeEnd;
    } else {
      ++at;
    }
  }
}

CssContentEnd readCssUrl(std::string_view css, std::size_t begin) {
  std::size_t end = begin;
  for (;;) {
    end = find(css, end, kernels().findUrlMark);
    if (end == css.size() || css[end] != '\\' || !isCssEscape(css, end)) break;
    end += readCssEscape(css, end).length;
  }
  const std::size_t at = skipAll(css, end, kCssWhiteSpace);
  if (at == css.size()) return {end, at};
  if (css[at] == ')') return {end, at + 1};
  return {CssContentEnd::kBad, badUrlEnd(css, at)};
}

// Looks for the "/" of the end: comments are full of stars.
std::size_t cssCommentEnd(std::string_view css, std::size_t at) {
  constexpr std::size_t kShortest = 4;
  std::size_t end = at + kShortest - 1;
  do {
    end = css.find('/', end);
    if (end == std::string_view::npos) return css.size();
  } while (css[end++ - 1] != '*');
  return end;
}

std::size_t cssBlankEnd(std::string_view css, std::size_t at) {
  const auto isAt = [&](std::string_view text) { return css.substr(at, text.size()) == text; };
  for (;;) {
    at = skipAll(css, at, kCssWhiteSpace);
    if (isAt("/*")) {
      at = cssCommentEnd(css, at);
    } else if (isAt("<!--")) {
      at += 4;
    } else if (isAt("-->")) {
      at += 3;
    } else {
      return at;
    }
  }
}

}  // namespace pagescan::internal
