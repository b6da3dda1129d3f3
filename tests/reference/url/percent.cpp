#include "reference/url/percent.h"

namespace reference {
namespace {

bool isOneOf(char32_t c, std::u32string_view set) {
  return set.find(c) != std::u32string_view::npos;
}

// How many bytes the character with this lead byte has; 0 for none.
int lengthOf(unsigned lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

bool mayFollow(unsigned lead, int index, unsigned byte) {
  if (index == 1 && lead == 0xE0) return byte >= 0xA0 && byte <= 0xBF;
  if (index == 1 && lead == 0xED) return byte >= 0x80 && byte <= 0x9F;
  if (index == 1 && lead == 0xF0) return byte >= 0x90 && byte <= 0xBF;
  if (index == 1 && lead == 0xF4) return byte >= 0x80 && byte <= 0x8F;
  return byte >= 0x80 && byte <= 0xBF;
}

}  // namespace

bool isInC0ControlSet(char32_t c) {
  return c <= 0x1F || c > 0x7E;
}
bool isInFragmentSet(char32_t c) {
  return isInC0ControlSet(c) || isOneOf(c, U" \"<>`");
}
bool isInQuerySet(char32_t c) {
  return isInC0ControlSet(c) || isOneOf(c, U" \"#<>");
}
bool isInSpecialQuerySet(char32_t c) {
  return isInQuerySet(c) || c == '\'';
}
bool isInPathSet(char32_t c) {
  return isInQuerySet(c) || isOneOf(c, U"?^`{}");
}
bool isInUserinfoSet(char32_t c) {
  return isInPathSet(c) || isOneOf(c, U"/:;=@[\\]|");
}

CodePoints percentEncode(char32_t byte) {
  const std::u32string_view digits = U"0123456789ABCDEF";
  return {U'%', digits[byte / 16], digits[byte % 16]};
}

CodePoints utf8PercentEncode(char32_t c, PercentEncodeSet set) {
  if (!set(c)) return CodePoints(1, c);
  CodePoints result;
  for (const char byte : encodeUtf8(CodePoints(1, c))) {
    result += percentEncode(static_cast<unsigned char>(byte));
  }
  return result;
}

int hexValue(char32_t c) {
  if (c >= '0' && c <= '9') return static_cast<int>(c - '0');
  if (c >= 'a' && c <= 'f') return static_cast<int>(c - 'a') + 10;
  if (c >= 'A' && c <= 'F') return static_cast<int>(c - 'A') + 10;
  return -1;
}

std::string percentDecode(const CodePoints& input) {
  const std::string bytes = encodeUtf8(input);
  const auto hexAt = [&](std::size_t i) {
    return i < bytes.size() ? hexValue(static_cast<unsigned char>(bytes[i])) : -1;
  };
  std::string output;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] != '%' || hexAt(i + 1) < 0 || hexAt(i + 2) < 0) {
      output += bytes[i];
    } else {
      output += static_cast<char>(hexAt(i + 1) * 16 + hexAt(i + 2));
      i += 2;
    }
  }
  return output;
}

CodePoints decodeUtf8(std::string_view bytes) {
  CodePoints result;
  const auto byteAt = [&](std::size_t i) { return unsigned{static_cast<unsigned char>(bytes[i])}; };
  for (std::size_t i = 0; i < bytes.size();) {
    const unsigned lead = byteAt(i++);
    const int length = lengthOf(lead);
    if (length < 2) {
      result += length == 0 ? char32_t{0xFFFD} : char32_t{lead};
      continue;
    }
    char32_t c = lead & (0xFFU >> (length + 1));
    int read = 1;
    for (; read < length && i < bytes.size() && mayFollow(lead, read, byteAt(i)); ++read) {
      c = c * 64 + byteAt(i++) % 64;
    }
    result += read == length ? c : char32_t{0xFFFD};
  }
  return result;
}

std::string encodeUtf8(const CodePoints& text) {
  std::string out;
  const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
  for (const char32_t c : text) {
    if (c < 0x80) {
      put(c);
    } else if (c < 0x800) {
      put(0xC0 + c / 64);
      put(0x80 + c % 64);
    } else if (c < 0x10000) {
      put(0xE0 + c / 4096);
      put(0x80 + c / 64 % 64);
      put(0x80 + c % 64);
    } else {
      put(0xF0 + c / 262144);
      put(0x80 + c / 4096 % 64);
      put(0x80 + c / 64 % 64);
      put(0x80 + c % 64);
    }
  }
  return out;
}

}  // namespace reference
