#include "reference/page/decoding.h"

#include <optional>

#include "encoding/encoding.h"
#include "encoding/mapped_text.h"
#include "encoding/sniffing.h"
#include "reference/page/tree_builder.h"

namespace reference::page {

namespace {

using pagescan::internal::Encoding;

unsigned byteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

Char charAt(char32_t code, std::size_t begin, std::size_t end) {
  return {code, static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

// Encoding Standard, 8.1.1 "UTF-8 decoder".
Text decodeUtf8(std::string_view bytes) {
  Text text;
  for (std::size_t at = 0; at < bytes.size();) {
    const unsigned lead = byteAt(bytes, at);
    const std::size_t needed = lead >= 0xC2 && lead <= 0xDF   ? 1
                               : lead >= 0xE0 && lead <= 0xEF ? 2
                               : lead >= 0xF0 && lead <= 0xF4 ? 3
                                                              : 0;
    if (needed == 0) {
      text.push_back(charAt(lead < 0x80 ? char32_t{lead} : kReplacement, at, at + 1));
      ++at;
      continue;
    }
    char32_t code = lead & (0x3Fu >> needed);
    unsigned lower = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned upper = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    std::size_t end = at + 1;
    for (; end <= at + needed && end < bytes.size(); ++end) {
      const unsigned next = byteAt(bytes, end);
      if (next < lower || next > upper) break;
      lower = 0x80;
      upper = 0xBF;
      code = code << 6 | (next & 0x3F);
    }
    text.push_back(charAt(end == at + needed + 1 ? code : kReplacement, at, end));
    at = end;
  }
  return text;
}

// Encoding Standard, 14.2 "shared UTF-16 decoder".
Text decodeUtf16(std::string_view bytes, bool bigEndian) {
  Text text;
  const auto unitAt = [&](std::size_t at) {
    const char32_t first = byteAt(bytes, at);
    const char32_t second = byteAt(bytes, at + 1);
    return bigEndian ? first << 8 | second : second << 8 | first;
  };
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    if (at + 1 == bytes.size()) {
      text.push_back(charAt(kReplacement, at, at + 1));
      break;
    }
    const char32_t unit = unitAt(at);
    const bool isHigh = unit >= 0xD800 && unit <= 0xDBFF;
    const char32_t next = isHigh && at + 3 < bytes.size() ? unitAt(at + 2) : 0;
    if (isHigh && next >= 0xDC00 && next <= 0xDFFF) {
      text.push_back(charAt(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00), at, at + 4));
      at += 2;
    } else if (isHigh && at + 3 == bytes.size()) {
      // The queue ends in the middle of the second unit: one error for all of it.
      text.push_back(charAt(kReplacement, at, at + 3));
      break;
    } else {
      const bool isLone = unit >= 0xD800 && unit <= 0xDFFF;
      text.push_back(charAt(isLone ? kReplacement : unit, at, at + 2));
    }
  }
  return text;
}

Text decodeOther(std::string_view bytes, Encoding encoding) {
  const pagescan::internal::MappedText mapped(bytes, encoding);
  Text text = fromUtf8(mapped.text());
  for (Char& c : text) {
    const std::size_t begin = mapped.rawBegin(c.begin);
    const std::size_t end = mapped.rawEnd(c.end);
    c = charAt(c.code, begin, end);
  }
  return text;
}

}  // namespace

Text decode(std::string_view bytes, std::string_view name) {
  const Encoding encoding = *pagescan::internal::encodingForLabel(name);
  Text text;
  switch (encoding) {
    case Encoding::replacement:
      return text;
    case Encoding::utf8:
      text = decodeUtf8(bytes);
      break;
    case Encoding::utf16Be:
    case Encoding::utf16Le:
      text = decodeUtf16(bytes, encoding == Encoding::utf16Be);
      break;
    default:
      return decodeOther(bytes, encoding);
  }
  if (!text.empty() && text.front().code == 0xFEFF) text.erase(text.begin());
  return text;
}

namespace {

std::optional<Encoding> byMarkOrCaller(std::string_view bytes, std::string_view charset) {
  if (const auto mark = pagescan::internal::bomOf(bytes)) return mark->encoding;
  return pagescan::internal::encodingForLabel(charset);
}

std::optional<Encoding> namedBy(const Node& meta) {
  if (meta.attribute("charset")) {
    if (const auto named = pagescan::internal::encodingForLabel(meta.value("charset")))
      return named;
  }
  if (!equalsIgnoringCase(meta.value("http-equiv"), "content-type")) return std::nullopt;
  return pagescan::internal::encodingFromMetaContent(meta.value("content"));
}

// By the tree of the bytes, read as windows-1252: no delimiter of HTML hides in a character of an
// encoding that a meta can name.
std::optional<Encoding> byMeta(std::string_view bytes, bool scripting) {
  ParseOptions options;
  options.scripting = scripting;
  Text text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    text.push_back(charAt(byteAt(bytes, i), i, i + 1));
  }
  const Tree tree = parse(text, options);
  std::optional<Encoding> found;
  std::uint32_t earliest = 0;
  for (const auto& node : tree.nodes) {
    const bool inHead = node->parent && node->parent->isHtml("head") && node->parent->parent &&
                        node->parent->parent->parent == tree.document;
    if (!node->isHtml("meta") || !inHead || (found && node->tag > earliest)) continue;
    if (const auto named = namedBy(*node)) {
      found = pagescan::internal::encodingMeantByMeta(*named);
      earliest = node->tag;
    }
  }
  return found;
}

}  // namespace

std::string encodingOfPage(std::string_view bytes, std::string_view charset, bool scripting) {
  std::optional<Encoding> encoding = byMarkOrCaller(bytes, charset);
  if (!encoding) encoding = byMeta(bytes, scripting);
  if (!encoding) encoding = pagescan::internal::prescan(bytes);
  return std::string(nameOf(encoding.value_or(Encoding::windows1252)));
}

std::string encodingOfSheet(std::string_view bytes, std::string_view charset) {
  std::optional<Encoding> encoding = byMarkOrCaller(bytes, charset);
  if (!encoding) encoding = pagescan::internal::encodingFromCharsetRule(bytes);
  return std::string(nameOf(encoding.value_or(Encoding::utf8)));
}

}  // namespace reference::page
