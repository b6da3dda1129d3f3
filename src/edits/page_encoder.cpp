#include "edits/page_encoder.h"

#include "encoding/decoder.h"
#include "encoding/encoder.h"
#include "encoding/utf8.h"
#include "url/utf8_reader.h"

namespace pagescan::internal {
namespace {

constexpr char32_t kAsciiEnd = 0x80;

// Bytes that shift ISO-2022-JP.
bool isShift(char32_t character) {
  return character == 0x0E || character == 0x0F || character == 0x1B;
}

void appendUtf16Unit(std::string& bytes, char32_t unit, Encoding encoding) {
  const char high = static_cast<char>(static_cast<unsigned char>(unit >> 8));
  const char low = static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
  bytes += encoding == Encoding::utf16Be ? high : low;
  bytes += encoding == Encoding::utf16Be ? low : high;
}

void appendUtf16(std::string& bytes, char32_t character, Encoding encoding) {
  if (character < 0x10000) return appendUtf16Unit(bytes, character, encoding);
  const char32_t above = character - 0x10000;
  appendUtf16Unit(bytes, 0xD800 | above >> 10, encoding);
  appendUtf16Unit(bytes, 0xDC00 | (above & 0x3FF), encoding);
}

}  // namespace

bool PageEncoder::appendInLegacy(char32_t character, std::string& bytes) const {
  return QueryEncoder(encoding_).append(character, bytes);
}

// Some encoders write two characters as the same bytes.
bool PageEncoder::canWrite(char32_t character) {
  if (encoding_ == Encoding::utf8 || isUtf16(encoding_)) return true;
  if (encoding_ == Encoding::iso2022Jp) return character < kAsciiEnd && !isShift(character);
  if (character < kAsciiEnd) return true;
  bytes_.clear();
  again_.clear();
  if (!appendInLegacy(character, bytes_)) return false;
  appendDecoded(again_, bytes_, encoding_);
  std::size_t at = 0;
  return !again_.empty() && readUtf8(again_, at) == character && at == again_.size();
}

std::string PageEncoder::encode(std::string_view utf8) {
  if (encoding_ == Encoding::utf8 || encoding_ == Encoding::iso2022Jp) return std::string(utf8);
  std::string bytes;
  bytes.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t character = readUtf8(utf8, at);
    if (isUtf16(encoding_)) {
      appendUtf16(bytes, character, encoding_);
    } else if (character < kAsciiEnd) {
      bytes += static_cast<char>(character);
    } else {
      appendInLegacy(character, bytes);
    }
  }
  return bytes;
}

}  // namespace pagescan::internal
