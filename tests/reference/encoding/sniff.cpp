// Each function follows the steps of its section in the standard, in their order.
#include "reference/encoding/sniff.h"

#include <algorithm>
#include <set>

#include "encoding/generated/labels.h"

namespace reference {

using pagescan::internal::Encoding;
namespace {

// The algorithm ran out of bytes.
struct OutOfBytes {};

bool isSpace(int byte) {
  return byte == 0x09 || byte == 0x0A || byte == 0x0C || byte == 0x0D || byte == 0x20;
}
bool isUpper(int byte) {
  return byte >= 0x41 && byte <= 0x5A;
}
bool isAlpha(int byte) {
  return isUpper(byte) || (byte >= 0x61 && byte <= 0x7A);
}
char lower(int byte) {
  return static_cast<char>(static_cast<unsigned char>(isUpper(byte) ? byte + 0x20 : byte));
}

bool isUtf16BeOrLe(Encoding encoding) {
  return encoding == Encoding::utf16Be || encoding == Encoding::utf16Le;
}

class Prescan {
 public:
  explicit Prescan(std::string_view bytes) : bytes_(bytes) {}

  Encoding run() {
    for (;; ++position_) {
      if (isAt("<!--")) {
        comment();
      } else if (isAt("<meta") && (isSpace(ahead(5)) || ahead(5) == '/')) {
        position_ += 5;
        if (const MaybeEncoding found = meta()) return *found;
      } else if (isAt("<") && (isAlpha(ahead(1)) || (ahead(1) == '/' && isAlpha(ahead(2))))) {
        while (!isSpace(byte()) && byte() != '>') ++position_;
        while (getAttribute()) {
        }
      } else if (isAt("<!") || isAt("</") || isAt("<?")) {
        while (byte() != '>') ++position_;
      }
      byte();
    }
  }

 private:
  struct Attribute {
    std::string name;
    std::string value;
  };

  int byte() const {
    if (position_ >= bytes_.size()) throw OutOfBytes();
    return static_cast<unsigned char>(bytes_[position_]);
  }
  // -1 beyond the end.
  int ahead(std::size_t distance) const {
    const std::size_t at = position_ + distance;
    return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : -1;
  }
  bool isAt(std::string_view lowerCase) const {
    for (std::size_t i = 0; i < lowerCase.size(); ++i) {
      if (ahead(i) < 0 || lower(ahead(i)) != lowerCase[i]) return false;
    }
    return true;
  }

  // To the first ">" with two hyphens before it that comes after the "<".
  void comment() {
    const std::size_t start = position_;
    position_ += 4;
    for (;; ++position_) {
      if (byte() == '>' && position_ - 2 > start && bytes_[position_ - 1] == '-' &&
          bytes_[position_ - 2] == '-') {
        return;
      }
    }
  }

  MaybeEncoding meta() {
    std::set<std::string> list;
    bool gotPragma = false;
    std::optional<bool> needPragma;
    bool isCharsetNull = true;
    MaybeEncoding charset;  // empty: null or failure
    while (const std::optional<Attribute> attribute = getAttribute()) {
      if (!list.insert(attribute->name).second) continue;
      if (attribute->name == "http-equiv") {
        if (attribute->value == "content-type") gotPragma = true;
      } else if (attribute->name == "content") {
        const MaybeEncoding found = extractFromMeta(attribute->value);
        if (found && isCharsetNull) {
          charset = found;
          isCharsetNull = false;
          needPragma = true;
        }
      } else if (attribute->name == "charset") {
        charset = getEncoding(attribute->value);
        isCharsetNull = false;
        needPragma = false;
      }
    }
    if (!needPragma.has_value()) return std::nullopt;
    if (*needPragma && !gotPragma) return std::nullopt;
    if (!charset) return std::nullopt;
    if (isUtf16BeOrLe(*charset)) charset = Encoding::utf8;
    if (*charset == Encoding::xUserDefined) charset = Encoding::windows1252;
    return charset;
  }

  std::optional<Attribute> getAttribute() {
    while (isSpace(byte()) || byte() == '/') ++position_;
    if (byte() == '>') return std::nullopt;
    Attribute attribute;
    for (;; ++position_) {
      if (byte() == '=' && !attribute.name.empty()) {
        ++position_;
        return getValue(attribute);
      }
      if (isSpace(byte())) break;
      if (byte() == '/' || byte() == '>') return attribute;
      attribute.name += lower(byte());
    }
    while (isSpace(byte())) ++position_;
    if (byte() != '=') return attribute;
    ++position_;
    return getValue(attribute);
  }

  Attribute getValue(Attribute attribute) {
    while (isSpace(byte())) ++position_;
    if (byte() == '"' || byte() == '\'') {
      const int quote = byte();
      for (++position_; byte() != quote; ++position_) attribute.value += lower(byte());
      ++position_;
      return attribute;
    }
    if (byte() == '>') return attribute;
    for (; !isSpace(byte()) && byte() != '>'; ++position_) attribute.value += lower(byte());
    return attribute;
  }

