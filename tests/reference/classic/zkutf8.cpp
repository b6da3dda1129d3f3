#include "reference/classic/zkutf8.h"

#include <algorithm>
#include <cstddef>

namespace reference {

namespace {

bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}
bool isLead(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0xC0;
}
bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

}  // namespace

bool isUtf8(const char* bytes, int length) {
  if (length < 2) return false;
  int good = 0;
  int bad = 0;
  for (int i = 1; i < length; ++i) {
    const char p = bytes[i - 1];
    const char c = bytes[i];
    if (isContinuation(c)) {
      if (isLead(p)) {
        ++good;
      } else if (isAscii(p)) {
        ++bad;
      }
    } else if (isLead(p)) {
      ++bad;
      if (bad > 10) return false;
    }
  }
  if (good == 0 && bad == 0) return false;
  return bad <= std::min(good, 9);
}

// ---- host routines

std::string latin1ToUtf8(const std::string& text) {
  std::string out;
  for (const char c : text.substr(0, text.find('\0'))) {
    const unsigned code = static_cast<unsigned char>(c);
    if (code < 0x80) {
      out += c;
    } else {
      out += static_cast<char>(0xC0 | (code >> 6));
      out += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return out;
}

namespace {

// The well-formed sequences: the lead byte, the bounds of the second byte, the number of bytes.
struct Form {
  unsigned firstLead, lastLead, lowSecond, highSecond;
  std::size_t length;
};

const Form kForms[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

struct Step {
  std::size_t length;  // bytes to step over
  bool wellFormed;
};

// The sequence at `at`, which is no ASCII byte; a malformed one reaches as far as it could have
// begun a well-formed one, and at least over one byte.
Step sequenceAt(const std::string& text, std::size_t at) {
  const auto byte = [&](std::size_t i) -> unsigned {
    return i < text.length() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  for (const Form& form : kForms) {
    if (byte(at) < form.firstLead || byte(at) > form.lastLead) continue;
    if (byte(at + 1) < form.lowSecond || byte(at + 1) > form.highSecond) return {1, false};
    for (std::size_t i = 2; i < form.length; ++i) {
      if (byte(at + i) < 0x80 || byte(at + i) > 0xBF) return {i, false};
    }
    return {form.length, true};
  }
  return {1, false};
}

}  // namespace

std::string utf8ToLatin1(const std::string& text) {
  const std::string source = text.substr(0, text.find('\0'));
  std::string out;
  std::size_t at = 0;
  while (at < source.length()) {
    const unsigned lead = static_cast<unsigned char>(source[at]);
    if (lead < 0x80) {
      out += source[at++];
      continue;
    }
    const Step step = sequenceAt(source, at);
    const bool fits = step.wellFormed && (lead == 0xC2 || lead == 0xC3);
    if (fits) {
      const unsigned second = static_cast<unsigned char>(source[at + 1]);
      out += static_cast<char>(((lead & 0x03) << 6) | (second & 0x3F));
    } else {
      out += '?';
    }
    at += step.length;
  }
  return out;
}

// ---- conversion in place

const char* ConvertUtf8toAnsi(std::string& text) {
  if (!text.empty() && isUtf8(text.data(), static_cast<int>(text.length()))) {
    text = utf8ToLatin1(text);
  }
  return text.data();
}

const char* ConvertAnsitoUtf8(std::string& text) {
  if (!text.empty() && !isUtf8(text.data(), static_cast<int>(text.length()))) {
    text = latin1ToUtf8(text);
  }
  return text.data();
}

}  // namespace reference
