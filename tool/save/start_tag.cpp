#include "save/start_tag.h"

#include <cstddef>

namespace pagescan::tool {

namespace {

// The characters of a page as far as tags need them: ASCII ones, all others as '?'.
class Characters {
 public:
  Characters(std::string_view page, std::string_view encoding)
      : page_(page),
        unit_(encoding.substr(0, 6) == "UTF-16" ? 2 : 1),
        low_(encoding == "UTF-16BE" ? 1 : 0) {}

  std::size_t unit() const { return unit_; }
  bool hasEnded(std::size_t at) const { return at + unit_ > page_.size(); }

  char at(std::size_t offset) const {
    if (hasEnded(offset)) return '>';
    const char c = page_[offset + (unit_ == 2 ? low_ : 0)];
    const bool isAscii =
        static_cast<unsigned char>(c) < 0x80 && (unit_ == 1 || page_[offset + 1 - low_] == 0);
    return isAscii ? c : '?';
  }

 private:
  std::string_view page_;
  std::size_t unit_, low_;
};

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

// Reads on from one place of a tag.
class TagReader {
 public:
  TagReader(const Characters& characters, std::size_t at) : characters_(characters), at_(at) {}

  char current() const { return characters_.at(at_); }
  bool hasEnded() const { return characters_.hasEnded(at_) || current() == '>'; }
  std::uint32_t offset() const { return static_cast<std::uint32_t>(at_); }
  void pass() { at_ += characters_.unit(); }

  template <typename Test>
  void passWhile(const Test& test) {
    while (!characters_.hasEnded(at_) && test(current())) pass();
  }

  std::string readName() {
    std::string name;
    do {  // a "=" in front belongs to the name
      const char c = current();
      name.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c);
      pass();
    } while (!hasEnded() && !isBlank(current()) && current() != '/' && current() != '=');
    return name;
  }

  // What follows a name; where that is no value, nothing is passed.
  void passValue() {
    const std::size_t nameEnd = at_;
    passWhile(isBlank);
    if (hasEnded() || current() != '=') {
      at_ = nameEnd;
      return;
    }
    pass();
    passWhile(isBlank);
    const char quote = current();
    if (quote == '"' || quote == '\'') {
      pass();
      passWhile([&](char c) { return c != quote; });
      if (!characters_.hasEnded(at_)) pass();
    } else {
      passWhile([](char c) { return !isBlank(c) && c != '>'; });
    }
  }

 private:
  const Characters& characters_;
  std::size_t at_;
};

}  // namespace

std::vector<TagAttribute> attributesAt(std::string_view page, std::uint32_t tag,
                                       std::string_view encoding) {
  const Characters characters(page, encoding);
  TagReader reader(characters, tag);
  reader.passWhile([](char c) { return !isBlank(c) && c != '/' && c != '>'; });
  std::vector<TagAttribute> attributes;
  while (true) {
    reader.passWhile([](char c) { return isBlank(c) || c == '/'; });
    if (reader.hasEnded()) return attributes;
    const std::uint32_t begin = reader.offset();
    std::string name = reader.readName();
    reader.passValue();
    attributes.push_back({std::move(name), {begin, reader.offset()}});
  }
}

Span removalOf(const TagAttribute& attribute, std::string_view page, std::string_view encoding) {
  const Characters characters(page, encoding);
  const char next = characters.at(attribute.span.end);
  Span span = attribute.span;
  if (!isBlank(next) && next != '>' && next != '/') return span;
  const auto unit = static_cast<std::uint32_t>(characters.unit());
  while (span.begin >= unit && isBlank(characters.at(span.begin - unit))) span.begin -= unit;
  return span;
}

}  // namespace pagescan::tool
