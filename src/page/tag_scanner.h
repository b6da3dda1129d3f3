// The attributes of one tag, as the HTML Standard's tokenizer finds them (13.2.5.32 to 13.2.5.40).
#ifndef PAGESCAN_PAGE_TAG_SCANNER_H
#define PAGESCAN_PAGE_TAG_SCANNER_H

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "page/name_tables.h"

namespace pagescan::internal {

// One attribute: offsets into the page. The value is without quotes. Without a "=", the value is
// the empty span right after the name; with nothing after the "=", the one right after that.
struct TagAttribute {
  NameId name;
  std::uint32_t nameBegin, nameEnd;
  std::uint32_t valueBegin, valueEnd;
};

inline constexpr ByteClass kBareValueEnd = kTagWhiteSpace | ByteClass::of(">");

struct TagEnd {
  const char* end = nullptr;  // after the ">"; null when the page ends inside the tag
  bool selfClosing = false;
};

inline const char* skipTo(const char* at, const char* end, const ByteClass& stop) {
  while (at != end && !stop.contains(*at)) ++at;
  return at;
}
inline const char* skipTo(const char* at, const char* end, char stop) {
  const void* found = std::memchr(at, stop, static_cast<std::size_t>(end - at));
  return found == nullptr ? end : static_cast<const char*>(found);
}
inline const char* skipTagWhiteSpace(const char* at, const char* end) {
  while (at != end && kTagWhiteSpace.contains(*at)) ++at;
  return at;
}

// A text that is read as it is, a byte or a word at a time. MarkedBytes answers the same questions
// sooner; what follows reads either.
class PlainBytes {
 public:
  explicit PlainBytes(const char* end) : end_(end) {}

  const char* end() const { return end_; }
  ScannedName attributeName(const char* name) const { return scanAttributeName(name, end_); }
  const char* quote(const char* from, char quote) const { return skipTo(from, end_, quote); }

 private:
  const char* end_;
};

// The value that starts after a "=": its span, and where the tag goes on. Null `next` when the page
// ends first.
struct AttributeValue {
  const char* begin;
  const char* end;
  const char* next;
};

template <class Bytes>
AttributeValue readValue(const char* afterEquals, Bytes& bytes) {
  const char* const end = bytes.end();
  const char* at = afterEquals;
  if (at == end || *at != '"') at = skipTagWhiteSpace(at, end);
  if (at == end) return {at, at, nullptr};
  if (*at == '"' || *at == '\'') {
    const char* quote = bytes.quote(at + 1, *at);
    return {at + 1, quote, quote == end ? nullptr : quote + 1};
  }
  if (*at == '>') return {afterEquals, afterEquals, at};
  const char* valueEnd = skipTo(at, end, kBareValueEnd);
  return {at, valueEnd, valueEnd == end ? nullptr : valueEnd};
}

// Reads on after a tag's name, to its end. Calls add(name, key, value, valueEnd) for each
// attribute, in their order, duplicates included.
template <class Bytes, class Add>
TagEnd scanAttributes(const char* at, Bytes& bytes, Add&& add) {
  const char* const end = bytes.end();
  while (at != end) {
    if (kTagWhiteSpace.contains(*at)) {
      ++at;
    } else if (*at == '>') {
      return {at + 1, false};
    } else if (*at == '/') {
      if (at + 1 != end && at[1] == '>') return {at + 2, true};
      ++at;
    } else {
      const char* name = at;
      const ScannedName scanned = bytes.attributeName(name);  // a "=" may come first
      at = scanned.end;
      if (at == end || *at != '=') at = skipTagWhiteSpace(at, end);
      if (at == end) return {};
      if (*at != '=') {
        add(name, scanned.key, scanned.end, scanned.end);
        continue;
      }
      const AttributeValue value = readValue(at + 1, bytes);
      if (value.next == nullptr) return {};
      add(name, scanned.key, value.begin, value.end);
      at = value.next;
    }
  }
  return {};
}

// After the end of the tag, without a look at its attributes.
inline TagEnd skipAttributes(const char* at, const char* end) {
  if (at != end && *at == '>') return {at + 1, false};
  PlainBytes bytes(end);
  return scanAttributes(at, bytes, [](const char*, const NameKey&, const char*, const char*) {});
}

// The known attributes of one tag after another; of duplicates, the first. Room for all of them is
// made once, so that a tag costs no allocation, whatever it holds.
class KnownAttributes {
 public:
  // page    the bytes that offsets count in; must outlive this
  // extras  names besides the built-in ones, or null; must outlive this
  KnownAttributes(std::string_view page, const ExtraNames* extras);

  void clear() {
    count_ = 0;
    lastTag_[kUnknownName] = ++tag_;  // so that an unknown one never counts
  }

  void add(const char* name, const NameKey& key, const char* value, const char* valueEnd) {
    const NameId known = find(name, key);
    const std::uint32_t begin = offset(name);
    TagAttribute* const list = list_.data();
    list[count_] = {known, begin, begin + static_cast<std::uint32_t>(key.length), offset(value),
                    offset(valueEnd)};
    // No branch: which names are known is beyond prediction.
    std::uint64_t* const lastTag = lastTag_.data();
    count_ += static_cast<std::uint32_t>(lastTag[known] != tag_);
    lastTag[known] = tag_;
  }

  const TagAttribute* data() const { return list_.data(); }
  std::uint32_t size() const { return count_; }

 private:
  NameId find(const char* name, const NameKey& key) const {
    const NameId known = findAttribute(name, key);
    if (known != kUnknownName || extras_ == nullptr) return known;
    return extras_->find({name, key.length});
  }
  std::uint32_t offset(const char* at) const {
    return static_cast<std::uint32_t>(at - page_.data());
  }

  std::string_view page_;
  const ExtraNames* extras_;
  std::vector<TagAttribute> list_;
  std::vector<std::uint64_t> lastTag_;  // by name: the tag that had it last
  std::uint64_t tag_ = 1;
  std::uint32_t count_ = 0;
};

// All attributes of one tag after another, known or not; of duplicates, the first. For tests: its
// cost is quadratic in the attributes of a tag.
class AllAttributes {
 public:
  AllAttributes(std::string_view page, const ExtraNames*) : page_(page) {}

  void clear() { list_.clear(); }
  void add(const char* name, const NameKey& key, const char* value, const char* valueEnd);
  const TagAttribute* data() const { return list_.data(); }
  std::uint32_t size() const { return static_cast<std::uint32_t>(list_.size()); }

 private:
  std::string_view page_;
  std::vector<TagAttribute> list_;
};

// The names of the attributes that one element has.
class AttributeNames {
 public:
  void clear() {
    known_.clear();
    unknown_.clear();
  }
  // Notes the name of an attribute; false for one that the element has already.
  bool insert(std::string_view page, const TagAttribute& attribute);

 private:
  std::vector<bool> known_;           // by number
  std::vector<std::string> unknown_;  // only of AllAttributes
};

// A name as the tokenizer has it: ASCII letters in lower case, NUL as U+FFFD in UTF-8.
std::string tokenizedName(std::string_view name);

// What makes two tags elements of one kind: equal for tags of equal names whose attributes have the
// same names and decoded values, in any order.
// tag  from the "<" of a whole start tag to any place after its end
// Cost linear in the tag, but for sorting the attributes.
std::string tagKind(std::string_view tag);

// An attribute's value, its character references decoded.
std::string decodedAttribute(std::string_view value);

// Whether a value, decoded, is this word, with ASCII case ignored.
// value  as written between its quotes; word  in lower case
bool valueIs(std::string_view value, std::string_view word);

}  // namespace pagescan::internal

#endif
