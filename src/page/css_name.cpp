#include "page/css_name.h"

#include <array>

#include "base/search.h"
#include "page/css_characters.h"

namespace pagescan::internal {
namespace {

struct KnownName {
  std::string_view text;
  CssName name;
};

constexpr KnownName kKnownNames[] = {
    {"url", CssName::url},
    {"src", CssName::src},
    {"image-set", CssName::imageSet},
    {"-webkit-image-set", CssName::imageSet},
    {"supports", CssName::supports},
    {"import", CssName::import},
    {"namespace", CssName::nameSpace},
    {"charset", CssName::charset},
    {"layer", CssName::layer},
};

constexpr std::string_view kWebkit = "-webkit-";
constexpr std::string_view kCdo = "<!--";

// The first characters of a name in lower case; those above ASCII as one byte of no known name.
class NameBeginning {
 public:
  void add(char32_t character) {
    if (size_ == text_.size()) return;
    text_[size_++] = character < 0x80 ? toLower(static_cast<char>(character)) : '\x80';
  }

  CssName name() const {
    const std::string_view text(text_.data(), size_);
    if (text.substr(0, 2) == "--") return CssName::customProperty;
    for (const KnownName& known : kKnownNames) {
      if (known.text == text) return known.name;
    }
    return CssName::other;
  }

 private:
  std::array<char, 18> text_{};  // one more than the longest
  std::size_t size_ = 0;
};

// Whether a token begins at `at`, where a name does: what ends before is no part of it. (A hash and
// the name of a rule begin with their "#" and "@".)
bool isTokenBegin(std::string_view css, std::size_t at, std::size_t floor) {
  if (at == floor) return true;
  if (css[at - 1] == '#' || css[at - 1] == '@') return false;
  if (cssNameCharacterLengthBefore(css, at, floor) == 0) return true;
  return at - floor >= kCdo.size() && css.substr(at - kCdo.size(), kCdo.size()) == kCdo;
}

KnownName functionEndingWith(char last) {
  switch (toLower(last)) {
    case 'l':
      return {"url", CssName::url};
    case 'c':
      return {"src", CssName::src};
    case 't':
      return {"image-set", CssName::imageSet};
    case 's':
      return {"supports", CssName::supports};
    default:
      return {"", CssName::other};
  }
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() &&
         equalsIgnoringCase(text.substr(text.size() - end.size()), end);
}

}  // namespace

CssName readCssName(std::string_view css, std::size_t& at) {
  NameBeginning beginning;
  for (;;) {
    if (at < css.size() && css[at] == '\\' && isCssEscape(css, at)) {
      const CssEscape escape = readCssEscape(css, at);
      beginning.add(escape.character);
      at += escape.length;
      continue;
    }
    const std::size_t length = cssNameCharacterLength(css, at);
    if (length == 0) return beginning.name();
    beginning.add(toByte(css[at]));
    at += length;
  }
}

CssName cssFunctionBefore(std::string_view css, std::size_t at, std::size_t floor) {
  if (at == floor) return CssName::other;
  const KnownName function = functionEndingWith(css[at - 1]);
  if (function.name == CssName::other) return CssName::other;
  std::string_view before = css.substr(floor, at - floor);
  if (!endsWith(before, function.text)) return CssName::other;
  before.remove_suffix(function.text.size());
  if (function.name == CssName::imageSet && endsWith(before, kWebkit)) {
    before.remove_suffix(kWebkit.size());
  }
  return isTokenBegin(css, floor + before.size(), floor) ? function.name : CssName::other;
}

std::size_t cssNameBegin(std::string_view css, std::size_t at, std::size_t floor) {
  std::size_t begin = at;
  while (const std::size_t length = cssNameCharacterLengthBefore(css, begin, floor)) {
    begin -= length;
  }
  // The hyphens of "<!--" are no part of a name.
  const bool followsCdo = begin - floor >= 2 && css.substr(begin - 2, kCdo.size()) == kCdo;
  return followsCdo && begin + 2 <= at ? begin + 2 : begin;
}

}  // namespace pagescan::internal
