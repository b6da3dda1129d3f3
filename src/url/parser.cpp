#include "url/parser.h"

#include <algorithm>

#include "url/host.h"
#include "url/input_text.h"
#include "url/path.h"
#include "url/percent_encoding.h"
#include "url/percent_sets.h"
#include "url/query.h"
#include "url/scheme.h"
#include "url/url_view.h"

namespace pagescan::internal {
namespace {

using std::string_view;

// A function for each state or group of states; what a state leaves to the next one is in `rest_`,
// the input that is not read yet. The components are written in the order in which they are
// serialised, so that each function appends and notes where.
class Parser {
 public:
  Parser(std::string& out, UrlOffsets& at, string_view input, const UrlView* base,
         Encoding queryEncoding)
      : out_(out), at_(at), rest_(input), base_(base), queryEncoding_(queryEncoding) {}

  bool parse() { return readScheme() ? afterScheme() : withoutScheme(); }

 private:
  // Reading.
  bool atEnd() const { return rest_.empty(); }
  bool at(char c) const { return !atEnd() && rest_.front() == c; }
  bool atSlash() const { return at('/') || (isSpecial() && at('\\')); }
  bool atQueryOrFragment() const { return at('?') || at('#'); }
  void skip(std::size_t count) { rest_.remove_prefix(count); }
  string_view take(std::size_t count);
  std::size_t pathSegmentSize() const;

  bool isSpecial() const { return kind_ != SchemeKind::other; }
  bool isFile() const { return kind_ == SchemeKind::file; }

  // The states.
  bool readScheme();
  bool afterScheme();
  bool withoutScheme();
  bool relative();
  bool afterSlashes();
  bool authority();
  bool hostAndPort(string_view text);
  bool port(string_view digits);
  bool file();
  bool fileAfterSlash();
  bool fileHost();
  bool pathStart();
  bool path();
  bool opaquePath();
  bool query();
  bool fragment();

  // Writing.
  void userinfo(string_view text);
  void beginAuthority();
  void endHost();
  void writeNoHost();
  void copyUntilPath();
  void copyUntil(std::size_t end);
  PathWriter pathWriter() { return {out_, at_.pathBegin, isFile()}; }
  bool hasHost() const { return at_.hostBegin > at_.schemeEnd + 1; }

