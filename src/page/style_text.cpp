// One loop that wakes up at the few bytes that matter: quotes, comments, escapes, "@" and brackets.
//
// A function is known by the name before its "(", read backwards: so all other names are passed
// over unseen. Where no rule, property or open function depends on them, even brackets are.
#include "page/style_text.h"

#include <cstdint>
#include <string>

#include "base/kernels.h"
#include "page/css_characters.h"
#include "page/css_name.h"
#include "page/css_tokens.h"
#include "page/white_space.h"

namespace pagescan::internal {
namespace {

// What stands open. From url on they are functions whose strings are URLs.
enum class Open : char { round, square, curly, url, src, imageSet };

// What a string or url() is, where it stands.
enum class Role {
  plain,
  import,      // the URL of an @import that has a condition
  freeImport,  // of one that has none so far
  nameSpace,
};

constexpr ByteClass kQuotes = ByteClass::of("\"'");
constexpr ByteClass kWakes = kQuotes | ByteClass::of("(/\\@)[]{};");

class StyleReader {
 public:
  StyleReader(std::string_view css, StyleForm form, std::vector<StyleReference>& references)
      : css_(css), references_(references), form_(form), isFree_(form == StyleForm::sheet) {}

  void read() {
    startStatement();
    for (;;) {
      if (isQuiet()) {
        findQuietMark();
      } else {
        at_ = findIn(css_, at_, kWakes);
      }
      if (at_ == css_.size()) return;
      wakeUp(css_[at_]);
    }
  }

 private:
  void wakeUp(char c);
  void startStatement();
  void endStatement();
  void leaveFree();
  void addConditionToImport();
  void readAtName();
  void readFirst(Role role);
  void readNameSpace();
  bool readIdentLike(Role role);
  void readEscapedName();
  void openFunction(CssName name, Role role);
  void readUrl(std::size_t begin, Role role);
  void readString(Role role);
  void skipComment();
  void skipBlank();
  void open(Open bracket);
  void close(char bracket);
  void add(std::size_t begin, std::size_t end, Slot slot, Role role);
  Flags flagsOf(Role role) const;
  bool isBlankOrFragment(std::string_view raw, Slot slot, bool& isFragment);

  char next() const { return at_ < css_.size() ? css_[at_] : '\0'; }
  bool isAtQuote() const { return kQuotes.contains(next()); }
  bool isDirectlyIn(Open bracket) const {
    return !open_.empty() && open_.back() == static_cast<char>(bracket);
  }
  bool isStringPlace() const {
    return !open_.empty() && open_.back() >= static_cast<char>(Open::url);
  }

  // Whether brackets other than "(" mean nothing: none is recorded, then.
  bool isQuiet() const { return !isFree_ && functions_ == 0 && form_ != StyleForm::declarations; }

  // Moves on to where only functions that hold URLs, and rules that do, matter.
  void findQuietMark() {
    const char* const text = css_.data();
    const StylePlace mark =
        kernels().findStyleMark(text, text + css_.size(), {text + at_, text + floor_});
    at_ = static_cast<std::size_t>(mark.at - text);
    floor_ = static_cast<std::size_t>(mark.floor - text);
  }

  static constexpr std::size_t kNoImport = static_cast<std::size_t>(-1);

