#include "url/plain_links.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/byte_class.h"
#include "base/near_vector.h"
#include "url/percent_sets.h"
#include "url/scheme.h"

namespace pagescan::internal {
namespace {

using std::string_view;
using V = NearVector;

// Bytes that every part after the host keeps: those of visible ASCII that no percent-encode set of
// a path, query or fragment has, and no "\" or "|".
constexpr ByteClass kPlain = [] {
  constexpr ByteClass kChanged = kPathSet | kSpecialQuerySet | kFragmentSet;
  constexpr ByteClass kDelimiters = ByteClass::of("?#");
  ByteClass plain;
  for (int c = '!'; c <= '~'; ++c) {
    const char byte = static_cast<char>(c);
    if (!kChanged.contains(byte) || kDelimiters.contains(byte)) plain.add(byte);
  }
  ByteClass result;
  constexpr ByteClass kLeftOut = ByteClass::of("\\|");
  for (int c = '!'; c <= '~'; ++c) {
    const char byte = static_cast<char>(c);
    if (plain.contains(byte) && !kLeftOut.contains(byte)) result.add(byte);
  }
  return result;
}();

// The same by comparisons, which a vector makes for all its bytes at once.
V::Type notPlain(V::Type v) {
  const V::Type odd = V::either(v, V::fill(2));
  const V::Type low = V::less(v, V::fill('!'));  // and all beyond ASCII, which are negative
  const V::Type high = V::without(V::less(V::fill('z'), v), V::equal(v, V::fill('~')));
  const V::Type quotes = V::either(V::equal(v, V::fill('"')), V::equal(v, V::fill('\'')));
  const V::Type pairs = V::either(V::equal(odd, V::fill('>')), V::equal(odd, V::fill('^')));
  return V::either(V::either(V::either(low, high), V::either(quotes, pairs)),
                   V::equal(v, V::fill('`')));
}

// A segment that begins like this may be a dot segment.
constexpr bool mayBeginDots(char c) {
  return c == '.' || c == '%';
}

// Whether all bytes are plain and no "/" comes before what may be a dot segment.
bool isPlain(string_view url) {
  if (url.empty()) return true;
  if (!kPlain.contains(url[0])) return false;
  if (url.size() <= V::kWidth) {
    bool plain = true;
    for (std::size_t i = 1; i < url.size(); ++i) {
      plain = plain && kPlain.contains(url[i]) && !(url[i - 1] == '/' && mayBeginDots(url[i]));
    }
    return plain;
  }
  // Each byte but the first in one vector, the one before it in another; the last two overlap those
  // before them.
  const std::size_t last = url.size() - V::kWidth - 1;
  for (std::size_t i = 0;; i = std::min(i + V::kWidth, last)) {
    const V::Type before = V::load(url.data() + i), v = V::load(url.data() + i + 1);
    const V::Type dots = V::either(V::equal(v, V::fill('.')), V::equal(v, V::fill('%')));
    const V::Type segments = V::both(V::equal(before, V::fill('/')), dots);
    if (V::mask(V::either(notPlain(v), segments)) != 0) return false;
    if (i == last) return true;
  }
}

constexpr ByteClass kHostBytes = kLower | kDigits | ByteClass::of("-_.");

V::Type notHostByte(V::Type v) {
  const auto isBetween = [v](char first, char last) {
    return V::without(V::less(v, V::fill(static_cast<char>(last + 1))), V::less(v, V::fill(first)));
  };
  const V::Type low = V::without(isBetween('-', '9'), V::equal(v, V::fill('/')));
  const V::Type others = V::either(isBetween('a', 'z'), V::equal(v, V::fill('_')));
  return V::without(V::fill('\xFF'), V::either(low, others));
}

// Whether the text begins with a host that stays as it is, and a "/": a name in lower case whose
// last label begins with a letter, and so is no number.
bool beginsWithPlainHost(string_view text) {
  std::size_t label = 0, at = 0;
  for (; text.size() - at >= V::kWidth; at += V::kWidth) {
    const V::Type v = V::load(text.data() + at);
    const V::Mask others = V::mask(notHostByte(v));
    const V::Mask inHost = (others & -others) - 1;  // the bits before the first other byte
    const V::Mask dots = V::mask(V::equal(v, V::fill('.'))) & inHost;
    if (dots != 0) label = at + static_cast<std::size_t>(std::bit_width(dots));
    if (others == 0) continue;
    at += static_cast<std::size_t>(std::countr_zero(others));
    return text[at] == '/' && kLower.contains(text[label]);
  }
  for (; at < text.size() && kHostBytes.contains(text[at]); ++at) {
    if (text[at] == '.') label = at + 1;
  }
  return at < text.size() && text[at] == '/' && kLower.contains(text[label]);
}

template <std::size_t kSize>
bool startsWith(string_view text, const char (&start)[kSize]) {
  return text.size() >= kSize - 1 && std::memcmp(text.data(), start, kSize - 1) == 0;
}

// The length of the scheme that the text begins with; 0 where it begins with none. `isLower` tells
// whether it stays as it is.
std::size_t schemeLength(string_view url, bool& isLower) {
  std::size_t length = 0;
  isLower = true;
  if (url.empty() || !kLetters.contains(url[0])) return 0;
  for (; length < url.size() && kSchemeBytes.contains(url[length]); ++length) {
    isLower = isLower && !kUpper.contains(url[length]);
  }
  return length < url.size() && url[length] == ':' ? length : 0;
}

}  // namespace

std::size_t PlainLinks::prefixForRelative(string_view url) const {
  if (base_.directoryEnd_ == 0) return kNotPlain;
  const UrlOffsets& at = base_.url_->offsets();
  if (url.empty()) return at.fragmentBegin;
  switch (url[0]) {
    case '/':
      if (!startsWith(url, "//")) return at.pathBegin;
      return beginsWithPlainHost(url.substr(2)) ? at.schemeEnd + 1 : kNotPlain;
    case '?':
      return at.queryBegin;
    case '#':
      return at.fragmentBegin;
    default:
      return mayBeginDots(url[0]) ? kNotPlain : base_.directoryEnd_;
  }
}

std::size_t PlainLinks::prefixFor(string_view url) const {
  const auto hostAfter = [url](std::size_t size) {
    return beginsWithPlainHost(url.substr(size)) ? 0 : kNotPlain;
  };
  if (startsWith(url, "https://")) return hostAfter(8);
  if (startsWith(url, "http://")) return hostAfter(7);
  bool isLower = false;
  const std::size_t scheme = schemeLength(url, isLower);
  if (scheme == 0) return prefixForRelative(url);
  if (!isLower) return kNotPlain;
  const bool isSpecial = schemeKindOf(url.substr(0, scheme)) != SchemeKind::other;
  return isSpecial || startsWith(url.substr(scheme + 1), "/") ? kNotPlain : 0;
}

bool PlainLinks::resolve(std::string& out, string_view url) const {
  const std::size_t prefix = prefixFor(url);
  if (prefix == kNotPlain || !isPlain(url)) return false;
  out.clear();
  out.reserve(prefix + url.size());
  if (prefix > 0) out.append(base_.url_->href(), 0, prefix);
  out.append(url);
  return true;
}

}  // namespace pagescan::internal
