#include "reference/page/text.h"

#include <algorithm>

namespace reference::page {

void appendUtf8(std::string& out, char32_t code) {
  const auto put = [&](char32_t byte) { out += static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

std::string toUtf8(const Text& text) {
  std::string out;
  for (const Char& c : text) appendUtf8(out, c.code);
  return out;
}

Text fromUtf8(std::string_view utf8) {
  Text text;
  for (std::size_t at = 0; at < utf8.size();) {
    const auto byte = static_cast<unsigned char>(utf8[at]);
    const std::size_t size = byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    char32_t code = size == 1 ? byte : byte & (0x7Fu >> size);
    for (std::size_t i = 1; i < size && at + i < utf8.size(); ++i) {
      code = code << 6 | (static_cast<unsigned char>(utf8[at + i]) & 0x3Fu);
    }
    const auto begin = static_cast<std::uint32_t>(at);
    text.push_back({code, begin, begin + static_cast<std::uint32_t>(size)});
    at += size;
  }
  return text;
}

bool isAsciiUpper(char32_t c) {
  return c >= 'A' && c <= 'Z';
}

bool isAsciiAlpha(char32_t c) {
  return isAsciiUpper(c) || (c >= 'a' && c <= 'z');
}

bool isAsciiDigit(char32_t c) {
  return c >= '0' && c <= '9';
}

bool isAsciiHexDigit(char32_t c) {
  return isAsciiDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool isAsciiAlphanumeric(char32_t c) {
  return isAsciiAlpha(c) || isAsciiDigit(c);
}

bool isWhitespace(char32_t c) {
  return c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

char32_t toAsciiLower(char32_t c) {
  return isAsciiUpper(c) ? c + 0x20 : c;
}

unsigned hexValue(char32_t digit) {
  if (isAsciiDigit(digit)) return static_cast<unsigned>(digit - '0');
  return static_cast<unsigned>(toAsciiLower(digit) - 'a') + 10;
}

std::string toAsciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 0x20);
  }
  return lower;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return toAsciiLower(a) == toAsciiLower(b);
}

bool startsWithIgnoringCase(std::string_view text, std::string_view prefix) {
  return equalsIgnoringCase(text.substr(0, prefix.size()), prefix);
}

std::string_view stripped(std::string_view text) {
  const auto blank = [](char c) { return isWhitespace(static_cast<unsigned char>(c)); };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

std::vector<std::string> splitOnWhitespace(std::string_view text) {
  std::vector<std::string> words;
  bool inWord = false;
  for (const char c : text) {
    if (isWhitespace(static_cast<unsigned char>(c))) {
      inWord = false;
      continue;
    }
    if (!inWord) words.emplace_back();
    inWord = true;
    words.back() += c;
  }
  return words;
}

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace reference::page
