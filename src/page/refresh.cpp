#include "page/refresh.h"

#include <algorithm>
#include <cstdint>

#include "page/white_space.h"

namespace pagescan::internal {
namespace {

constexpr ByteClass kNumber = kDigits | ByteClass::of(".");
constexpr ByteClass kSeparators = ByteClass::of(";,");

// The place after the time and its separator; npos where there is no refresh.
std::size_t skipTime(std::string_view content) {
  const std::size_t time = skipAll(content, 0, kAsciiWhiteSpace);
  std::size_t at = skipAll(content, time, kNumber);
  if (at == time) return std::string_view::npos;
  if (at == content.size()) return at;
  if (!(kAsciiWhiteSpace | kSeparators).contains(content[at])) return std::string_view::npos;
  at = skipAll(content, at, kAsciiWhiteSpace);
  if (at < content.size() && kSeparators.contains(content[at])) ++at;
  return skipAll(content, at, kAsciiWhiteSpace);
}

// The place after "url=" and the white space in it; npos where something else stands.
std::size_t skipUrlWord(std::string_view content, std::size_t at) {
  for (const char letter : {'u', 'r', 'l'}) {
    if (at == content.size() || toLower(content[at]) != letter) return std::string_view::npos;
    ++at;
  }
  at = skipAll(content, at, kAsciiWhiteSpace);
  if (at == content.size() || content[at] != '=') return std::string_view::npos;
  return skipAll(content, at + 1, kAsciiWhiteSpace);
}

}  // namespace

std::optional<Span> findRefreshUrl(std::string_view content) {
  std::size_t begin = skipTime(content);
  if (begin == std::string_view::npos) return std::nullopt;
  const std::size_t afterWord = skipUrlWord(content, begin);
  if (afterWord != std::string_view::npos) begin = afterWord;
  std::size_t end = content.size();
  if (begin < end && (content[begin] == '"' || content[begin] == '\'')) {
    end = std::min(content.find(content[begin], begin + 1), end);
    ++begin;
  }
  if (begin == end) return std::nullopt;
  return Span{static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

}  // namespace pagescan::internal
