#include "reference/url/url.h"

#include <cstdint>
#include <map>

#include "encoding/encoder.h"
#include "reference/url/percent.h"

namespace reference {
namespace {

using pagescan::internal::Encoding;
using pagescan::internal::QueryEncoder;

constexpr char32_t kEof = 0xFFFFFFFF;

const std::map<CodePoints, std::optional<unsigned>> kSpecialSchemes = {
    {U"ftp", 21}, {U"file", std::nullopt}, {U"http", 80}, {U"https", 443},
    {U"ws", 80},  {U"wss", 443},
};

bool isAlpha(char32_t c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char32_t c) {
  return c >= '0' && c <= '9';
}
CodePoints lowered(CodePoints s) {
  for (char32_t& c : s) c = c >= 'A' && c <= 'Z' ? c + 32 : c;
  return s;
}

bool isSpecial(const UrlRecord& url) {
  return kSpecialSchemes.count(url.scheme) == 1;
}

bool isWindowsDriveLetter(const CodePoints& s) {
  return s.size() == 2 && isAlpha(s[0]) && (s[1] == ':' || s[1] == '|');
}
bool isNormalizedWindowsDriveLetter(const CodePoints& s) {
  return isWindowsDriveLetter(s) && s[1] == ':';
}
bool startsWithWindowsDriveLetter(const CodePoints& s) {
  if (s.size() < 2 || !isWindowsDriveLetter(s.substr(0, 2))) return false;
  return s.size() == 2 || s[2] == '/' || s[2] == '\\' || s[2] == '?' || s[2] == '#';
}

bool isSingleDot(const CodePoints& s) {
  return s == U"." || lowered(s) == U"%2e";
}
bool isDoubleDot(const CodePoints& s) {
  const CodePoints l = lowered(s);
  return l == U".." || l == U".%2e" || l == U"%2e." || l == U"%2e%2e";
}

void shorten(UrlRecord& url) {
  if (url.scheme == U"file" && url.path.size() == 1 &&
      isNormalizedWindowsDriveLetter(url.path[0])) {
    return;
  }
  if (!url.path.empty()) url.path.pop_back();
}

// 1.3 "percent-encode after encoding".
CodePoints percentEncodeAfterEncoding(Encoding encoding, const CodePoints& input,
                                      PercentEncodeSet set) {
  CodePoints output;
  QueryEncoder encoder(encoding);
  const auto appendBytes = [&](const std::string& bytes) {
    for (const char byte : bytes) {
      const char32_t isomorph = static_cast<unsigned char>(byte);
      output += set(isomorph) ? percentEncode(isomorph) : CodePoints(1, isomorph);
    }
  };
  for (const char32_t c : input) {
    std::string bytes;
    const bool isEncoded = encoder.append(c, bytes);
    appendBytes(bytes);
    if (isEncoded) continue;
    output += U"%26%23";
    output += decodeUtf8(std::to_string(std::uint32_t{encoder.refused(c)}));
    output += U"%3B";
  }
  std::string bytes;
  encoder.finish(bytes);
  appendBytes(bytes);
  return output;
}

enum class State {
  schemeStart,
  scheme,
  noScheme,
  specialRelativeOrAuthority,
  pathOrAuthority,
  relative,
  relativeSlash,
  specialAuthoritySlashes,
  specialAuthorityIgnoreSlashes,
  authority,
  host,
  port,
  file,
  fileSlash,
  fileHost,
  pathStart,
  path,
  opaquePath,
  query,
  fragment,
};

class Machine {
 public:
  Machine(const CodePoints& input, const UrlRecord* base, Encoding encoding)
      : input_(input), base_(base), encoding_(encoding) {}

  std::optional<UrlRecord> run() {
    for (;; ++pointer_) {
      c_ = at(pointer_);
      if (!step()) return std::nullopt;
      if (pointer_ >= static_cast<long>(input_.size())) return url_;
    }
  }

