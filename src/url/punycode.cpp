#include "url/punycode.h"

#include <algorithm>
#include <cstdint>

namespace pagescan::internal {
namespace {

// RFC 3492, 5 "Parameter values for Punycode".
constexpr std::uint32_t kBase = 36, kMinimum = 1, kMaximum = 26, kSkew = 38, kDamp = 700;
constexpr std::uint32_t kInitialBias = 72;
constexpr char32_t kInitialCharacter = 0x80, kLastCharacter = 0x10FFFF;

// 6.1 "Bias adaptation function".
std::uint32_t adaptedBias(std::uint32_t delta, std::size_t length, bool isFirst) {
  delta = isFirst ? delta / kDamp : delta / 2;
  delta += delta / static_cast<std::uint32_t>(length);
  std::uint32_t k = 0;
  for (; delta > (kBase - kMinimum) * kMaximum / 2; k += kBase) delta /= kBase - kMinimum;
  return k + (kBase - kMinimum + 1) * delta / (delta + kSkew);
}

std::uint32_t threshold(std::uint32_t k, std::uint32_t bias) {
  return k <= bias ? kMinimum : std::clamp(k - bias, kMinimum, kMaximum);
}

void appendNumber(std::string& out, std::uint32_t number, std::uint32_t bias) {
  constexpr char kDigitsOfBase36[] = "abcdefghijklmnopqrstuvwxyz0123456789";
  for (std::uint32_t k = kBase;; k += kBase) {
    const std::uint32_t least = threshold(k, bias);
    if (number < least) break;
    out += kDigitsOfBase36[least + (number - least) % (kBase - least)];
    number = (number - least) / (kBase - least);
  }
  out += kDigitsOfBase36[number];
}

std::optional<std::uint32_t> digitValue(char32_t c) {
  if (c >= 'a' && c <= 'z') return c - 'a';
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= '0' && c <= '9') return c - '0' + 26;
  return std::nullopt;
}

// Reads a number off the front of the text; none where it ends early or is beyond all use.
std::optional<std::uint32_t> takeNumber(std::u32string_view& text, std::uint32_t bias) {
  constexpr std::uint64_t kMost = 0x7FFFFFFF;
  std::uint64_t number = 0, weight = 1;
  for (std::uint32_t k = kBase;; k += kBase) {
    if (text.empty()) return std::nullopt;
    const std::optional<std::uint32_t> digit = digitValue(text.front());
    if (!digit) return std::nullopt;
    text.remove_prefix(1);
    number += *digit * weight;
    if (number > kMost) return std::nullopt;
    const std::uint32_t least = threshold(k, bias);
    if (*digit < least) return static_cast<std::uint32_t>(number);
    weight *= kBase - least;
    if (weight > kMost) return std::nullopt;
  }
}

std::size_t utf16Units(std::u32string_view text) {
  const auto isPair = [](char32_t c) { return c > 0xFFFF; };
  return text.size() + static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isPair));
}

}  // namespace

bool appendPunycode(std::string& out, std::u32string_view label) {
  if (label.size() > kMostUnitsToEncode || utf16Units(label) > kMostUnitsToEncode) return false;
  std::size_t basic = 0;
  for (const char32_t c : label) {
    if (c >= kInitialCharacter) continue;
    out += static_cast<char>(c);
    ++basic;
  }
  if (basic > 0) out += '-';
  // With so few characters no number overflows.
  std::uint32_t delta = 0, bias = kInitialBias;
  char32_t handled = kInitialCharacter;  // characters below it are written
  for (std::size_t written = basic; written < label.size(); ++delta, ++handled) {
    char32_t next = kLastCharacter;
    for (const char32_t c : label) {
      if (c >= handled) next = std::min(next, c);
    }
    delta += (next - handled) * static_cast<std::uint32_t>(written + 1);
    handled = next;
    for (const char32_t c : label) {
      if (c < handled) ++delta;
      if (c != handled) continue;
      appendNumber(out, delta, bias);
      bias = adaptedBias(delta, written + 1, written == basic);
      delta = 0;
      ++written;
    }
  }
  return true;
}

std::optional<std::u32string> decodedPunycode(std::u32string_view text) {
  if (text.size() > kMostBytesToDecode) return std::nullopt;
  // ASCII characters are in front, up to the last "-"; one at the start delimits nothing.
  const std::size_t delimiter = text.rfind(U'-');
  const bool hasBasic = delimiter != std::u32string_view::npos && delimiter > 0;
  std::u32string label(text.substr(0, hasBasic ? delimiter : 0));
  if (hasBasic) text.remove_prefix(delimiter + 1);
  std::uint32_t bias = kInitialBias;
  std::uint64_t character = kInitialCharacter, at = 0;
  for (bool isFirst = true; !text.empty(); isFirst = false) {
    const std::optional<std::uint32_t> delta = takeNumber(text, bias);
    if (!delta) return std::nullopt;
    at += *delta;
    const std::size_t length = label.size() + 1;
    bias = adaptedBias(*delta, length, isFirst);
    character += at / length;
    at %= length;
    if (character > kLastCharacter) return std::nullopt;
    label.push_back(static_cast<char32_t>(character));
    std::rotate(label.begin() + static_cast<std::ptrdiff_t>(at++), label.end() - 1, label.end());
  }
  return label;
}

}  // namespace pagescan::internal
