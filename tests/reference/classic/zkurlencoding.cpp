#include "reference/classic/zkurlencoding.h"

#include <cstddef>
#include <map>
#include <vector>

#include "reference/classic/scannumber.h"
#include "reference/classic/strings.h"

namespace reference {

// ---- tables

namespace {

std::size_t indexOf(char c) {
  return static_cast<unsigned char>(c);
}

void keep(CharArray& table, const std::string& bytes) {
  for (const char c : bytes) table[indexOf(c)] = std::string(1, c);
}

}  // namespace

CharArray FillASCII_chars(bool upper) {
  const std::string digits = upper ? "0123456789ABCDEF" : "0123456789abcdef";
  CharArray table;
  for (std::size_t c = 0; c < 256; ++c) {
    const char byte = static_cast<char>(c);
    if (isLetter(byte) || isDigit(byte)) {
      table[c] = std::string(1, byte);
    } else {
      table[c] = std::string("%") + digits[c / 16] + digits[c % 16];
    }
  }
  return table;
}

CharArray FillBrowserSpecials() {
  CharArray table = FillASCII_chars(true);
  table[indexOf(' ')] = "+";
  keep(table, "@*_-.");
  return table;
}

CharArray FillEscapeSpecials() {
  CharArray table = FillBrowserSpecials();
  table[indexOf(' ')] = "%20";
  keep(table, "+/");
  return table;
}

CharArray FillEscapeURIComponentSpecials() {
  CharArray table = FillBrowserSpecials();
  table[indexOf(' ')] = "%20";
  table[indexOf('@')] = "%40";
  keep(table, "~!()'`");
  return table;
}

CharArray FillEscapeURISpecials() {
  CharArray table = FillEscapeURIComponentSpecials();
  keep(table, "@#$&+=;:?/");
  return table;
}

CharArray FillChromeSpecials() {
  CharArray table = FillEscapeURIComponentSpecials();
  table[indexOf(' ')] = "+";
  keep(table, "()<>~!*_-");
  return table;
}

CharArray FillChrome94Specials() {
  CharArray table = FillASCII_chars(true);
  keep(table, "!$%()*+,-./:;@[\\]^_`{|}~");
  return table;
}

CharArray FillSiebelSpecials() {
  CharArray table = FillASCII_chars(false);
  keep(table, "!$_()+*',-.");
  return table;
}

namespace {

CharArray FillBrowserSignSpecials() {
  CharArray table = FillBrowserSpecials();
  table[indexOf('@')] = "%40";
  return table;
}

}  // namespace

const CharArray& tableOf(int type) {
  static const std::map<int, CharArray> tables = {
      {1, FillBrowserSpecials()},     {2, FillEscapeSpecials()},
      {3, FillEscapeURISpecials()},   {4, FillEscapeURIComponentSpecials()},
      {5, FillBrowserSignSpecials()}, {6, FillChromeSpecials()},
      {7, FillChrome94Specials()},    {8, FillSiebelSpecials()},
  };
  const bool known = type >= 1 && type <= 8;
  return tables.at(known ? type : 1);
}

// ---- encoding and decoding

bool EncodeString(const std::string& source, std::string& destination, int type,
                  const std::string& placeholder) {
  if (source.empty()) return false;
  const std::string original = source;
  if (type == 0) {
    destination += original;
    return false;
  }
  const CharArray& table = tableOf(type);
  std::size_t i = 0;
  while (i < original.length()) {
    if (!placeholder.empty() && original.substr(i, placeholder.length()) == placeholder) {
      destination += '%';
      i += placeholder.length();
    } else {
      destination += table[indexOf(original[i])];
      ++i;
    }
  }
  return true;
}

bool DecodeString(std::string& text, int type, const std::string& placeholder) {
  bool changed = false;
  if (type != 7 && type != 8) {
    for (char& c : text) {
      if (c != '+') continue;
      c = ' ';
      changed = true;
    }
  }
  std::string decoded;
  std::size_t at = 0;
  while (true) {
    const std::size_t percent = index(text, "%", at);
    if (percent == npos || text.length() - (percent + 1) < 2) {
      decoded += text.substr(at);
      break;
    }
    decoded += text.substr(at, percent - at);
    int value = 0;
    scanTwoHexDigits(text.substr(percent + 1, 2), value);
    if (value >= 32) {
      decoded += static_cast<char>(value);
      at = percent + 3;
      changed = true;
    } else {
      decoded += placeholder;
      at = percent + 1;
    }
  }
  text = decoded;
  return changed;
}

// ---- checks

namespace {

std::vector<std::string> splitAt(const std::string& text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

bool isCanonical(const std::string& text, int type, const std::string& placeholder) {
  std::string decoded = text;
  DecodeString(decoded, type, placeholder);
  std::string encoded;
  EncodeString(decoded, encoded, type, placeholder);
  return encoded == text;
}

}  // namespace

bool CheckUrlDecoding(const std::string& text, int type, const std::string& placeholder) {
  if (text.empty()) return true;
  for (const std::string& item : splitAt(text, '&')) {
    const std::size_t equals = index(item, "=", 0);
    const std::string name = item.substr(0, equals);
    const std::string value = equals == npos ? "" : item.substr(equals + 1);
    if (!isCanonical(name, type, placeholder)) return false;
    if (!isCanonical(value, type, placeholder)) return false;
  }
  return true;
}

int CheckUrlDecoding(const std::string& text) {
  for (int type = 1; type <= 8; ++type) {
    if (CheckUrlDecoding(text, type)) return type;
  }
  return 0;
}

bool EncodeStringUnreadables(const char* source, unsigned long length, std::string& output) {
  if (source == nullptr) return false;
  const CharArray& browser = tableOf(1);
  std::string readable;
  for (unsigned long i = 0; i < length; ++i) {
    const char c = source[i];
    if (c == '\t' || c == '\n' || c == '\r' || (c >= 32 && c <= 126)) {
      readable += c;
    } else {
      readable += browser[indexOf(c)];
    }
  }
  output = readable;
  return true;
}

}  // namespace reference
