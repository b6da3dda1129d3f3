#include "url/plain_links.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/url_bytes.h"
#include "url/percent_sets.h"
#include "url/scheme.h"

namespace pagescan::internal {
namespace {

using std::string_view;

// The bytes that are kept are those that nothing changes, and the delimiters of the parts.
constexpr bool keepsWhatNothingChanges() {
  constexpr ByteClass kDelimiters = ByteClass::of("?#");
  constexpr ByteClass kChanged =
      kPathSet | kSpecialQuerySet | kFragmentSet | kBeyondAscii | ByteClass::of("\\");
  for (int c = 0; c < 256; ++c) {
    const char byte = static_cast<char>(c);
    const bool isKept = kDelimiters.contains(byte) || !kChanged.contains(byte);
    if (kKeptUrlBytes.contains(byte) != isKept) return false;
  }
  return true;
}
static_assert(keepsWhatNothingChanges());
static_assert(!kKeptHostBytes.intersects(kForbiddenInDomain | kUpper));

constexpr std::size_t kBlock = 64;

UrlBytes bytesAt(string_view url, std::size_t at) {
  return kernels().urlBytes(url.data() + at, std::min(url.size() - at, kBlock));
}

template <std::size_t kSize>
bool startsWith(string_view text, const char (&start)[kSize]) {
  return text.size() >= kSize - 1 && std::memcmp(text.data(), start, kSize - 1) == 0;
}

// Whether what begins here may be a dot segment. A dot may be spelled "%2e".
bool mayBeDots(string_view segment) {
  return startsWith(segment, ".") || startsWith(segment, "%2");
}

// Whether all bytes stay as they are, and no "/" comes before what may be a dot segment.
// bytes   the first ones of the link
bool isKept(string_view url, UrlBytes bytes, bool keepsAmpersands) {
  std::uint64_t slashBefore = 0;
  for (std::size_t at = 0;;) {
    if (bytes.changed != 0 || (!keepsAmpersands && bytes.ampersands != 0)) return false;
    std::uint64_t begins = (bytes.slashes << 1 | slashBefore) & bytes.dots;
    for (; begins != 0; begins &= begins - 1) {
      const auto begin = at + static_cast<std::size_t>(std::countr_zero(begins));
      if (mayBeDots(url.substr(begin))) return false;
    }
    slashBefore = bytes.slashes >> (kBlock - 1);
    at += kBlock;
    if (at >= url.size()) return true;
    bytes = bytesAt(url, at);
  }
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

// A host that stays as it is: a name in lower case whose last label begins with a letter, and so is
// no number.
PlainLinks::Frame PlainLinks::frameAfterHost(string_view url, const UrlBytes& bytes,
                                             std::size_t host, std::size_t prefix) {
  const auto size = static_cast<std::size_t>(std::countr_one(bytes.hostBytes >> host));
  const std::size_t end = host + size;
  if (end >= kBlock) return {kNotPlain};
  const std::uint64_t dots = bytes.dots & ((std::uint64_t{1} << end) - 1);
  const auto label = std::max(host, static_cast<std::size_t>(std::bit_width(dots)));
  if (label >= end || !kLower.contains(url[label])) return {kNotPlain};
  if (end == url.size()) return {prefix, true};
  return {url[end] == '/' ? prefix : kNotPlain};
}

PlainLinks::Frame PlainLinks::frameOfRelative(string_view url, const UrlBytes& bytes) const {
  if (base_.directoryEnd_ == 0) return {kNotPlain};
  const UrlOffsets& at = base_.url_->offsets();
  if (url.empty()) return {at.fragmentBegin};
  switch (url[0]) {
    case '/':
      if (!startsWith(url, "//")) return {at.pathBegin};
      return frameAfterHost(url, bytes, 2, at.schemeEnd + 1);
    case '?':
      return {at.queryBegin};
    case '#':
      return {at.fragmentBegin};
    default:
      return {mayBeDots(url) ? kNotPlain : base_.directoryEnd_};
  }
}

PlainLinks::Frame PlainLinks::frameOf(string_view url, const UrlBytes& bytes) const {
  if (startsWith(url, "https://")) return frameAfterHost(url, bytes, 8, 0);
  if (startsWith(url, "http://")) return frameAfterHost(url, bytes, 7, 0);
  bool isLower = false;
  const std::size_t scheme = schemeLength(url, isLower);
  if (scheme == 0) return frameOfRelative(url, bytes);
  if (!isLower) return {kNotPlain};
  const bool isSpecial = schemeKindOf(url.substr(0, scheme)) != SchemeKind::other;
  return {isSpecial || startsWith(url.substr(scheme + 1), "/") ? kNotPlain : 0};
}

bool PlainLinks::write(std::string& out, string_view url, bool keepsAmpersands) const {
  const UrlBytes bytes = url.empty() ? UrlBytes{} : bytesAt(url, 0);
  const Frame frame = frameOf(url, bytes);
  if (frame.prefix == kNotPlain || !isKept(url, bytes, keepsAmpersands)) return false;
  const std::size_t size = frame.prefix + url.size() + 1;
  out.clear();
  if (out.capacity() < size) out.reserve(size);
  if (frame.prefix > 0) out.append(base_.url_->href(), 0, frame.prefix);
  out.append(url);
  if (frame.lacksPath) out += '/';
  return true;
}

}  // namespace pagescan::internal
