// Byte order marks, the prescan, the encoding in a `content` attribute, and `@charset`.
#include "encoding/sniffing.h"

#include <algorithm>

#include "encoding/ascii.h"

namespace pagescan::internal {
namespace {

using namespace std::literals;

constexpr std::size_t kPrescanLength = 1024;

bool startsWithIgnoringCase(std::string_view text, std::string_view lowerCase) {
  return text.size() >= lowerCase.size() &&
         std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                    [](char lower, char byte) { return lower == toLower(byte); });
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
  return text.size() == lowerCase.size() && startsWithIgnoringCase(text, lowerCase);
}

constexpr ByteClass kSpaceOrSlash = kAsciiWhiteSpace | ByteClass::of("/");
constexpr ByteClass kSpaceOrGreaterThan = kAsciiWhiteSpace | ByteClass::of(">");

// Reads tags as the prescan does. Every step says whether it came before the end of the bytes: at
// their end the whole prescan ends.
class Prescan {
 public:
  explicit Prescan(std::string_view bytes) : bytes_(bytes) {}

  // The encoding that the first `meta` with one names.
  std::optional<Encoding> run() {
    for (; at_ < bytes_.size(); ++at_) {
      if (bytes_[at_] == '<' && !readMarkup()) break;
      if (found_) return found_;
    }
    return std::nullopt;
  }

 private:
  struct Attribute {
    std::string_view name;
    std::string_view value;
  };
  enum class Read : char { attribute, none, end };

  std::string_view rest() const { return bytes_.substr(at_); }
  bool isAtEnd() const { return at_ >= bytes_.size(); }

  // False at the end of the bytes.
  bool skipTo(const ByteClass& bytes) {
    while (!isAtEnd() && !bytes.contains(bytes_[at_])) ++at_;
    return !isAtEnd();
  }
  bool skip(const ByteClass& bytes) {
    while (!isAtEnd() && bytes.contains(bytes_[at_])) ++at_;
    return !isAtEnd();
  }

  // What begins with `<`; ends at its last byte. False at the end of the bytes.
  bool readMarkup() {
    const std::string_view markup = rest();
    if (markup.substr(0, 4) == "<!--") return skipComment();
    if (startsWithIgnoringCase(markup, "<meta") && markup.size() > 5 &&
        kSpaceOrSlash.contains(markup[5])) {
      at_ += 5;
      return readMeta();
    }
    const std::size_t name = markup.substr(1, 1) == "/" ? 2 : 1;
    if (markup.size() > name && kLetters.contains(markup[name])) return skipTag();
    if (markup.size() > 1 && ByteClass::of("!/?").contains(markup[1])) {
      return skipTo(ByteClass::of(">"));
    }
    return true;
  }

  // The two hyphens of the end may be those of the start.
  bool skipComment() {
    const std::size_t end = bytes_.find("-->", at_ + 2);
    if (end == std::string_view::npos) return false;
    at_ = end + 2;
    return true;
  }

  bool skipTag() {
    if (!skipTo(kSpaceOrGreaterThan)) return false;
    Read read;
    Attribute attribute;
    do read = readAttribute(attribute);
    while (read == Read::attribute);
    return read == Read::none;
  }

  bool readMeta();
  Read readAttribute(Attribute& attribute);
  Read readValue(Attribute& attribute);

