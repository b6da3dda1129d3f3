#include "url/utf8_reader.h"

#include "base/byte_class.h"

namespace pagescan::internal {
namespace {

// What may follow a lead byte: how many bytes, and which the first of them may be. The bounds keep
// out overlong forms, surrogates, and all beyond U+10FFFF.
struct Sequence {
  unsigned char following;
  unsigned char first, last;
};

constexpr Sequence sequenceOf(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return {1, 0x80, 0xBF};
  if (lead == 0xE0) return {2, 0xA0, 0xBF};
  if (lead == 0xED) return {2, 0x80, 0x9F};
  if (lead >= 0xE1 && lead <= 0xEF) return {2, 0x80, 0xBF};
  if (lead == 0xF0) return {3, 0x90, 0xBF};
  if (lead >= 0xF1 && lead <= 0xF3) return {3, 0x80, 0xBF};
  if (lead == 0xF4) return {3, 0x80, 0x8F};
  return {0, 0, 0};
}

}  // namespace

char32_t readUtf8(std::string_view text, std::size_t& at) {
  const unsigned char lead = toByte(text[at++]);
  if (lead < 0x80) return lead;
  Sequence sequence = sequenceOf(lead);
  if (sequence.following == 0) return kReplacementCharacter;
  char32_t character = lead & (0x3FU >> sequence.following);
  for (; sequence.following > 0; --sequence.following) {
    if (at == text.size()) return kReplacementCharacter;
    const unsigned char byte = toByte(text[at]);
    if (byte < sequence.first || byte > sequence.last) return kReplacementCharacter;
    character = character << 6 | (byte & 0x3FU);
    sequence.first = 0x80;
    sequence.last = 0xBF;
    ++at;
  }
  return character;
}

bool isWellFormedUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    // A well-formed U+FFFD takes three bytes, of which the first is never malformed by itself.
    if (readUtf8(text, at) == kReplacementCharacter &&
        text.substr(begin, at - begin) != "\xEF\xBF\xBD") {
      return false;
    }
  }
  return true;
}

}  // namespace pagescan::internal
