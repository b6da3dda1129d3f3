#include "reference/page/css_tokens.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace reference::page {

namespace {

constexpr char32_t kEnd = 0xFFFFFFFF;

bool isNewline(char32_t c) {
  return c == '\n';
}

bool isCssSpace(char32_t c) {
  return c == '\n' || c == '\t' || c == ' ';
}

// 4.2, "non-ASCII ident code point"
bool isNonAsciiName(char32_t c) {
  return c == 0xB7 || (c >= 0xC0 && c <= 0xD6) || (c >= 0xD8 && c <= 0xF6) ||
         (c >= 0xF8 && c <= 0x37D) || (c >= 0x37F && c <= 0x1FFF) || c == 0x200C || c == 0x200D ||
         c == 0x203F || c == 0x2040 || (c >= 0x2070 && c <= 0x218F) ||
         (c >= 0x2C00 && c <= 0x2FEF) || (c >= 0x3001 && c <= 0xD7FF) ||
         (c >= 0xF900 && c <= 0xFDCF) || (c >= 0xFDF0 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

bool isNameStart(char32_t c) {
  return isAsciiAlpha(c) || c == '_' || isNonAsciiName(c);
}

bool isNameCharacter(char32_t c) {
  return isNameStart(c) || isAsciiDigit(c) || c == '-';
}

bool isNonPrintable(char32_t c) {
  return c <= 8 || c == 0xB || (c >= 0xE && c <= 0x1F) || c == 0x7F;
}

// 3.3 "Preprocessing the input stream".
Text preprocessed(const Text& input) {
  Text text;
  for (std::size_t i = 0; i < input.size(); ++i) {
    Char c = input[i];
    if (c.code == '\r' || c.code == '\f') {
      if (c.code == '\r' && i + 1 < input.size() && input[i + 1].code == '\n') {
        c.end = input[++i].end;
      }
      c.code = '\n';
    } else if (c.code == 0 || (c.code >= 0xD800 && c.code <= 0xDFFF)) {
      c.code = kReplacement;
    }
    text.push_back(c);
  }
  return text;
}

class CssTokenizer {
 public:
  explicit CssTokenizer(const Text& input) : input_(preprocessed(input)) {}

  std::vector<CssToken> run() {
    std::vector<CssToken> tokens;
    while (at_ < input_.size()) {
      const std::size_t first = at_;
      tokens.push_back(token());
      tokens.back().tokenBegin = input_[first].begin;
      tokens.back().tokenEnd = input_[at_ - 1].end;
    }
    return tokens;
  }

 private:
  char32_t peek(std::size_t ahead = 0) const {
    return at_ + ahead < input_.size() ? input_[at_ + ahead].code : kEnd;
  }
  bool nextAre(std::string_view letters) const {
    for (std::size_t i = 0; i < letters.size(); ++i) {
      if (peek(i) != static_cast<unsigned char>(letters[i])) return false;
    }
    return true;
  }
  // 4.3.8 "Check if two code points are a valid escape".
  bool isEscape(std::size_t ahead) const {
    return peek(ahead) == '\\' && !isNewline(peek(ahead + 1));
  }
  // 4.3.9 "Check if three code points would start an ident sequence".
  bool isIdentStart(std::size_t ahead) const {
    const char32_t c = peek(ahead);
    if (c == '-') {
      return isNameStart(peek(ahead + 1)) || peek(ahead + 1) == '-' || isEscape(ahead + 1);
    }
    return isNameStart(c) || isEscape(ahead);
  }
  // 4.3.10 "Check if three code points would start a number".
  bool isNumberStart() const {
    const std::size_t sign = peek() == '+' || peek() == '-' ? 1 : 0;
    if (isAsciiDigit(peek(sign))) return true;
    return peek(sign) == '.' && isAsciiDigit(peek(sign + 1));
  }

  CssToken of(CssToken::Kind kind) {
    CssToken made;
    made.kind = kind;
    return made;
  }

  void setName(CssToken& token, std::string written) {
    token.name = toAsciiLower(written);
    token.written = std::move(written);
  }

  // The characters [first, last), or nothing before `first`.
  void setSpan(CssToken& token, std::size_t first, std::size_t last) {
    token.begin = first < last ? input_[first].begin : input_[first - 1].end;
    token.end = first < last ? input_[last - 1].end : token.begin;
  }

  CssToken token() {
    if (nextAre("/*")) return comment();
    const char32_t c = peek();
    if (isCssSpace(c)) {
      while (isCssSpace(peek())) ++at_;
      return of(CssToken::Kind::whitespace);
    }
    if (c == '"' || c == '\'') return string();
    if (c == '#' && (isNameCharacter(peek(1)) || isEscape(1))) {
      ++at_;
      CssToken made = of(CssToken::Kind::hash);
      made.isId = isIdentStart(0);
      setName(made, name());
      return made;
    }
    if (isNumberStart()) return numeric();
    if (nextAre("-->")) {
      at_ += 3;
      return of(CssToken::Kind::cdc);
    }
    if (nextAre("<!--")) {
      at_ += 4;
      return of(CssToken::Kind::cdo);
    }
    if (c == '@' && isIdentStart(1)) {
      ++at_;
      CssToken made = of(CssToken::Kind::atKeyword);
      setName(made, name());
      return made;
    }
    if (isIdentStart(0)) return identLike();
    CssToken made = of(CssToken::Kind::delimiter);
    made.code = c;
    ++at_;
    return made;
  }

  CssToken comment() {
    at_ += 2;
    while (at_ < input_.size() && !nextAre("*/")) ++at_;
    at_ = std::min(at_ + 2, input_.size());
    return of(CssToken::Kind::comment);
  }

  // 4.3.7 "Consume an escaped code point", from its backslash on.
  Char escaped() {
    Char c = {0, input_[at_].begin, input_[at_].end};
    ++at_;
    if (at_ >= input_.size()) {
      c.code = kReplacement;
      return c;
    }
    if (!isAsciiHexDigit(peek())) {
      c.code = peek();
      c.end = input_[at_++].end;
      return c;
    }
    for (int digits = 0; digits < 6 && isAsciiHexDigit(peek()); ++digits) {
      c.code = c.code * 16 + hexValue(peek());
      c.end = input_[at_++].end;
    }
    if (isCssSpace(peek())) c.end = input_[at_++].end;
    const bool isSurrogate = c.code >= 0xD800 && c.code <= 0xDFFF;
    if (c.code == 0 || isSurrogate || c.code > 0x10FFFF) c.code = kReplacement;
    return c;
  }

  // 4.3.12 "Consume an ident sequence".
  std::string name() {
    std::string result;
    for (;;) {
      if (isNameCharacter(peek())) {
        appendUtf8(result, input_[at_++].code);
      } else if (isEscape(0)) {
        appendUtf8(result, escaped().code);
      } else {
        return result;
      }
    }
  }

  // 4.3.13 "Consume a number", its parts appended to what strtod() reads.
  void number(CssToken& token) {
    std::string digits;
    const auto take = [&] { digits += static_cast<char>(input_[at_++].code); };
    const auto takeDigits = [&] {
      while (isAsciiDigit(peek())) take();
    };
    token.isInteger = true;
    if (peek() == '+' || peek() == '-') {
      token.sign = static_cast<char>(peek());
      take();
    }
    takeDigits();
    if (peek() == '.' && isAsciiDigit(peek(1))) {
      token.isInteger = false;
      take();
      takeDigits();
    }
    const std::size_t sign = peek(1) == '+' || peek(1) == '-' ? 1 : 0;
    if ((peek() == 'e' || peek() == 'E') && isAsciiDigit(peek(1 + sign))) {
      token.isInteger = false;
      for (std::size_t i = 0; i <= sign; ++i) take();
      takeDigits();
    }
    token.number = std::strtod(digits.c_str(), nullptr);
  }

  // 4.3.3 "Consume a numeric token".
  CssToken numeric() {
    CssToken made = of(CssToken::Kind::number);
    number(made);
    if (isIdentStart(0)) {
      made.kind = CssToken::Kind::dimension;
      setName(made, name());
    } else if (peek() == '%') {
      made.kind = CssToken::Kind::percentage;
      ++at_;
    }
    return made;
  }

  CssToken string() {
    const char32_t quote = peek();
    ++at_;
    CssToken made = of(CssToken::Kind::string);
    const std::size_t first = at_;
    for (;;) {
      const char32_t c = peek();
      if (c == quote || c == kEnd) {
        setSpan(made, first, at_);
        if (c == quote) ++at_;
        return made;
      }
      if (isNewline(c)) return of(CssToken::Kind::badString);
      if (c != '\\') {
        made.value.push_back(input_[at_++]);
      } else if (peek(1) == kEnd) {
        ++at_;
      } else if (isNewline(peek(1))) {
        at_ += 2;
      } else {
        made.value.push_back(escaped());
      }
    }
  }

  CssToken identLike() {
    CssToken result = of(CssToken::Kind::ident);
    setName(result, name());
    if (peek() != '(') return result;
    ++at_;
    result.kind = CssToken::Kind::function;
    if (result.name != "url") return result;
    std::size_t ahead = 0;
    while (isCssSpace(peek(ahead))) ++ahead;
    if (peek(ahead) == '"' || peek(ahead) == '\'') return result;
    return url();
  }

  // 4.3.6 "Consume a url token".
  CssToken url() {
    CssToken made = of(CssToken::Kind::url);
    while (isCssSpace(peek())) ++at_;
    const std::size_t first = at_;
    std::size_t last = at_;
    for (;;) {
      const char32_t c = peek();
      if (c == ')' || c == kEnd) {
        setSpan(made, first, last);
        if (c == ')') ++at_;
        return made;
      }
      if (isCssSpace(c)) {
        while (isCssSpace(peek())) ++at_;
        if (peek() == ')' || peek() == kEnd) continue;
        return badUrl();
      }
      if (c == '"' || c == '\'' || c == '(' || isNonPrintable(c)) return badUrl();
      if (c == '\\') {
        if (!isEscape(0)) return badUrl();
        made.value.push_back(escaped());
      } else {
        made.value.push_back(input_[at_++]);
      }
      last = at_;
    }
  }

  CssToken badUrl() {
    while (at_ < input_.size()) {
      if (peek() == ')') {
        ++at_;
        break;
      }
      if (isEscape(0)) {
        escaped();
      } else {
        ++at_;
      }
    }
    return of(CssToken::Kind::badUrl);
  }

  const Text input_;
  std::size_t at_ = 0;
};

}  // namespace

std::vector<CssToken> cssTokens(const Text& text) {
  return CssTokenizer(text).run();
}

}  // namespace reference::page
