#include "page/tag_scanner.h"

#include <algorithm>

#include "page/character_references.h"

namespace pagescan::internal {

KnownAttributes::KnownAttributes(std::string_view page, const ExtraNames* extras)
    : page_(page), extras_(extras) {
  const std::size_t names = kAttributeCount + (extras == nullptr ? 0 : extras->size());
  list_.resize(names);
  lastTag_.resize(names);
}

void AllAttributes::add(const char* name, const NameKey& key, const char* value,
                        const char* valueEnd) {
  const auto offset = [this](const char* at) {
    return static_cast<std::uint32_t>(at - page_.data());
  };
  const std::string own = tokenizedName({name, key.length});
  for (const TagAttribute& other : list_) {
    const auto otherLength = other.nameEnd - other.nameBegin;
    if (tokenizedName(page_.substr(other.nameBegin, otherLength)) == own) return;
  }
  list_.push_back({findAttribute(name, key), offset(name), offset(name + key.length), offset(value),
                   offset(valueEnd)});
}

bool AttributeNames::insert(std::string_view page, const TagAttribute& attribute) {
  if (attribute.name == kUnknownName) {
    std::string name =
        tokenizedName(page.substr(attribute.nameBegin, attribute.nameEnd - attribute.nameBegin));
    if (std::find(unknown_.begin(), unknown_.end(), name) != unknown_.end()) return false;
    unknown_.push_back(std::move(name));
    return true;
  }
  if (known_.size() <= attribute.name) known_.resize(attribute.name + std::size_t{1});
  const bool isNew = !known_[attribute.name];
  known_[attribute.name] = true;
  return isNew;
}

std::string tokenizedName(std::string_view name) {
  std::string result;
  result.reserve(name.size());
  for (const char c : name) {
    if (c == '\0') {
      result += "\xEF\xBF\xBD";
    } else {
      result += toLower(c);
    }
  }
  return result;
}

namespace {

void appendUtf8(std::string& text, char32_t code) {
  const auto byte = [&text](char32_t value) { text += static_cast<char>(value); };
  if (code < 0x80) return byte(code);
  if (code < 0x800) {
    byte(0xC0 | (code >> 6));
  } else {
    if (code < 0x10000) {
      byte(0xE0 | (code >> 12));
    } else {
      byte(0xF0 | (code >> 18));
      byte(0x80 | ((code >> 12) & 0x3F));
    }
    byte(0x80 | ((code >> 6) & 0x3F));
  }
  byte(0x80 | (code & 0x3F));
}

}  // namespace

std::string decodedAttribute(std::string_view value) {
  std::string text;
  text.reserve(value.size());
  const char* const end = value.data() + value.size();
  for (const char* at = value.data(); at != end;) {
    if (*at == '&') {
      const CharacterReference reference =
          readCharacterReference(at, end, ReferenceContext::attribute);
      if (reference.length != 0) {
        appendUtf8(text, reference.first);
        if (reference.second != 0) appendUtf8(text, reference.second);
        at += reference.length;
        continue;
      }
    }
    if (*at == '\r') {
      text += '\n';
      if (at + 1 != end && at[1] == '\n') ++at;
    } else if (*at == '\0') {
      text += "\xEF\xBF\xBD";
    } else {
      text += *at;
    }
    ++at;
  }
  return text;
}

std::string tagKind(std::string_view tag) {
  const char* const end = tag.data() + tag.size();
  const char* const nameEnd = skipTo(tag.data() + 1, end, kTagNameEnd);
  std::string kind = tokenizedName({tag.data() + 1, nameEnd});
  std::vector<std::pair<std::string, std::string>> attributes;
  PlainBytes bytes(end);
  scanAttributes(
      nameEnd, bytes,
      [&](const char* name, const NameKey& key, const char* value, const char* valueStop) {
        attributes.emplace_back(tokenizedName({name, key.length}),
                                decodedAttribute({value, valueStop}));
      });
  const auto byName = [](const auto& a, const auto& b) { return a.first < b.first; };
  std::stable_sort(attributes.begin(), attributes.end(), byName);
  std::string_view last;
  for (const auto& [name, value] : attributes) {
    if (name == last) continue;
    last = name;
    kind.append(1, '\0').append(name).append(1, '\0').append(value);
  }
  return kind;
}

bool valueIs(std::string_view value, std::string_view word) {
  const auto equals = [word](std::string_view text) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char a, char b) { return toLower(a) == b; });
  };
  if (value.find('&') == std::string_view::npos) return equals(value);
  return equals(decodedAttribute(value));
}

}  // namespace pagescan::internal
