// JSON by RFC 8259, with the places of its strings.
#include <utility>

#include "reference/page/lists.h"

namespace reference::page {

namespace {

class JsonParser {
 public:
  explicit JsonParser(const Text& text) : text_(text) {}

  std::optional<JsonValue> whole() {
    JsonValue result;
    skipSpace();
    if (!value(result, 0)) return std::nullopt;
    skipSpace();
    if (at_ != text_.size()) return std::nullopt;
    return result;
  }

 private:
  // Beyond this depth a text counts as no JSON, so that reading cannot exhaust the stack.
  static constexpr int kMaxDepth = 1000;

  char32_t peek() const { return at_ < text_.size() ? text_[at_].code : 0xFFFFFFFF; }
  void skipSpace() {
    while (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r') ++at_;
  }
  bool take(char32_t c) {
    if (peek() != c) return false;
    ++at_;
    return true;
  }
  bool takeWord(std::string_view word) {
    for (const char c : word) {
      if (!take(static_cast<unsigned char>(c))) return false;
    }
    return true;
  }
  bool digits() {
    if (!isAsciiDigit(peek())) return false;
    while (isAsciiDigit(peek())) ++at_;
    return true;
  }

  bool value(JsonValue& result, int depth) {
    if (depth > kMaxDepth) return false;
    switch (peek()) {
      case '{':
        return object(result, depth);
      case '[':
        return array(result, depth);
      case '"':
        result.kind = JsonValue::Kind::string;
        return string(result.string);
      case 't':
        return takeWord("true");
      case 'f':
        return takeWord("false");
      case 'n':
        return takeWord("null");
      default:
        return number();
    }
  }

  bool number() {
    take('-');
    if (!take('0') && !digits()) return false;
    if (take('.') && !digits()) return false;
    if (take('e') || take('E')) {
      if (!take('+')) take('-');
      return digits();
    }
    return true;
  }

  bool array(JsonValue& result, int depth) {
    result.kind = JsonValue::Kind::array;
    ++at_;
    skipSpace();
    if (take(']')) return true;
    for (;;) {
      result.items.emplace_back();
      skipSpace();
      if (!value(result.items.back(), depth + 1)) return false;
      skipSpace();
      if (take(']')) return true;
      if (!take(',')) return false;
    }
  }

  bool object(JsonValue& result, int depth) {
    result.kind = JsonValue::Kind::object;
    ++at_;
    skipSpace();
    if (take('}')) return true;
    for (;;) {
      skipSpace();
      result.keys.emplace_back();
      if (!string(result.keys.back())) return false;
      skipSpace();
      if (!take(':')) return false;
      skipSpace();
      result.items.emplace_back();
      if (!value(result.items.back(), depth + 1)) return false;
      skipSpace();
      if (take('}')) return true;
      if (!take(',')) return false;
    }
  }

  bool string(JsonString& result) {
    if (!take('"')) return false;
    result.begin = text_[at_ - 1].end;
    for (;;) {
      const char32_t c = peek();
      if (c == 0xFFFFFFFF || c < 0x20) return false;
      if (c == '"') {
        result.end = text_[at_++].begin;
        return true;
      }
      if (c == '\\') {
        if (!escape(result.value)) return false;
      } else {
        result.value.push_back(text_[at_++]);
      }
    }
  }

  bool escape(Text& value) {
    const std::uint32_t begin = text_[at_++].begin;
    const char32_t letter = peek();
    if (letter == 'u') return unicodeEscape(value, begin);
    static constexpr std::string_view kLetters = "\"\\/bfnrt";
    static constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    const std::size_t index =
        letter < 0x80 ? kLetters.find(static_cast<char>(letter)) : kLetters.npos;
    if (index == kLetters.npos) return false;
    value.push_back({static_cast<unsigned char>(kMeanings[index]), begin, text_[at_++].end});
    return true;
  }

  bool fourDigits(char32_t& unit) {
    unit = 0;
    for (int i = 0; i < 4; ++i) {
      if (!isAsciiHexDigit(peek())) return false;
      unit = unit * 16 + hexValue(text_[at_++].code);
    }
    return true;
  }

  // A surrogate without its partner stands for U+FFFD.
  bool unicodeEscape(Text& value, std::uint32_t begin) {
    ++at_;
    char32_t unit = 0;
    if (!fourDigits(unit)) return false;
    if (unit >= 0xD800 && unit <= 0xDBFF && at_ + 1 < text_.size() && peek() == '\\' &&
        text_[at_ + 1].code == 'u') {
      const std::size_t before = at_;
      at_ += 2;
      char32_t low = 0;
      if (!fourDigits(low)) return false;
      if (low >= 0xDC00 && low <= 0xDFFF) {
        unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
      } else {
        at_ = before;
      }
    }
    if (unit >= 0xD800 && unit <= 0xDFFF) unit = kReplacement;
    value.push_back({unit, begin, text_[at_ - 1].end});
    return true;
  }

  const Text& text_;
  std::size_t at_ = 0;
};

}  // namespace

std::optional<JsonValue> parseJson(const Text& text) {
  return JsonParser(text).whole();
}

}  // namespace reference::page
