#include "page/line_starts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/byte_class.h"

namespace pagescan::internal {
namespace {

std::uint32_t offset32(std::size_t offset) {
  return static_cast<std::uint32_t>(offset);
}

// Two searches, each of which goes through the bytes once. Of CR LF the LF ends the line.
std::vector<std::uint32_t> lineStartsOfBytes(std::string_view bytes) {
  std::vector<std::uint32_t> starts = {0};
  std::size_t lf = bytes.find('\n');
  std::size_t cr = bytes.find('\r');
  while (lf != cr) {  // both are npos at last
    if (lf < cr) {
      starts.push_back(offset32(lf + 1));
      lf = bytes.find('\n', lf + 1);
    } else {
      if (lf != cr + 1) starts.push_back(offset32(cr + 1));
      cr = bytes.find('\r', cr + 1);
    }
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
