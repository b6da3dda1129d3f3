// The map is a list of places from which decoding can set in anew, one for each block of the text.
#include "encoding/mapped_text.h"

#include <algorithm>

#include "encoding/decoder_of.h"

namespace pagescan::internal {
namespace {

// Of a buffer that is appended to the text when the next character might not fit.
constexpr std::size_t kBuffer = 4096;
constexpr std::size_t kMostForOneCharacter = 8;

}  // namespace

MappedText::MappedText(std::string_view bytes, Encoding encoding, std::size_t from)
    : bytes_(bytes), from_(from < bytes.size() ? from : bytes.size()), encoding_(encoding) {
  withDecoderOf(encoding, [this](auto decoder) { build(decoder); });
}

template <typename Decoder>
void MappedText::build(Decoder& decoder) {
  const auto* const start = reinterpret_cast<const Byte*>(bytes_.data());
  const Byte* const end = start + bytes_.size();
  const Byte* characterBegin = start + from_;
  std::uint8_t stateThere = decoder.state();
  std::size_t nextBlock = 0;
  char buffer[kBuffer];
  char* out = buffer;
  for (const Byte* at = characterBegin; at < end;) {
    char* const written = out;
    at = decoder.next(at, end, out);
    if (out == written) continue;  // an escape sequence belongs to the character after it
    const std::size_t offset = text_.size() + static_cast<std::size_t>(written - buffer);
    if (offset >= nextBlock) {
      checkpoints_.push_back({static_cast<std::size_t>(characterBegin - start),
                              static_cast<std::uint8_t>(offset - nextBlock), stateThere});
      nextBlock += kBlock;
    }
    characterBegin = at;
    stateThere = decoder.state();
    if (out > buffer + kBuffer - kMostForOneCharacter) {
      text_.append(buffer, out);
      out = buffer;
    }
  }
  text_.append(buffer, out);
}

template <typename Decoder>
MappedText::Place MappedText::find(Decoder& decoder, std::size_t at) const {
  std::size_t block = at / kBlock;
  // The last character of a block may reach into the next one, which may not even have another.
  if (block == checkpoints_.size() || at % kBlock < checkpoints_[block].skip) --block;
  const Checkpoint& checkpoint = checkpoints_[block];
  decoder.resume(checkpoint.state);
  const auto* const start = reinterpret_cast<const Byte*>(bytes_.data());
  const Byte* const end = start + bytes_.size();
  const Byte* begin = start + checkpoint.raw;
  std::size_t offset = block * kBlock + checkpoint.skip;
  for (const Byte* next = begin;;) {
    char character[kMostForOneCharacter];
    char* out = character;
    next = decoder.next(next, end, out);
    if (out == character) continue;
    offset += static_cast<std::size_t>(out - character);
    if (offset > at) {
      return {static_cast<std::size_t>(begin - start), static_cast<std::size_t>(next - start)};
    }
    begin = next;
  }
}

MappedText::Place MappedText::characterAt(std::size_t at) const {
  return withDecoderOf(encoding_, [this, at](auto decoder) { return find(decoder, at); });
}

std::size_t MappedText::rawBegin(std::size_t at) const {
  return at < text_.size() ? characterAt(at).rawBegin : bytes_.size();
}

std::size_t MappedText::rawEnd(std::size_t at) const {
  return at == 0 ? from_ : characterAt(at - 1).rawEnd;
}

template <typename Decoder>
std::size_t MappedText::findText(Decoder& decoder, std::size_t block, std::size_t raw) const {
  const Checkpoint& checkpoint = checkpoints_[block];
  decoder.resume(checkpoint.state);
  const auto* const start = reinterpret_cast<const Byte*>(bytes_.data());
  const Byte* const end = start + bytes_.size();
  std::size_t offset = block * kBlock + checkpoint.skip;
  const Byte* begin = start + checkpoint.raw;
  for (const Byte* next = begin; begin < start + raw && next < end;) {
    char character[kMostForOneCharacter];
    char* out = character;
    next = decoder.next(next, end, out);
    if (out == character) continue;
    offset += static_cast<std::size_t>(out - character);
    begin = next;
  }
  return offset;
}

std::size_t MappedText::textAt(std::size_t raw) const {
  const auto later = std::upper_bound(
      checkpoints_.begin(), checkpoints_.end(), raw,
      [](std::size_t wanted, const Checkpoint& checkpoint) { return wanted < checkpoint.raw; });
  if (later == checkpoints_.begin()) return 0;
  const auto block = static_cast<std::size_t>(later - checkpoints_.begin() - 1);
  return withDecoderOf(encoding_,
                       [this, block, raw](auto decoder) { return findText(decoder, block, raw); });
}

MappedText::Range MappedText::rawRange(std::size_t begin, std::size_t end) const {
  const std::size_t rawStop = rawEnd(end);
  return {begin < end ? rawBegin(begin) : rawStop, rawStop};
}

}  // namespace pagescan::internal