  std::string& out_;
  UrlOffsets& at_;
  string_view rest_;
  const UrlView* const base_;
  const Encoding queryEncoding_;
  SchemeKind kind_ = SchemeKind::other;
};

string_view Parser::take(std::size_t count) {
  const string_view taken = rest_.substr(0, count);
  skip(taken.size());
  return taken;
}

// "Scheme start state" and "scheme state"; nothing is taken where the text has no scheme.
bool Parser::readScheme() {
  if (atEnd() || !kLetters.contains(rest_.front())) return false;
  const auto end =
      std::find_if(rest_.begin(), rest_.end(), [](char c) { return !kSchemeBytes.contains(c); });
  if (end == rest_.end() || *end != ':') return false;
  at_ = {};
  at_.schemeEnd = static_cast<std::size_t>(end - rest_.begin());
  out_.assign(take(at_.schemeEnd));
  std::transform(out_.begin(), out_.end(), out_.begin(), toLower);
  kind_ = schemeKindOf(out_);
  out_ += ':';
  skip(1);
  return true;
}

bool Parser::afterScheme() {
  if (isFile()) return file();
  if (isSpecial()) {
    // "Special relative or authority state": a base of the same scheme counts unless two slashes
    // follow.
    if (base_ != nullptr && kindOf(*base_) == kind_ && rest_.substr(0, 2) != "//") {
      return relative();
    }
    return afterSlashes();
  }
  if (!at('/')) return opaquePath();
  if (rest_.substr(0, 2) == "//") {
    skip(2);
    return authority();
  }
  writeNoHost();
  return pathStart();
}

// "No scheme state".
bool Parser::withoutScheme() {
  if (base_ == nullptr) return false;
  kind_ = kindOf(*base_);
  if (hasOpaquePath(*base_)) {
    if (!at('#')) return false;
    copyUntil(base_->at.fragmentBegin);
    return fragment();
  }
  return isFile() ? file() : relative();
}

// "Relative state" and "relative slash state".
bool Parser::relative() {
  if (atSlash()) {
    if (rest_.size() > 1 && (rest_[1] == '/' || (isSpecial() && rest_[1] == '\\'))) {
      skip(2);
      copyUntil(base_->at.schemeEnd + 1);
      return isSpecial() ? afterSlashes() : authority();
    }
    copyUntilPath();
    return pathStart();
  }
  if (at('?')) {
    copyUntil(base_->at.queryBegin);
    return query();
  }
  if (atEnd() || at('#')) {
    copyUntil(base_->at.fragmentBegin);
    return fragment();
  }
  copyUntilPath();
  out_ += pathOf(*base_);
  pathWriter().shorten();
  return path();
}

// "Special authority slashes state" and "special authority ignore slashes state".
bool Parser::afterSlashes() {
  while (atSlash()) skip(1);
  return authority();
}

// "Authority state": all up to the path, the query or the fragment.
bool Parser::authority() {
  const auto isEnd = [this](char c) {
    return c == '/' || c == '?' || c == '#' || (c == '\\' && isSpecial());
  };
  const auto end = std::find_if(rest_.begin(), rest_.end(), isEnd);
  string_view text = take(static_cast<std::size_t>(end - rest_.begin()));
  beginAuthority();
  const std::size_t sign = text.rfind('@');
  if (sign != string_view::npos) {
    userinfo(text.substr(0, sign));
    text.remove_prefix(sign + 1);
    if (text.empty()) return false;
  }
  at_.hostBegin = out_.size();
  return hostAndPort(text) && pathStart();
}

void Parser::beginAuthority() {
  out_ += "//";
  at_.usernameBegin = at_.usernameEnd = at_.hostBegin = out_.size();
}

// The name up to the first ":", the password after it.
void Parser::userinfo(string_view text) {
  const std::size_t colon = std::min(text.find(':'), text.size());
  appendPercentEncoded(out_, text.substr(0, colon), kUserinfoSet);
  at_.usernameEnd = out_.size();
  if (colon + 1 < text.size()) {
    out_ += ':';
    appendPercentEncoded(out_, text.substr(colon + 1), kUserinfoSet);
  }
  if (out_.size() > at_.usernameBegin) out_ += '@';
}

// "Host state": a ":" between brackets begins no port.
bool Parser::hostAndPort(string_view text) {
  bool inBrackets = false;
  const auto colon = std::find_if(text.begin(), text.end(), [&inBrackets](char c) {
    if (c == '[') inBrackets = true;
    if (c == ']') inBrackets = false;
    return c == ':' && !inBrackets;
  });
  const auto size = static_cast<std::size_t>(colon - text.begin());
  const bool hasColon = size < text.size();
  if (size == 0 && (hasColon || isSpecial())) return false;
  if (!appendHost(out_, text.substr(0, size), isSpecial())) return false;
  endHost();
  return !hasColon || port(text.substr(size + 1));
}

void Parser::endHost() {
  at_.hostEnd = at_.pathBegin = out_.size();
}

// "Port state".
bool Parser::port(string_view digits) {
  constexpr unsigned kMost = 0xFFFF;
  if (digits.empty()) return true;
  unsigned number = 0;
  for (const char c : digits) {
    if (!kDigits.contains(c)) return false;
    number = number * 10 + static_cast<unsigned>(c - '0');
    if (number > kMost) return false;
  }
  if (number == defaultPortOf(kind_)) return true;
  out_ += ':';
  out_ += std::to_string(number);
  at_.pathBegin = out_.size();
  return true;
}

// "File state".
bool Parser::file() {
  if (atSlash()) {
    skip(1);
    return fileAfterSlash();
  }
  if (base_ == nullptr || kindOf(*base_) != SchemeKind::file) {
    out_ = "file:";
    at_.schemeEnd = out_.size() - 1;
    beginAuthority();
    endHost();
    return path();
  }
  if (atEnd() || atQueryOrFragment() || !startsWithDriveLetter(rest_)) return relative();
  copyUntilPath();
  return path();
}

// "File slash state".
bool Parser::fileAfterSlash() {
  const bool hasFileBase = base_ != nullptr && kindOf(*base_) == SchemeKind::file;
  if (atSlash() || !hasFileBase) {
    out_ = "file:";
    at_.schemeEnd = out_.size() - 1;
    beginAuthority();
    if (atSlash()) {
      skip(1);
      return fileHost();
    }
    endHost();
    return path();
  }
  copyUntilPath();
  if (!startsWithDriveLetter(rest_) && beginsWithNormalDriveLetter(pathOf(*base_))) {
    out_ += pathOf(*base_).substr(0, 3);
  }
  return path();
}

// "File host state".
bool Parser::fileHost() {
  const string_view host = rest_.substr(0, rest_.find_first_of("/\\?#"));
  if (isDriveLetter(host)) {
    endHost();
    return path();
  }
  skip(host.size());
  if (!host.empty()) {
    if (!appendHost(out_, host, true)) return false;
    if (string_view(out_).substr(at_.hostBegin) == "localhost") out_.resize(at_.hostBegin);
  }
  endHost();
  return pathStart();
}

// "Path start state".
bool Parser::pathStart() {
  if (!isSpecial() && (atEnd() || atQueryOrFragment())) return query();
  if (atSlash()) skip(1);
  return path();
}

std::size_t Parser::pathSegmentSize() const {
  static constexpr ByteClass kEnds = ByteClass::of("/?#");
  const auto end = std::find_if(rest_.begin(), rest_.end(), [this](char c) {
    return kEnds.contains(c) || (c == '\\' && isSpecial());
  });
  return static_cast<std::size_t>(end - rest_.begin());
}

// "Path state": after the slash before a segment.
bool Parser::path() {
  PathWriter writer = pathWriter();
  for (bool isLast = false; !isLast;) {
    const string_view segment = take(pathSegmentSize());
    isLast = !atSlash();
    writer.append(segment, isLast);
    if (!isLast) skip(1);
  }
  if (!hasHost() && string_view(out_).substr(at_.pathBegin, 2) == "//") {
    out_.insert(at_.pathBegin, "/.");
    at_.pathBegin += 2;
  }
  return query();
}

// "Opaque path state": spaces stay, but for one right before a query or fragment.
bool Parser::opaquePath() {
  writeNoHost();
  const string_view path = take(rest_.find_first_of("?#"));
  const bool endsInSpace = !atEnd() && !path.empty() && path.back() == ' ';
  appendPercentEncoded(out_, path.substr(0, path.size() - (endsInSpace ? 1 : 0)), kC0ControlSet);
  if (endsInSpace) out_ += "%20";
  return query();
}

// "Query state", where a query begins here.
bool Parser::query() {
  at_.queryBegin = out_.size();
  if (at('?')) {
    const string_view text = take(rest_.find('#')).substr(1);
    const bool isWebSocket = kind_ == SchemeKind::ws || kind_ == SchemeKind::wss;
    const Encoding encoding = isSpecial() && !isWebSocket ? queryEncoding_ : Encoding::utf8;
    out_ += '?';
    appendEncodedQuery(out_, text, isSpecial() ? kSpecialQuerySet : kQuerySet, encoding);
  }
  at_.fragmentBegin = out_.size();
  return fragment();
}

// "Fragment state", where a fragment begins here.
bool Parser::fragment() {
  if (at('#')) {
    out_ += '#';
    appendPercentEncoded(out_, rest_.substr(1), kFragmentSet);
  }
  return true;
}

void Parser::writeNoHost() {
  at_.usernameBegin = at_.usernameEnd = at_.hostBegin = out_.size();
  endHost();
}

// All of the base before its path, without the "/." that only a path with two slashes has.
void Parser::copyUntilPath() {
  copyUntil(internal::hasHost(*base_) ? base_->at.pathBegin : base_->at.schemeEnd + 1);
  at_.pathBegin = out_.size();
}

void Parser::copyUntil(std::size_t end) {
  out_.assign(base_->text.substr(0, end));
  at_ = base_->at;
}

}  // namespace

bool parseUrl(std::string& out, UrlOffsets& at, std::string_view text, const UrlView* base,
              Encoding queryEncoding) {
  std::string storage;
  return Parser(out, at, inputText(text, storage), base, queryEncoding).parse();
}

}  // namespace pagescan::internal