 private:
  char32_t at(long i) const {
    return i < static_cast<long>(input_.size()) ? input_[static_cast<std::size_t>(i)] : kEof;
  }
  CodePoints fromPointer() const {
    return pointer_ < static_cast<long>(input_.size())
               ? input_.substr(static_cast<std::size_t>(pointer_))
               : CodePoints();
  }
  bool remainingStartsWith(char32_t wanted) const { return at(pointer_ + 1) == wanted; }
  bool isPathSlash() const { return c_ == '/' || (isSpecial(url_) && c_ == '\\'); }
  bool isEnd() const { return c_ == kEof || c_ == '/' || c_ == '?' || c_ == '#'; }

  // Goes on in a state with the same code point.
  bool again(State state) {
    state_ = state;
    --pointer_;
    return true;
  }
  // Goes on in a state with the next code point.
  bool next(State state) {
    state_ = state;
    return true;
  }

  // One turn of the loop; false is failure.
  bool step() {
    switch (state_) {
      case State::schemeStart:
        return schemeStart();
      case State::scheme:
        return scheme();
      case State::noScheme:
        return noScheme();
      case State::specialRelativeOrAuthority:
        return specialRelativeOrAuthority();
      case State::pathOrAuthority:
        return c_ == '/' ? next(State::authority) : again(State::path);
      case State::relative:
        return relative();
      case State::relativeSlash:
        return relativeSlash();
      case State::specialAuthoritySlashes:
        return specialAuthoritySlashes();
      case State::specialAuthorityIgnoreSlashes:
        return c_ == '/' || c_ == '\\' || again(State::authority);
      case State::authority:
        return authority();
      case State::host:
        return host();
      case State::port:
        return port();
      case State::file:
        return file();
      case State::fileSlash:
        return fileSlash();
      case State::fileHost:
        return fileHost();
      case State::pathStart:
        return pathStart();
      case State::path:
        return path();
      case State::opaquePath:
        return opaquePath();
      case State::query:
        return query();
      case State::fragment:
        if (c_ != kEof) *url_.fragment += utf8PercentEncode(c_, isInFragmentSet);
        return true;
    }
    return false;
  }

  bool schemeStart() {
    if (!isAlpha(c_)) return again(State::noScheme);
    buffer_ += lowered(CodePoints(1, c_));
    return next(State::scheme);
  }

  bool scheme() {
    if (isAlpha(c_) || isDigit(c_) || c_ == '+' || c_ == '-' || c_ == '.') {
      buffer_ += lowered(CodePoints(1, c_));
      return true;
    }
    if (c_ != ':') {
      buffer_.clear();
      pointer_ = -1;
      return next(State::noScheme);
    }
    url_.scheme = buffer_;
    buffer_.clear();
    if (url_.scheme == U"file") return next(State::file);
    if (isSpecial(url_) && base_ != nullptr && base_->scheme == url_.scheme) {
      return next(State::specialRelativeOrAuthority);
    }
    if (isSpecial(url_)) return next(State::specialAuthoritySlashes);
    if (remainingStartsWith('/')) {
      ++pointer_;
      return next(State::pathOrAuthority);
    }
    url_.hasOpaquePath = true;
    return next(State::opaquePath);
  }

  bool noScheme() {
    if (base_ == nullptr || (base_->hasOpaquePath && c_ != '#')) return false;
    if (base_->hasOpaquePath) {
      url_ = *base_;
      url_.fragment = CodePoints();
      return next(State::fragment);
    }
    return again(base_->scheme == U"file" ? State::file : State::relative);
  }

  bool specialRelativeOrAuthority() {
    if (c_ != '/' || !remainingStartsWith('/')) return again(State::relative);
    ++pointer_;
    return next(State::specialAuthorityIgnoreSlashes);
  }

  bool relative() {
    url_.scheme = base_->scheme;
    if (c_ == '/' || (isSpecial(url_) && c_ == '\\')) return next(State::relativeSlash);
    copyAuthority();
    return copyPath();
  }

  void copyAuthority() {
    url_.username = base_->username;
    url_.password = base_->password;
    url_.host = base_->host;
    url_.port = base_->port;
  }

