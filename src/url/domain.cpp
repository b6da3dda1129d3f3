#include "url/domain.h"

#include <algorithm>
#include <optional>
#include <vector>

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

// A label and what it stands for.
struct Label {
  std::u32string_view text;  // of the mapped domain
  std::u32string decoded;    // of one that begins with "xn--"

  bool isEncoded() const { return text.substr(0, kPrefix.size()) == kPrefix; }
  std::u32string_view characters() const { return isEncoded() ? decoded : text; }
};

// UTS #46, 4 "Processing": the steps "Map" and "Normalize".
std::u32string mapped(std::string_view domain) {
  std::u32string result;
  result.reserve(domain.size());
  for (std::size_t at = 0; at < domain.size();) appendIdnaMapped(result, readUtf8(domain, at));
  normalize(result);
  return result;
}

std::vector<Label> labelsOf(std::u32string_view domain) {
  std::vector<Label> labels;
  for (std::size_t begin = 0; begin <= domain.size();) {
    const std::size_t end = std::min(domain.find(U'.', begin), domain.size());
    labels.push_back({domain.substr(begin, end - begin), {}});
    begin = end + 1;
  }
  return labels;
}

// The step "Convert/Validate" for a label that begins with "xn--".
bool decode(Label& label) {
  if (!isAllAscii(label.text)) return false;
  std::optional<std::u32string> decoded = decodedPunycode(label.text.substr(kPrefix.size()));
  if (!decoded || isAllAscii(*decoded)) return false;
  label.decoded = *std::move(decoded);
  std::u32string normal = label.decoded;
  normalize(normal);
  return normal == label.decoded;
}

bool areValid(std::vector<Label>& labels) {
  bool isBidi = false;
  for (Label& label : labels) {
    if (label.text.empty()) continue;
    if (label.isEncoded() && !decode(label)) return false;
    if (!isValidLabel(label.characters())) return false;
    isBidi = isBidi || isRightToLeft(label.characters());
  }
  return !isBidi || std::all_of(labels.begin(), labels.end(), [](const Label& label) {
    return label.text.empty() || keepsBidiRule(label.characters());
  });
}

// 4.2 "ToASCII": decoding a label and encoding it again gives the same one.
bool append(std::string& out, const std::vector<Label>& labels) {
  const std::size_t begin = out.size();
  for (const Label& label : labels) {
    if (&label != &labels.front()) out += '.';
    if (isAllAscii(label.text)) {
      for (const char32_t c : label.text) out += static_cast<char>(c);
    } else {
      out += "xn--";
      if (!appendPunycode(out, label.text)) return false;
    }
  }
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
  std::vector<Label> labels = labelsOf(characters);
  return areValid(labels) && append(out, labels);
}

}  // namespace pagescan::internal