  std::string_view css_;
  std::vector<StyleReference>& references_;
  std::size_t at_ = 0;
  std::size_t floor_ = 0;      // the end of the last token that is known
  std::string open_;           // a byte each: what stands open; short ones stand in the object
  std::size_t functions_ = 0;  // how many of these hold strings that are URLs
  std::size_t imageSets_ = 0;
  std::size_t import_ = kNoImport;  // the reference of the @import that is being read
  StyleForm form_;
  bool isFree_;                    // whether an @import at the next statement has no condition
  bool isCustomProperty_ = false;  // whether its value is being read
  DecodedText scratch_;
};

void StyleReader::wakeUp(char c) {
  switch (c) {
    case '"':
    case '\'':
      return readString(Role::plain);
    case '(': {
      const CssName name = cssFunctionBefore(css_, at_, floor_);
      ++at_;
      return openFunction(name, Role::plain);
    }
    case '/':
      return css_.substr(at_, 2) == "/*" ? skipComment() : static_cast<void>(++at_);
    case '\\':
      return readEscapedName();
    case '@':
      return readAtName();
    default:
      break;
  }
  ++at_;
  switch (c) {
    case '[':
      return open(Open::square);
    case '{':
      addConditionToImport();
      if (open_.empty()) leaveFree();
      return open(Open::curly);
    case ';':
      return endStatement();
    default:
      return close(c);
  }
}

// --- Statements: rules of a sheet while an @import may be free, declarations ---

void StyleReader::startStatement() {
  if (form_ == StyleForm::value) return;
  skipBlank();
  if (form_ == StyleForm::declarations) {
    isCustomProperty_ = false;
    if (!beginsCssName(css_, at_)) return;
    const CssName name = readCssName(css_, at_);
    floor_ = at_;
    if (next() == '(') {
      ++at_;
      return openFunction(name, Role::plain);
    }
    skipBlank();
    isCustomProperty_ = name == CssName::customProperty && next() == ':';
    return;
  }
  if (next() != '@' || !beginsCssName(css_, at_ + 1)) return leaveFree();
  std::size_t end = at_ + 1;
  const CssName name = readCssName(css_, end);
  if (name == CssName::import) {
    at_ = floor_ = end;
    return readFirst(Role::freeImport);
  }
  if (name != CssName::charset && name != CssName::layer) leaveFree();
}

void StyleReader::endStatement() {
  if (!open_.empty()) return;
  import_ = kNoImport;
  if (isFree_ || form_ == StyleForm::declarations) startStatement();
}

// From here on each @import has a condition. Nothing is open.
void StyleReader::leaveFree() {
  isFree_ = false;
  import_ = kNoImport;
}

void StyleReader::addConditionToImport() {
  if (import_ != kNoImport) references_[import_].flags |= kConditional;
}

void StyleReader::readAtName() {
  ++at_;
  if (!beginsCssName(css_, at_)) return;
  const CssName name = readCssName(css_, at_);
  floor_ = at_;
  if (form_ != StyleForm::sheet) return;
  if (name == CssName::import) readFirst(Role::import);
  if (name == CssName::nameSpace) readNameSpace();
}

// What comes first after an @import or, in its second place, an @namespace.
void StyleReader::readFirst(Role role) {
  skipBlank();
  if (isAtQuote()) return readString(role);
  if (beginsCssName(css_, at_)) readIdentLike(role);
}

void StyleReader::readNameSpace() {
  skipBlank();
  if (beginsCssName(css_, at_) && readIdentLike(Role::nameSpace)) return;
  readFirst(Role::nameSpace);
}

// --- Names and functions ---

// Returns whether the name at at_ is that of a function.
bool StyleReader::readIdentLike(Role role) {
  const CssName name = readCssName(css_, at_);
  floor_ = at_;
  if (next() != '(') return false;
  ++at_;
  openFunction(name, role);
  return true;
}

// A name that holds an escape may have begun earlier, and may be the unit of a number, a hash or
// the name of a rule.
void StyleReader::readEscapedName() {
  if (!isCssEscape(css_, at_)) {
    ++at_;
    return;
  }
  const std::size_t begin = cssNameBegin(css_, at_, floor_);
  const bool isPlain = begin == floor_ || (css_[begin - 1] != '#' && css_[begin - 1] != '@');
  at_ = begin;
  if (isPlain && beginsCssName(css_, begin)) {
    readIdentLike(Role::plain);
  } else {
    readCssName(css_, at_);
    floor_ = at_;
  }
}

// at_ is after the "(".
void StyleReader::openFunction(CssName name, Role role) {
  floor_ = at_;
  switch (name) {
    case CssName::url: {
      const std::size_t begin = skipAll(css_, at_, kCssWhiteSpace);
      if (begin == css_.size() || !kQuotes.contains(css_[begin])) return readUrl(begin, role);
      open(Open::url);
      at_ = begin;
      return readString(role);
    }
    case CssName::src:
      return open(Open::src);
    case CssName::imageSet:
      return open(Open::imageSet);
    case CssName::supports:
      addConditionToImport();
      return open(Open::round);
    default:
      return open(Open::round);
  }
}

void StyleReader::open(Open bracket) {
  const bool holdsUrls = bracket >= Open::url;
  if (!holdsUrls && isQuiet()) return;
  open_.push_back(static_cast<char>(bracket));
  if (holdsUrls) ++functions_;
  if (bracket == Open::imageSet) ++imageSets_;
}

// Closes the innermost bracket if it is of this kind.
void StyleReader::close(char bracket) {
  if (open_.empty()) return;
  const Open last = static_cast<Open>(open_.back());
  const char closing = last == Open::square ? ']' : last == Open::curly ? '}' : ')';
  if (bracket != closing) return;
  open_.pop_back();
  if (last >= Open::url) --functions_;
  if (last == Open::imageSet) --imageSets_;
  if (isQuiet()) open_.clear();
}

// --- Tokens ---

// The content of url( without quotes, which begins at `begin`.
void StyleReader::readUrl(std::size_t begin, Role role) {
  const CssContentEnd content = readCssUrl(css_, begin);
  if (content.end != CssContentEnd::kBad) add(begin, content.end, Slot::cssUrl, role);
  at_ = floor_ = content.next;
}

// at_ is at the quote.
void StyleReader::readString(Role role) {
  const std::size_t begin = at_ + 1;
  const CssContentEnd content = readCssString(css_, begin);
  const bool isUrl = role != Role::plain || isStringPlace();
  if (isUrl && content.end != CssContentEnd::kBad) add(begin, content.end, Slot::cssString, role);
  at_ = floor_ = content.next;
}

void StyleReader::skipComment() {
  at_ = floor_ = cssCommentEnd(css_, at_);
}

void StyleReader::skipBlank() {
  at_ = floor_ = cssBlankEnd(css_, at_);
}

// --- References ---

// Whether what the bytes spell is no URL at all; else whether it is a fragment.
bool StyleReader::isBlankOrFragment(std::string_view raw, Slot slot, bool& isFragment) {
  if (raw.find('\\') != std::string_view::npos) {
    decodeCssValue(raw, slot, scratch_);
    raw = scratch_.text();
  }
  isFragment = !raw.empty() && raw[0] == '#';
  return isBlank(raw);
}

void StyleReader::add(std::size_t begin, std::size_t end, Slot slot, Role role) {
  bool isFragment = false;
  if (isBlankOrFragment(css_.substr(begin, end - begin), slot, isFragment)) return;
  Kind kind = isFragment ? Kind::fragment : Kind::load;
  if (role == Role::nameSpace) kind = Kind::identifier;
  if (isDirectlyIn(Open::src) && role == Role::plain) kind = Kind::dead;
  if (role == Role::freeImport) import_ = references_.size();
  const Span span = {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
  references_.push_back({span, slot, kind, flagsOf(role)});
}

Flags StyleReader::flagsOf(Role role) const {
  Flags flags = 0;
  if (imageSets_ > 0) flags |= kCandidate;
  const bool isConditional =
      form_ == StyleForm::sheet ? role != Role::freeImport : isCustomProperty_;
  if (isConditional) flags |= kConditional;
  return flags;
}

}  // namespace

void readStyle(std::string_view css, StyleForm form, std::vector<StyleReference>& references) {
  StyleReader(css, form, references).read();
}

}  // namespace pagescan::internal