  // What the relative state and the file state have in common.
  bool copyPath() {
    url_.path = base_->path;
    url_.query = base_->query;
    if (c_ == '?' || c_ == '#' || c_ == kEof) return toQueryOrFragment();
    url_.query = std::nullopt;
    if (url_.scheme == U"file" && startsWithWindowsDriveLetter(fromPointer())) {
      url_.path.clear();
    } else {
      shorten(url_);
    }
    return again(State::path);
  }

  bool relativeSlash() {
    if (isSpecial(url_) && (c_ == '/' || c_ == '\\')) {
      return next(State::specialAuthorityIgnoreSlashes);
    }
    if (c_ == '/') return next(State::authority);
    copyAuthority();
    return again(State::path);
  }

  bool specialAuthoritySlashes() {
    if (c_ != '/' || !remainingStartsWith('/')) return again(State::specialAuthorityIgnoreSlashes);
    ++pointer_;
    return next(State::specialAuthorityIgnoreSlashes);
  }

  bool authority() {
    if (c_ == '@') {
      if (atSignSeen_) buffer_ = U"%40" + buffer_;
      atSignSeen_ = true;
      for (const char32_t codePoint : buffer_) {
        if (codePoint == ':' && !passwordTokenSeen_) {
          passwordTokenSeen_ = true;
          continue;
        }
        const CodePoints encoded = utf8PercentEncode(codePoint, isInUserinfoSet);
        (passwordTokenSeen_ ? url_.password : url_.username) += encoded;
      }
      buffer_.clear();
    } else if (isEnd() || isPathSlash()) {
      if (atSignSeen_ && buffer_.empty()) return false;
      pointer_ -= static_cast<long>(buffer_.size()) + 1;
      buffer_.clear();
      state_ = State::host;
    } else {
      buffer_ += c_;
    }
    return true;
  }

  bool host() {
    if (c_ == ':' && !insideBrackets_) {
      if (buffer_.empty() || !takeHost()) return false;
      return next(State::port);
    }
    if (isEnd() || isPathSlash()) {
      if (isSpecial(url_) && buffer_.empty()) return false;
      return takeHost() && again(State::pathStart);
    }
    if (c_ == '[') insideBrackets_ = true;
    if (c_ == ']') insideBrackets_ = false;
    buffer_ += c_;
    return true;
  }

  bool takeHost() {
    url_.host = parseHost(buffer_, !isSpecial(url_));
    buffer_.clear();
    return url_.host.has_value();
  }

  bool port() {
    if (isDigit(c_)) {
      buffer_ += c_;
      return true;
    }
    if (!isEnd() && !isPathSlash()) return false;
    if (!buffer_.empty()) {
      unsigned number = 0;
      for (const char32_t digit : buffer_) {
        number = number * 10 + (digit - '0');
        if (number > 65535) return false;
      }
      const auto special = kSpecialSchemes.find(url_.scheme);
      const bool isDefault = special != kSpecialSchemes.end() && special->second == number;
      url_.port = isDefault ? std::nullopt : std::optional(number);
      buffer_.clear();
    }
    return again(State::pathStart);
  }

  bool file() {
    url_.scheme = U"file";
    url_.host = CodePoints();
    if (c_ == '/' || c_ == '\\') return next(State::fileSlash);
    if (base_ == nullptr || base_->scheme != U"file") return again(State::path);
    url_.host = base_->host;
    return copyPath();
  }

  bool fileSlash() {
    if (c_ == '/' || c_ == '\\') return next(State::fileHost);
    if (base_ != nullptr && base_->scheme == U"file") {
      url_.host = base_->host;
      if (!startsWithWindowsDriveLetter(fromPointer()) && !base_->path.empty() &&
          isNormalizedWindowsDriveLetter(base_->path[0])) {
        url_.path.push_back(base_->path[0]);
      }
    }
    return again(State::path);
  }

  bool fileHost() {
    if (!isEnd() && c_ != '\\') {
      buffer_ += c_;
      return true;
    }
    if (isWindowsDriveLetter(buffer_)) return again(State::path);  // with the buffer as it is
    if (buffer_.empty()) {
      url_.host = CodePoints();
      return again(State::pathStart);
    }
    if (!takeHost()) return false;
    if (url_.host == U"localhost") url_.host = CodePoints();
    return again(State::pathStart);
  }

