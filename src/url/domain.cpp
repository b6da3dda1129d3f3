#include "url/domain.h"

#include <algorithm>
#include <optional>

#include "base/byte_class.h"
#include "url/labels.h"
#include "url/punycode.h"
#include "url/unicode.h"
#include "url/utf8_reader.h"

namespace pagescan::internal {
namespace {

constexpr std::u32string_view kPrefix = U"xn--";

bool isAscii(char32_t c) {
  return c < 0x80;
}

bool isAllAscii(std::u32string_view text) {
  return std::all_of(text.begin(), text.end(), isAscii);
}

// UTS #46, 4 "Processing": the steps "Map" and "Normalize".
std::u32string mapped(std::string_view domain) {
  std::u32string result;
  result.reserve(domain.size());
  for (std::size_t at = 0; at < domain.size();) appendIdnaMapped(result, readUtf8(domain, at));
  normalize(result);
  return result;
}

// Calls work(label) for each label, until it returns false; false then.
template <typename Work>
bool forEachLabel(std::u32string_view domain, const Work& work) {
  for (std::size_t begin = 0; begin <= domain.size();) {
    const std::size_t end = std::min(domain.find(U'.', begin), domain.size());
    if (!work(domain.substr(begin, end - begin))) return false;
    begin = end + 1;
  }
  return true;
}

bool isEncoded(std::u32string_view label) {
  return label.substr(0, kPrefix.size()) == kPrefix;
}

// What a label that begins with "xn--" stands for; none where that is no label.
std::optional<std::u32string> decoded(std::u32string_view label) {
  if (!isAllAscii(label)) return std::nullopt;
  std::optional<std::u32string> result = decodedPunycode(label.substr(kPrefix.size()));
  if (!result || isAllAscii(*result)) return std::nullopt;
  std::u32string normal = *result;
  normalize(normal);
  if (normal != *result) return std::nullopt;
  return result;
}

// The step "Convert/Validate", but for what bidirectional domains must keep to.
bool areValid(std::u32string_view domain, bool& isBidi) {
  return forEachLabel(domain, [&isBidi](std::u32string_view label) {
    if (label.empty()) return true;
    std::optional<std::u32string> storage;
    if (isEncoded(label)) {
      storage = decoded(label);
      if (!storage) return false;
      label = *storage;
    }
    isBidi = isBidi || isRightToLeft(label);
    return isValidLabel(label);
  });
}

// For valid labels.
bool keepBidiRule(std::u32string_view domain) {
  return forEachLabel(domain, [](std::u32string_view label) {
    if (label.empty()) return true;
    return isEncoded(label) ? keepsBidiRule(*decoded(label)) : keepsBidiRule(label);
  });
}

// 4.2 "ToASCII": decoding a label and encoding it again gives the same one.
bool append(std::string& out, std::u32string_view domain) {
  const std::size_t begin = out.size();
  const bool isEncodable = forEachLabel(domain, [&out](std::u32string_view label) {
    if (!isAllAscii(label)) {
      out += "xn--";
      if (!appendPunycode(out, label)) return false;
    } else {
      for (const char32_t c : label) out += static_cast<char>(c);
    }
    out += '.';
    return true;
  });
  if (!isEncodable) return false;
  out.pop_back();  // there is one label at least, and no "." after the last
  return out.size() > begin;
}

}  // namespace

bool appendAsciiDomain(std::string& out, std::string_view domain) {
  // Browsers and the standard take a domain in ASCII as it is, whatever its labels decode to.
  if (std::all_of(domain.begin(), domain.end(), [](char c) { return isAscii(toByte(c)); })) {
    for (const char c : domain) out += toLower(c);
    return true;
  }
  const std::u32string characters = mapped(domain);
  bool isBidi = false;
  if (!areValid(characters, isBidi)) return false;
  return (!isBidi || keepBidiRule(characters)) && append(out, characters);
}

}  // namespace pagescan::internal
