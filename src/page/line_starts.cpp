#include "page/line_starts.h"

#include <algorithm>
#include <cstddef>

#include "base/byte_class.h"
#include "base/words.h"

namespace pagescan::internal {
namespace {

std::uint32_t offset32(std::size_t offset) {
  return static_cast<std::uint32_t>(offset);
}

// The first place of CR or LF from `at` on, or the size. No other byte of a text below 0x0E is
// frequent, so that eight bytes are passed over when none of them is below that.
std::size_t findLineEnd(std::string_view bytes, std::size_t at) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kHighs = kOnes << 7;
  for (;;) {
    while (bytes.size() - at >= sizeof(std::uint64_t)) {
      const auto word = loadWord<std::uint64_t>(bytes.data() + at);
      if (((word - kOnes * 0x0E) & ~word & kHighs) != 0) break;
      at += sizeof(std::uint64_t);
    }
    const std::size_t soon = std::min(at + sizeof(std::uint64_t), bytes.size());
    for (; at < soon; ++at) {
      if (bytes[at] == '\n' || bytes[at] == '\r') return at;
    }
    if (at == bytes.size()) return at;
  }
}

std::vector<std::uint32_t> lineStartsOfBytes(std::string_view bytes) {
  std::vector<std::uint32_t> starts = {0};
  for (std::size_t at = findLineEnd(bytes, 0); at < bytes.size(); at = findLineEnd(bytes, at)) {
    const bool isPair = bytes[at] == '\r' && at + 1 < bytes.size() && bytes[at + 1] == '\n';
    at += isPair ? 2 : 1;
    starts.push_back(offset32(at));
  }
  return starts;
}

std::vector<std::uint32_t> lineStartsOfUtf16(std::string_view bytes, bool isBigEndian) {
  const std::size_t units = bytes.size() / 2;
  const auto unitAt = [&](std::size_t unit) {
    const unsigned char first = toByte(bytes[2 * unit]);
    const unsigned char second = toByte(bytes[2 * unit + 1]);
    return isBigEndian ? first << 8 | second : second << 8 | first;
  };
  std::vector<std::uint32_t> starts = {0};
  for (std::size_t unit = 0; unit < units; ++unit) {
    if (unitAt(unit) != '\n' && unitAt(unit) != '\r') continue;
    if (unitAt(unit) == '\r' && unit + 1 < units && unitAt(unit + 1) == '\n') ++unit;
    starts.push_back(offset32(2 * (unit + 1)));
  }
  return starts;
}

}  // namespace

std::vector<std::uint32_t> lineStartsOf(std::string_view bytes, Encoding encoding) {
  if (isUtf16(encoding)) return lineStartsOfUtf16(bytes, encoding == Encoding::utf16Be);
  return lineStartsOfBytes(bytes);
}

Position positionOf(const std::vector<std::uint32_t>& starts, std::uint32_t offset) {
  const auto after = std::upper_bound(starts.begin(), starts.end(), offset);
  return {offset32(static_cast<std::size_t>(after - starts.begin())), offset - *(after - 1) + 1};
}

}  // namespace pagescan::internal