  bool pathStart() {
    if (isSpecial(url_)) return isPathSlash() ? next(State::path) : again(State::path);
    if (c_ == '?' || c_ == '#' || c_ == kEof) return toQueryOrFragment();
    return c_ == '/' ? next(State::path) : again(State::path);
  }

  bool path() {
    if (!isEnd() && !isPathSlash()) {
      buffer_ += utf8PercentEncode(c_, isInPathSet);
      return true;
    }
    if (isDoubleDot(buffer_)) {
      shorten(url_);
      if (!isPathSlash()) url_.path.emplace_back();
    } else if (isSingleDot(buffer_)) {
      if (!isPathSlash()) url_.path.emplace_back();
    } else {
      if (url_.scheme == U"file" && url_.path.empty() && isWindowsDriveLetter(buffer_)) {
        buffer_[1] = ':';
      }
      url_.path.push_back(buffer_);
    }
    buffer_.clear();
    return toQueryOrFragment();
  }

  bool opaquePath() {
    if (c_ == '?' || c_ == '#' || c_ == kEof) return toQueryOrFragment();
    if (c_ == ' ') {
      const bool isLast = remainingStartsWith('?') || remainingStartsWith('#');
      url_.opaquePath += isLast ? U"%20" : U" ";
    } else {
      url_.opaquePath += utf8PercentEncode(c_, isInC0ControlSet);
    }
    return true;
  }

  bool toQueryOrFragment() {
    if (c_ == '?') {
      url_.query = CodePoints();
      state_ = State::query;
    } else if (c_ == '#') {
      url_.fragment = CodePoints();
      state_ = State::fragment;
    }
    return true;
  }

  bool query() {
    if (c_ != '#' && c_ != kEof) {
      buffer_ += c_;
      return true;
    }
    const bool isUtf8 = !isSpecial(url_) || url_.scheme == U"ws" || url_.scheme == U"wss";
    const PercentEncodeSet set = isSpecial(url_) ? isInSpecialQuerySet : isInQuerySet;
    *url_.query += percentEncodeAfterEncoding(isUtf8 ? Encoding::utf8 : encoding_, buffer_, set);
    buffer_.clear();
    return toQueryOrFragment();
  }

  const CodePoints& input_;
  const UrlRecord* const base_;
  const Encoding encoding_;
  UrlRecord url_;
  State state_ = State::schemeStart;
  CodePoints buffer_;
  bool atSignSeen_ = false, insideBrackets_ = false, passwordTokenSeen_ = false;
  long pointer_ = 0;
  char32_t c_ = kEof;
};

// The text without C0 controls and spaces at its ends, and without tabs and newlines.
CodePoints cleaned(CodePoints input) {
  while (!input.empty() && input.front() <= ' ') input.erase(0, 1);
  while (!input.empty() && input.back() <= ' ') input.pop_back();
  CodePoints result;
  for (const char32_t c : input) {
    if (c != '\t' && c != '\n' && c != '\r') result += c;
  }
  return result;
}

}  // namespace

std::optional<UrlRecord> parseUrl(std::string_view bytes, const UrlRecord* base,
                                  Encoding encoding) {
  const CodePoints input = cleaned(decodeUtf8(bytes));
  return Machine(input, base, pagescan::internal::outputEncodingOf(encoding)).run();
}

std::string serialize(const UrlRecord& url) {
  CodePoints output = url.scheme + U":";
  if (url.host) {
    output += U"//";
    if (!url.username.empty() || !url.password.empty()) {
      output += url.username;
      if (!url.password.empty()) output += U":" + url.password;
      output += U"@";
    }
    output += *url.host;
    if (url.port) output += U":" + decodeUtf8(std::to_string(*url.port));
  }
  if (!url.host && !url.hasOpaquePath && url.path.size() > 1 && url.path[0].empty()) {
    output += U"/.";
  }
  output += url.opaquePath;
  for (const CodePoints& segment : url.path) output += U"/" + segment;
  if (url.query) output += U"?" + *url.query;
  if (url.fragment) output += U"#" + *url.fragment;
  return encodeUtf8(output);
}

}  // namespace reference