  std::string_view bytes_;
  std::size_t position_ = 0;
};

MaybeEncoding getXmlEncoding(std::string_view bytes) {
  const auto byteAt = [bytes](std::size_t at) {
    if (at >= bytes.size()) throw OutOfBytes();
    return static_cast<unsigned char>(bytes[at]);
  };
  if (bytes.substr(0, 5) != "<?xml") return std::nullopt;
  if (bytes.find('>') == std::string_view::npos) return std::nullopt;
  bytes = bytes.substr(0, bytes.find('>'));
  std::size_t position = bytes.find("encoding");
  if (position == std::string_view::npos) return std::nullopt;
  position += 8;
  while (byteAt(position) <= 0x20) ++position;
  if (byteAt(position) != '=') return std::nullopt;
  ++position;
  while (byteAt(position) <= 0x20) ++position;
  const unsigned char quote = byteAt(position);
  if (quote != '"' && quote != '\'') return std::nullopt;
  ++position;
  std::string label;
  for (; byteAt(position) != quote; ++position) label += static_cast<char>(byteAt(position));
  for (const char c : label) {
    if (static_cast<unsigned char>(c) <= 0x20) return std::nullopt;
  }
  const MaybeEncoding encoding = getEncoding(label);
  return encoding && isUtf16BeOrLe(*encoding) ? Encoding::utf8 : encoding;
}

}  // namespace

MaybeEncoding getEncoding(std::string_view label) {
  std::string plain(label);
  while (!plain.empty() && isSpace(plain.front())) plain.erase(0, 1);
  while (!plain.empty() && isSpace(plain.back())) plain.pop_back();
  for (char& c : plain) c = lower(static_cast<unsigned char>(c));
  for (const auto& row : pagescan::internal::kLabels) {
    if (row.label == plain) return row.encoding;
  }
  return std::nullopt;
}

MaybeEncoding bomSniff(std::string_view bytes) {
  if (bytes.size() >= 3 && bytes.substr(0, 3) == "\xEF\xBB\xBF") return Encoding::utf8;
  if (bytes.size() >= 2 && bytes.substr(0, 2) == "\xFE\xFF") return Encoding::utf16Be;
  if (bytes.size() >= 2 && bytes.substr(0, 2) == "\xFF\xFE") return Encoding::utf16Le;
  return std::nullopt;
}

MaybeEncoding prescan(std::string_view bytes) {
  const std::string head(bytes.substr(0, 1024));
  if (head.substr(0, 6) == std::string("<\0?\0x\0", 6)) return Encoding::utf16Le;
  if (head.substr(0, 6) == std::string("\0<\0?\0x", 6)) return Encoding::utf16Be;
  try {
    return Prescan(head).run();
  } catch (const OutOfBytes&) {
  }
  try {
    return getXmlEncoding(head);
  } catch (const OutOfBytes&) {
    return std::nullopt;
  }
}

MaybeEncoding extractFromMeta(std::string_view content) {
  std::string text(content);
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return lower(static_cast<unsigned char>(c)); });
  std::size_t position = 0;
  for (;;) {
    position = text.find("charset", position);
    if (position == std::string::npos) return std::nullopt;
    position += 7;
    while (position < text.size() && isSpace(text[position])) ++position;
    if (position < text.size() && text[position] == '=') break;
  }
  ++position;
  while (position < text.size() && isSpace(text[position])) ++position;
  if (position == text.size()) return std::nullopt;
  const char quote = text[position];
  if (quote == '"' || quote == '\'') {
    const std::size_t end = text.find(quote, position + 1);
    if (end == std::string::npos) return std::nullopt;
    return getEncoding(text.substr(position + 1, end - position - 1));
  }
  std::string label;
  for (; position < text.size() && !isSpace(text[position]) && text[position] != ';'; ++position) {
    label += text[position];
  }
  return getEncoding(label);
}

MaybeEncoding charsetRule(std::string_view bytes) {
  bytes = bytes.substr(0, 1024);
  const std::string_view start = "\x40\x63\x68\x61\x72\x73\x65\x74\x20\x22";
  if (bytes.substr(0, start.size()) != start) return std::nullopt;
  std::string label;
  std::size_t position = start.size();
  for (; position < bytes.size(); ++position) {
    const auto byte = static_cast<unsigned char>(bytes[position]);
    if (byte == 0x22 || byte > 0x7F) break;
    label += static_cast<char>(byte);
  }
  if (bytes.substr(position, 2) != "\x22\x3B") return std::nullopt;
  const MaybeEncoding encoding = getEncoding(label);
  return encoding && isUtf16BeOrLe(*encoding) ? Encoding::utf8 : encoding;
}

}  // namespace reference
