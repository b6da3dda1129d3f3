#include "output/json.h"

#include <bit>
#include <charconv>
#include <cstddef>
#include <cstring>

#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

using Word = std::uint64_t;
constexpr Word kOnes = 0x0101'0101'0101'0101;
constexpr Word kTops = 0x80 * kOnes;

// The top bit of each byte that is zero; a byte above one that is zero may be marked falsely.
constexpr Word zeroBytes(Word word) {
  return (word - kOnes) & ~word & kTops;
}

// The same of each byte that a JSON string must escape: below a blank, a quote, a backslash.
constexpr Word escapedBytes(Word word) {
  const Word controls = (word - 0x20 * kOnes) & ~word & kTops;
  return controls | zeroBytes(word ^ '"' * kOnes) | zeroBytes(word ^ '\\' * kOnes);
}

constexpr bool mustBeEscaped(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

// The number of bytes in front of the first one that must be escaped. The lowest mark of a word is
// always true.
std::size_t plainLength(std::string_view text) {
  std::size_t at = 0;
  if constexpr (std::endian::native == std::endian::little) {
    for (Word word; at + sizeof word <= text.size(); at += sizeof word) {
      std::memcpy(&word, text.data() + at, sizeof word);
      const Word marks = escapedBytes(word);
      if (marks != 0) return at + static_cast<std::size_t>(std::countr_zero(marks)) / 8;
    }
  }
  while (at < text.size() && !mustBeEscaped(text[at])) ++at;
  return at;
}

void appendEscape(std::string& out, char byte) {
  constexpr char kDigits[] = "0123456789abcdef";
  constexpr std::string_view kShort = "\"\"\\\\\bb\ff\nn\rr\tt";  // pairs: the byte, its letter
  for (std::size_t i = 0; i < kShort.size(); i += 2) {
    if (kShort[i] != byte) continue;
    out.append({'\\', kShort[i + 1]});
    return;
  }
  out.append({'\\', 'u', '0', '0', kDigits[byte >> 4], kDigits[byte & 0xF]});
}

bool isAscii(std::string_view text) {
  Word tops = 0;
  std::size_t at = 0;
  for (Word word; at + sizeof word <= text.size(); at += sizeof word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    tops |= word;
  }
  for (; at < text.size(); ++at) tops |= static_cast<unsigned char>(text[at]);
  return (tops & kTops) == 0;
}

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
  out.push_back('"');
  for (;;) {
    const std::size_t plain = plainLength(text);
    out.append(text.substr(0, plain));
    if (plain == text.size()) break;
    appendEscape(out, text[plain]);
    text.remove_prefix(plain + 1);
  }
  out.push_back('"');
}

void JsonWriter::beginLine() {
  isFirst_ = true;
  notUtf8_.clear();
}

void JsonWriter::addText(std::string_view member, std::string_view text) {
  addName(member);
  appendJsonString(out_, text);
}

void JsonWriter::addBytes(std::string_view member, std::string_view bytes) {
  if (isAscii(bytes) || isWellFormedUtf8(bytes)) {
    addText(member, bytes);
  } else {
    addText(member, bytesAsCodePoints(bytes));
    notUtf8_.push_back(member);
  }
}

void JsonWriter::addNumber(std::string_view member, std::int64_t number) {
  addName(member);
  char digits[20];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  out_.append(digits, end);
}

void JsonWriter::addWords(std::string_view member, const std::vector<std::string_view>& words) {
  addName(member);
  char separator = '[';
  for (const std::string_view word : words) {
    out_.push_back(separator);
    appendJsonString(out_, word);
    separator = ',';
  }
  out_.append(words.empty() ? "[]" : "]");
}

void JsonWriter::endLine() {
  if (!notUtf8_.empty()) addWords("bytes", notUtf8_);
  out_.append(isFirst_ ? "{}\n" : "}\n");
}

void JsonWriter::addName(std::string_view member) {
  out_.append(isFirst_ ? "{\"" : ",\"").append(member).append("\":");
  isFirst_ = false;
}

}  // namespace pagescan::tool
