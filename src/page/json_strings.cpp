#include "page/json_strings.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "encoding/utf8.h"
#include "page/white_space.h"

namespace pagescan::internal {
namespace {

constexpr ByteClass kJsonWhiteSpace = ByteClass::of("\t\n\r ");
constexpr ByteClass kEndsPlainRun = ByteClass::range('\0', '\x1F') | ByteClass::of("\"\\");
constexpr ByteClass kSimpleEscapes = ByteClass::of("\"\\/bfnrt");
constexpr ByteClass kHexDigits = kDigits | ByteClass::range('a', 'f') | ByteClass::range('A', 'F');
constexpr std::size_t kUnicodeEscape = 6;  // \u0000

struct JsonCharacter {
  char32_t value;
  std::size_t length;  // of its spelling
};

bool isSurrogate(char32_t unit, char32_t first) {
  return (unit & 0xFC00) == first;
}

// The four digits after "\u".
char32_t codeUnit(std::string_view raw, std::size_t at) {
  char32_t unit = 0;
  for (const char c : raw.substr(at + 2, 4)) {
    unit = unit << 4 | (kDigits.contains(c) ? toByte(c) & 0x0FU : (toByte(c) & 0x0FU) + 9);
  }
  return unit;
}

// The escape that begins at `at`, in the text of a valid string.
JsonCharacter readEscape(std::string_view raw, std::size_t at) {
  constexpr std::string_view kLetters = "bfnrt";
  constexpr std::string_view kMeanings = "\b\f\n\r\t";
  if (raw[at + 1] != 'u') {
    const std::size_t letter = kLetters.find(raw[at + 1]);
    return {toByte(letter == std::string_view::npos ? raw[at + 1] : kMeanings[letter]), 2};
  }
  const char32_t unit = codeUnit(raw, at);
  if (isSurrogate(unit, 0xD800) && raw.substr(at + kUnicodeEscape, 2) == "\\u") {
    const char32_t second = codeUnit(raw, at + kUnicodeEscape);
    if (isSurrogate(second, 0xDC00)) {
      return {0x10000 + ((unit & 0x3FF) << 10 | (second & 0x3FF)), 2 * kUnicodeEscape};
    }
  }
  const bool isAlone = isSurrogate(unit, 0xD800) || isSurrogate(unit, 0xDC00);
  return {isAlone ? kReplacementCharacter : unit, kUnicodeEscape};
}

// Whether the string begins with a text in lower case, escapes decoded and case ignored or not.
enum class Case { exact, ignored };
bool consumePrefix(std::string_view raw, std::size_t& at, std::string_view prefix,
                   Case letterCase) {
  std::size_t next = at;
  for (const char expected : prefix) {
    if (next >= raw.size()) return false;
    JsonCharacter c = {toByte(raw[next]), 1};
    if (raw[next] == '\\') c = readEscape(raw, next);
    if (letterCase == Case::ignored && c.value >= 'A' && c.value <= 'Z') c.value += 32;
    if (c.value != toByte(expected)) return false;
    next += c.length;
  }
  at = next;
  return true;
}

bool spells(std::string_view raw, std::string_view text) {
  std::size_t at = 0;
  return consumePrefix(raw, at, text, Case::exact) && at == raw.size();
}

bool isHttpUrl(std::string_view raw) {
  std::size_t at = 0;
  if (!consumePrefix(raw, at, "http", Case::ignored)) return false;
  consumePrefix(raw, at, "s", Case::ignored);
  return consumePrefix(raw, at, "://", Case::exact);
}

// What a value is for. The roles of objects and arrays hold for what is in them.
enum class Role : std::uint8_t {
  none,
  identifier,    // linked data: under a key that gives names
  root,          // the import map itself
  specifierMap,  // import map: from names to URLs
  scopes,        // import map: from URLs to specifier maps
  urls,          // speculation rules: an array of URLs
};

// An object or array that is open.
struct Frame {
  Role role;
  bool isObject;

  char packed() const {
    return static_cast<char>(static_cast<unsigned>(role) << 1 | (isObject ? 1U : 0U));
  }
  static Frame of(char packed) {
    return {static_cast<Role>(toByte(packed) >> 1), (toByte(packed) & 1U) != 0};
  }
};

class JsonReader {
 public:
  JsonReader(std::string_view json, JsonForm form, std::vector<JsonReference>& references)
      : json_(json), form_(form), references_(references) {}

  // Returns whether the text is JSON.
  bool read() {
    role_ = form_ == JsonForm::importMap ? Role::root : Role::none;
    for (;;) {
      skipWhiteSpace();
      Step step = readValue();
      while (step == Step::valueEnds) {
        skipWhiteSpace();
        if (open_.empty()) return at_ == json_.size();
        step = readAfterValue();
      }
      if (step == Step::fails) return false;
    }
  }

 private:
  enum class Step { valueFollows, valueEnds, fails };

  void skipWhiteSpace() { at_ = skipAll(json_, at_, kJsonWhiteSpace); }
  char next() const { return at_ < json_.size() ? json_[at_] : '\0'; }
  bool skip(char c) {
    if (next() != c || at_ == json_.size()) return false;
    ++at_;
    return true;
  }
  static Step endIf(bool isRight) { return isRight ? Step::valueEnds : Step::fails; }
  Frame parent() const {
    return open_.empty() ? Frame{Role::none, false} : Frame::of(open_.back());
  }

