#include "reference/classic/strings.h"

namespace reference {

char toLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
char toUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isBlank(char c) {
  return c == '\t' || c == '\n' || c == '\r' || c == ' ';
}

std::string lowered(std::string text) {
  for (char& c : text) c = toLower(c);
  return text;
}

std::string uppered(std::string text) {
  for (char& c : text) c = toUpper(c);
  return text;
}

namespace {

bool standsAt(const std::string& text, const std::string& pattern, std::size_t place, Case fold) {
  for (std::size_t i = 0; i < pattern.length(); ++i) {
    const char a = text[place + i];
    const char b = pattern[i];
    if (fold == Case::ignore ? toLower(a) != toLower(b) : a != b) return false;
  }
  return true;
}

}  // namespace

std::size_t index(const std::string& text, const std::string& pattern, std::size_t start,
                  Case fold) {
  if (start > text.length()) return npos;
  for (std::size_t place = start; place + pattern.length() <= text.length(); ++place) {
    if (standsAt(text, pattern, place, fold)) return place;
  }
  return npos;
}

std::string strip(const std::string& text, Strip ends, char c) {
  std::size_t begin = 0;
  std::size_t end = text.length();
  if (ends != Strip::trailing) {
    while (begin < end && text[begin] == c) ++begin;
  }
  if (ends != Strip::leading) {
    while (begin < end && text[end - 1] == c) --end;
  }
  return text.substr(begin, end - begin);
}

char byteAt(const std::string& text, std::size_t offset) {
  return offset < text.length() ? text[offset] : '\0';
}

int compareBounded(const char* a, const char* b, std::size_t count, Case fold) {
  for (std::size_t i = 0; i < count; ++i) {
    const char left = fold == Case::ignore ? toLower(a[i]) : a[i];
    const char right = fold == Case::ignore ? toLower(b[i]) : b[i];
    if (left != right) {
      return static_cast<int>(static_cast<unsigned char>(left)) -
             static_cast<int>(static_cast<unsigned char>(right));
    }
    if (left == '\0') return 0;
  }
  return 0;
}

}  // namespace reference