  std::string_view bytes_;
  std::size_t at_ = 0;
  std::optional<Encoding> found_;
};

// "Get an attribute": Read::none when the tag ends, Read::end when the bytes do.
Prescan::Read Prescan::readAttribute(Attribute& attribute) {
  if (!skip(kSpaceOrSlash)) return Read::end;
  if (bytes_[at_] == '>') return Read::none;
  const std::size_t begin = at_;
  constexpr ByteClass kEndOfName = kSpaceOrSlash | ByteClass::of(">=");
  // An equals sign at the start is a part of the name.
  ++at_;
  if (!skipTo(kEndOfName)) return Read::end;
  attribute = {bytes_.substr(begin, at_ - begin), {}};
  if (kAsciiWhiteSpace.contains(bytes_[at_]) && !skip(kAsciiWhiteSpace)) return Read::end;
  if (bytes_[at_] != '=') return Read::attribute;
  ++at_;
  if (!skip(kAsciiWhiteSpace)) return Read::end;
  return readValue(attribute);
}

Prescan::Read Prescan::readValue(Attribute& attribute) {
  const char first = bytes_[at_];
  if (first == '>') return Read::attribute;
  if (first == '"' || first == '\'') {
    const std::size_t close = bytes_.find(first, at_ + 1);
    if (close == std::string_view::npos) return Read::end;
    attribute.value = bytes_.substr(at_ + 1, close - at_ - 1);
    at_ = close + 1;
    return Read::attribute;
  }
  const std::size_t begin = at_;
  if (!skipTo(kSpaceOrGreaterThan)) return Read::end;
  attribute.value = bytes_.substr(begin, at_ - begin);
  return Read::attribute;
}

// Sets found_ when the tag names an encoding. Of each of the three attributes the first counts.
bool Prescan::readMeta() {
  bool hasHttpEquiv = false;
  bool hasContent = false;
  bool hasCharset = false;
  bool gotPragma = false;
  std::optional<bool> needPragma;
  std::optional<Encoding> encoding;
  Attribute attribute;
  for (;;) {
    const Read read = readAttribute(attribute);
    if (read == Read::end) return false;
    if (read == Read::none) break;
    if (equalsIgnoringCase(attribute.name, "http-equiv") && !hasHttpEquiv) {
      hasHttpEquiv = true;
      gotPragma = equalsIgnoringCase(attribute.value, "content-type");
    } else if (equalsIgnoringCase(attribute.name, "content") && !hasContent) {
      hasContent = true;
      const std::optional<Encoding> named = encodingFromMetaContent(attribute.value);
      if (named && !hasCharset) {
        encoding = named;
        needPragma = true;
      }
    } else if (equalsIgnoringCase(attribute.name, "charset") && !hasCharset) {
      hasCharset = true;
      encoding = encodingForLabel(attribute.value);
      needPragma = false;
    }
  }
  if (needPragma && (!*needPragma || gotPragma) && encoding) {
    found_ = encodingMeantByMeta(*encoding);
  }
  return true;
}

// The value of `encoding` in an XML declaration at the start, and not after its end.
// Source    HTML Standard, 13.2.3.2 "get an XML encoding"
std::optional<Encoding> encodingFromXmlDeclaration(std::string_view bytes) {
  constexpr std::size_t kNone = std::string_view::npos;
  const auto skipControls = [bytes](std::size_t at) {
    while (at < bytes.size() && toByte(bytes[at]) <= 0x20) ++at;
    return at;
  };
  const std::size_t declarationEnd = bytes.find('>');
  if (bytes.substr(0, 5) != "<?xml" || declarationEnd == kNone) return std::nullopt;
  bytes = bytes.substr(0, declarationEnd);
  std::size_t at = bytes.find("encoding");
  if (at == kNone) return std::nullopt;
  at = skipControls(at + "encoding"sv.size());
  if (at >= bytes.size() || bytes[at] != '=') return std::nullopt;
  at = skipControls(at + 1);
  if (at >= bytes.size() || (bytes[at] != '"' && bytes[at] != '\'')) return std::nullopt;
  const std::size_t end = bytes.find(bytes[at], at + 1);
  if (end == kNone) return std::nullopt;
  const std::string_view label = bytes.substr(at + 1, end - at - 1);
  if (std::any_of(label.begin(), label.end(), [](char c) { return toByte(c) <= 0x20; })) {
    return std::nullopt;
  }
  const std::optional<Encoding> named = encodingForLabel(label);
  return named && isUtf16(*named) ? Encoding::utf8 : named;
}

}  // namespace

std::optional<ByteOrderMark> bomOf(std::string_view bytes) {
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") return ByteOrderMark{Encoding::utf8, 3};
  if (bytes.substr(0, 2) == "\xFE\xFF") return ByteOrderMark{Encoding::utf16Be, 2};
  if (bytes.substr(0, 2) == "\xFF\xFE") return ByteOrderMark{Encoding::utf16Le, 2};
  return std::nullopt;
}

std::optional<Encoding> prescan(std::string_view bytes) {
  bytes = bytes.substr(0, kPrescanLength);
  if (bytes.substr(0, 6) == "<\0?\0x\0"sv) return Encoding::utf16Le;
  if (bytes.substr(0, 6) == "\0<\0?\0x"sv) return Encoding::utf16Be;
  const std::optional<Encoding> named = Prescan(bytes).run();
  return named ? named : encodingFromXmlDeclaration(bytes);
}

std::optional<Encoding> encodingFromMetaContent(std::string_view content) {
  constexpr std::string_view kName = "charset";
  const auto skipSpace = [content](std::size_t at) {
    while (at < content.size() && kAsciiWhiteSpace.contains(content[at])) ++at;
    return at;
  };
  for (std::size_t at = 0; at < content.size(); ++at) {
    if (!startsWithIgnoringCase(content.substr(at), kName)) continue;
    std::size_t value = skipSpace(at + kName.size());
    if (value >= content.size()) return std::nullopt;
    if (content[value] != '=') {
      at = value - 1;
      continue;
    }
    value = skipSpace(value + 1);
    if (value >= content.size()) return std::nullopt;
    if (content[value] == '"' || content[value] == '\'') {
      const std::size_t close = content.find(content[value], value + 1);
      if (close == std::string_view::npos) return std::nullopt;
      return encodingForLabel(content.substr(value + 1, close - value - 1));
    }
    const std::size_t end = content.find_first_of("\t\n\f\r ;", value);
    return encodingForLabel(content.substr(value, end - value));
  }
  return std::nullopt;
}

std::optional<Encoding> encodingFromCharsetRule(std::string_view bytes) {
  constexpr std::string_view kStart = "@charset \"";
  bytes = bytes.substr(0, kPrescanLength);
  if (bytes.substr(0, kStart.size()) != kStart) return std::nullopt;
  const std::size_t close = bytes.find('"', kStart.size());
  if (close == std::string_view::npos || bytes.substr(close, 2) != "\";") return std::nullopt;
  const std::string_view label = bytes.substr(kStart.size(), close - kStart.size());
  const std::optional<Encoding> named = encodingForLabel(label);
  return named && isUtf16(*named) ? Encoding::utf8 : named;
}

}  // namespace pagescan::internal
