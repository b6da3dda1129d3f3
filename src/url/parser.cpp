#include "url/parser.h"

#include <algorithm>

#include "url/input_text.h"
#include "url/parser_states.h"

namespace pagescan::internal {

using std::string_view;

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

// All of the base before its path, without the "/." that only a path with two slashes has.
void Parser::copyUntilPath() {
  copyUntil(internal::hasHost(*base_) ? base_->at.pathBegin : base_->at.schemeEnd + 1);
  at_.pathBegin = out_.size();
}

void Parser::copyUntil(std::size_t end) {
  out_.assign(base_->text.substr(0, end));
  at_ = base_->at;
}

bool parseUrl(std::string& out, UrlOffsets& at, std::string_view text, const UrlView* base,
              Encoding queryEncoding) {
  std::string storage;
  return Parser(out, at, inputText(text, storage), base, queryEncoding).parse();
}

}  // namespace pagescan::internal
