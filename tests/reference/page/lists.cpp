#include "reference/page/lists.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace reference::page {

namespace {

Text slice(const Text& text, std::size_t begin, std::size_t end) {
  return Text(text.begin() + static_cast<std::ptrdiff_t>(begin),
              text.begin() + static_cast<std::ptrdiff_t>(end));
}

bool isDigits(const std::string& text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isZero(const std::string& digits) {
  return digits.find_first_not_of('0') == std::string::npos;
}

// 2.3.4.3 "valid floating-point number".
bool isFloat(const std::string& text) {
  std::size_t at = text.starts_with('-') ? 1 : 0;
  const auto digits = [&] {
    const std::size_t from = at;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') ++at;
    return at - from;
  };
  const bool hasInteger = digits() > 0;
  if (at < text.size() && text[at] == '.') {
    ++at;
    if (digits() == 0) return false;
  } else if (!hasInteger) {
    return false;
  }
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    if (digits() == 0) return false;
  }
  return at == text.size();
}

// The descriptor parser of a candidate.
bool areDescriptorsRight(const std::vector<std::string>& descriptors) {
  bool hasWidth = false;
  bool hasDensity = false;
  bool hasHeight = false;
  for (const std::string& descriptor : descriptors) {
    const char last = descriptor.back();
    const std::string number = descriptor.substr(0, descriptor.size() - 1);
    if (last == 'w' && isDigits(number)) {
      if (hasWidth || hasDensity || isZero(number)) return false;
      hasWidth = true;
    } else if (last == 'x' && isFloat(number)) {
      if (hasWidth || hasDensity || hasHeight) return false;
      if (std::strtod(number.c_str(), nullptr) < 0) return false;
      hasDensity = true;
    } else if (last == 'h' && isDigits(number)) {
      if (hasHeight || hasDensity || isZero(number)) return false;
      hasHeight = true;
    } else {
      return false;
    }
  }
  return !hasHeight || hasWidth;
}

// Reads the descriptors from `at` on, to after the comma that ends them.
std::vector<std::string> descriptorsAt(const Text& value, std::size_t& at) {
  enum class State { inDescriptor, inParens, afterDescriptor };
  std::vector<std::string> descriptors;
  std::string current;
  const auto finish = [&] {
    if (!current.empty()) descriptors.push_back(current);
    current.clear();
  };
  State state = State::inDescriptor;
  while (at < value.size() && isWhitespace(value[at].code)) ++at;
  for (; at < value.size(); ++at) {
    const char32_t c = value[at].code;
    if (state == State::inParens) {
      appendUtf8(current, c);
      if (c == ')') state = State::inDescriptor;
      continue;
    }
    if (isWhitespace(c)) {
      finish();
      state = State::afterDescriptor;
      continue;
    }
    state = State::inDescriptor;
    if (c == ',') {
      ++at;
      break;
    }
    appendUtf8(current, c);
    if (c == '(') state = State::inParens;
  }
  finish();
  return descriptors;
}

}  // namespace

std::vector<Text> srcsetUrls(const Text& value) {
  std::vector<Text> urls;
  std::size_t at = 0;
  for (;;) {
    while (at < value.size() && (isWhitespace(value[at].code) || value[at].code == ',')) ++at;
    if (at >= value.size()) return urls;
    const std::size_t begin = at;
    while (at < value.size() && !isWhitespace(value[at].code)) ++at;
    std::size_t end = at;
    while (value[end - 1].code == ',') --end;
    const bool hasDescriptors = end == at;
    if (!hasDescriptors || areDescriptorsRight(descriptorsAt(value, at))) {
      urls.push_back(slice(value, begin, end));
    }
  }
}

std::optional<Text> refreshUrl(const Text& value) {
  std::size_t at = 0;
  const auto codeAt = [&](std::size_t i) { return i < value.size() ? value[i].code : 0xFFFFFFFF; };
  const auto skipSpace = [&] {
    while (isWhitespace(codeAt(at))) ++at;
  };
  skipSpace();
  const std::size_t time = at;
  while (isAsciiDigit(codeAt(at))) ++at;
  if (at == time && codeAt(at) != '.') return std::nullopt;
  while (isAsciiDigit(codeAt(at)) || codeAt(at) == '.') ++at;
  if (at >= value.size()) return std::nullopt;
  if (codeAt(at) != ';' && codeAt(at) != ',' && !isWhitespace(codeAt(at))) return std::nullopt;
  skipSpace();
  if (codeAt(at) == ';' || codeAt(at) == ',') ++at;
  skipSpace();
  if (at >= value.size()) return std::nullopt;

  const std::size_t whole = at;
  const auto isLetter = [&](char32_t lower) {
    if (toAsciiLower(codeAt(at)) != lower) return false;
    ++at;
    return true;
  };
  if (isLetter('u')) {
    if (!isLetter('r') || !isLetter('l')) return slice(value, whole, value.size());
    skipSpace();
    if (codeAt(at) != '=') return slice(value, whole, value.size());
    ++at;
    skipSpace();
  }
  std::size_t end = value.size();
  if (codeAt(at) == '"' || codeAt(at) == '\'') {
    const char32_t quote = codeAt(at++);
    for (std::size_t i = value.size(); i-- > at;) {
      if (value[i].code == quote) end = i;
    }
  }
  return slice(value, at, end);
}

std::vector<Text> wordsOf(const Text& value) {
  std::vector<Text> words;
  for (std::size_t at = 0; at < value.size();) {
    const std::size_t begin = at;
    while (at < value.size() && !isWhitespace(value[at].code)) ++at;
    if (at > begin) words.push_back(slice(value, begin, at));
    ++at;
  }
  return words;
}

std::vector<Text> commaItemsOf(const Text& value) {
  std::vector<Text> items;
  for (std::size_t at = 0; at <= value.size(); ++at) {
    std::size_t begin = at;
    while (at < value.size() && value[at].code != ',') ++at;
    std::size_t end = at;
    while (begin < end && isWhitespace(value[begin].code)) ++begin;
    while (begin < end && isWhitespace(value[end - 1].code)) --end;
    if (begin < end) items.push_back(slice(value, begin, end));
  }
  return items;
}

}  // namespace reference::page
