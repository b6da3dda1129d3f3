#include "output/utf8_text.h"

#include <algorithm>
#include <iterator>

namespace pagescan::tool {

namespace {

// The well-formed sequences of more than one byte: which second bytes may follow a lead byte.
struct LeadBytes {
  unsigned char first, last;
  unsigned char secondFirst, secondLast;
  unsigned char length;
};
constexpr LeadBytes kLeadBytes[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

// Characters that a terminal obeys instead of showing them.
struct CodeRange {
  char32_t first, last;
};
constexpr CodeRange kUnprintable[] = {
    {0x00, 0x1F},      // C0 controls
    {0x7F, 0x9F},      // DEL and C1 controls
    {0x061C, 0x061C},  // Arabic letter mark
    {0x200E, 0x200F},  // direction marks
    {0x2028, 0x202E},  // separators, embeddings and overrides
    {0x2066, 0x2069},  // isolates
};

unsigned char byteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

bool isPrintable(const Utf8Char& character) {
  return character.wellFormed && std::none_of(std::begin(kUnprintable), std::end(kUnprintable),
                                              [&](const CodeRange& range) {
                                                return range.first <= character.code &&
                                                       character.code <= range.last;
                                              });
}

void appendHex(std::string& result, std::string_view bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    result.append("\\x");
    result.push_back(kDigits[byteAt(bytes, i) >> 4]);
    result.push_back(kDigits[byteAt(bytes, i) & 0xF]);
  }
}

}  // namespace

Utf8Char firstUtf8Char(std::string_view text) {
  const unsigned char lead = byteAt(text, 0);
  if (lead < 0x80) return {true, lead, 1};
  const auto* row = std::find_if(std::begin(kLeadBytes), std::end(kLeadBytes), [&](auto& bytes) {
    return bytes.first <= lead && lead <= bytes.last;
  });
  if (row == std::end(kLeadBytes)) return {false, 0, 1};

  char32_t code = lead & (0xFFU >> (row->length + 1));
  for (std::size_t i = 1; i < row->length; ++i) {
    const unsigned char lowest = i == 1 ? row->secondFirst : 0x80;
    const unsigned char highest = i == 1 ? row->secondLast : 0xBF;
    if (i >= text.size() || byteAt(text, i) < lowest || byteAt(text, i) > highest) {
      return {false, 0, i};
    }
    code = code << 6 | (byteAt(text, i) & 0x3F);
  }
  return {true, code, row->length};
}

bool isWellFormedUtf8(std::string_view text) {
  while (!text.empty()) {
    const Utf8Char character = firstUtf8Char(text);
    if (!character.wellFormed) return false;
    text.remove_prefix(character.length);
  }
  return true;
}

std::string bytesAsCodePoints(std::string_view bytes) {
  std::string result;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const unsigned char byte = byteAt(bytes, i);
    if (byte < 0x80) {
      result.push_back(static_cast<char>(byte));
    } else {
      result.push_back(static_cast<char>(0xC0 | byte >> 6));
      result.push_back(static_cast<char>(0x80 | (byte & 0x3F)));
    }
  }
  return result;
}

std::string printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const Utf8Char character = firstUtf8Char(text);
    const std::string_view bytes = text.substr(0, character.length);
    if (!isPrintable(character)) {
      appendHex(result, bytes);
    } else {
      result.append(bytes);
      if (bytes == "\\") result.append(bytes);
    }
    text.remove_prefix(character.length);
  }
  return result;
}

}  // namespace pagescan::tool