  Step readValue() {
    switch (next()) {
      case '{':
        return openFrame(true, '}');
      case '[':
        return openFrame(false, ']');
      case '"':
        return readStringValue();
      case 't':
        return endIf(skipWord("true"));
      case 'f':
        return endIf(skipWord("false"));
      case 'n':
        return endIf(skipWord("null"));
      default:
        return endIf(skipNumber());
    }
  }

  Step openFrame(bool isObject, char closing) {
    ++at_;
    open_.push_back(Frame{role_, isObject}.packed());
    skipWhiteSpace();
    if (skip(closing)) {
      open_.pop_back();
      return Step::valueEnds;
    }
    return readBeforeValue();
  }

  // What stands between the start of an object or array, or a comma, and the value.
  Step readBeforeValue() {
    const Frame frame = parent();
    if (!frame.isObject) {
      role_ = frame.role == Role::identifier ? Role::identifier : Role::none;
      return Step::valueFollows;
    }
    const std::size_t begin = at_ + 1;
    if (!skipString()) return Step::fails;
    const std::string_view key = json_.substr(begin, at_ - 1 - begin);
    if (form_ == JsonForm::importMap && frame.role == Role::scopes) add(begin, Kind::script);
    role_ = roleUnder(frame.role, key);
    skipWhiteSpace();
    return skip(':') ? Step::valueFollows : Step::fails;
  }

  Step readAfterValue() {
    const bool isObject = parent().isObject;
    if (skip(',')) {
      skipWhiteSpace();
      return readBeforeValue();
    }
    if (!skip(isObject ? '}' : ']')) return Step::fails;
    open_.pop_back();
    return Step::valueEnds;
  }

  Role roleUnder(Role role, std::string_view key) const {
    switch (form_) {
      case JsonForm::linkedData: {
        const bool givesNames =
            spells(key, "@context") || spells(key, "@type") || spells(key, "@vocab");
        return role == Role::identifier || givesNames ? Role::identifier : Role::none;
      }
      case JsonForm::importMap:
        if (role == Role::scopes) return Role::specifierMap;
        if (role != Role::root) return Role::none;
        if (spells(key, "imports")) return Role::specifierMap;
        return spells(key, "scopes") ? Role::scopes : Role::none;
      case JsonForm::speculationRules:
        break;
    }
    return spells(key, "urls") ? Role::urls : Role::none;
  }

  Step readStringValue() {
    const std::size_t begin = at_ + 1;
    if (!skipString()) return Step::fails;
    const Frame frame = parent();
    if (form_ == JsonForm::linkedData) {
      const Kind kind = role_ == Role::identifier ? Kind::identifier : Kind::metadata;
      if (isHttpUrl(json_.substr(begin, at_ - 1 - begin))) add(begin, kind);
    } else if (frame.isObject ? frame.role == Role::specifierMap : frame.role == Role::urls) {
      add(begin, Kind::script);
    }
    return Step::valueEnds;
  }

  // Adds the string that begins at `begin` and has just been read, unless it is empty.
  void add(std::size_t begin, Kind kind) {
    const std::size_t end = at_ - 1;
    if (begin == end) return;
    const Span span = {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
    references_.push_back({span, kind});
  }

  bool skipWord(std::string_view word) {
    if (json_.substr(at_, word.size()) != word) return false;
    at_ += word.size();
    return true;
  }

  bool skipDigits() {
    const std::size_t begin = at_;
    at_ = skipAll(json_, at_, kDigits);
    return at_ > begin;
  }

  bool skipNumber() {
    skip('-');
    if (!skip('0') && !skipDigits()) return false;
    if (skip('.') && !skipDigits()) return false;
    if (!skip('e') && !skip('E')) return true;
    if (!skip('+')) skip('-');
    return skipDigits();
  }

  bool skipString() {
    if (!skip('"')) return false;
    for (;;) {
      at_ = findIn(json_, at_, kEndsPlainRun);
      if (skip('"')) return true;
      if (!skip('\\') || !skipEscape()) return false;
    }
  }

  bool skipEscape() {
    if (at_ < json_.size() && kSimpleEscapes.contains(json_[at_])) {
      ++at_;
      return true;
    }
    if (!skip('u')) return false;
    const std::size_t end = at_ + 4;
    at_ = skipAll(json_.substr(0, end), at_, kHexDigits);
    return at_ == end;
  }

  std::string_view json_;
  JsonForm form_;
  std::vector<JsonReference>& references_;
  std::size_t at_ = 0;
  Role role_ = Role::none;  // of the value that follows
  std::string open_;        // frames, packed
};

}  // namespace

void readJsonStrings(std::string_view json, JsonForm form, std::vector<JsonReference>& references) {
  const std::size_t before = references.size();
  if (!JsonReader(json, form, references).read()) references.resize(before);
}

void decodeJsonString(std::string_view raw, DecodedText& result) {
  result.start(raw);
  for (std::size_t at = 0; at < raw.size();) {
    const std::size_t escape = std::min(raw.find('\\', at), raw.size());
    result.appendAsIs(at, escape);
    if (escape == raw.size()) return;
    const JsonCharacter character = readEscape(raw, escape);
    std::string utf8;
    appendUtf8(utf8, character.value);
    at = escape + character.length;
    result.appendSpelled(escape, at, utf8);
  }
}

}  // namespace pagescan::internal
