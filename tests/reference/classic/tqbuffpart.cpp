#include "reference/classic/tqbuffpart.h"

#include "reference/classic/strings.h"

namespace reference {

int g_strnicmp(const char* a, const char* b, std::size_t n) {
  return compareBounded(a, b, n, Case::ignore);
}

int comparePart(const std::string& part, const std::string& text, bool ignoreCase) {
  const auto cmp = [&](std::size_t count) {
    return ignoreCase ? g_strnicmp(part.c_str(), text.c_str(), count)
                      : compareBounded(part.c_str(), text.c_str(), count, Case::exact);
  };
  if (part.length() < text.length()) {
    const int r = cmp(part.length());
    return r != 0 ? r : -1;
  }
  if (part.length() == text.length()) return cmp(part.length());
  const int r = cmp(text.length());
  return r != 0 ? r : 1;
}

std::string copyOfPart(const std::string& part) {
  std::string copy = part.substr(0, part.find('\0'));
  copy.resize(part.length(), '\0');
  return copy;
}

}  // namespace reference
