// The states from the "//" to the path.
#include <algorithm>
#include <string>

#include "url/host.h"
#include "url/parser_states.h"
#include "url/percent_encoding.h"
#include "url/percent_sets.h"

namespace pagescan::internal {

using std::string_view;

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

void Parser::writeNoHost() {
  at_.usernameBegin = at_.usernameEnd = at_.hostBegin = out_.size();
  endHost();
}

}  // namespace pagescan::internal
