#include "url/input_text.h"

#include <algorithm>

#include "url/percent_sets.h"
#include "url/utf8_reader.h"

namespace pagescan::internal {
namespace {

constexpr ByteClass kTrimmed = kC0Controls | ByteClass::of(" ");
constexpr ByteClass kDropped = ByteClass::of("\t\n\r");
constexpr ByteClass kNotPlain = kDropped | kBeyondAscii;

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && kTrimmed.contains(text.front())) text.remove_prefix(1);
  while (!text.empty() && kTrimmed.contains(text.back())) text.remove_suffix(1);
  return text;
}

bool isDropped(char c) {
  return kDropped.contains(c);
}

}  // namespace

std::string_view inputText(std::string_view text, std::string& storage) {
  text = trimmed(text);
  const auto special =
      std::find_if(text.begin(), text.end(), [](char c) { return kNotPlain.contains(c); });
  if (special == text.end()) return text;
  if (std::none_of(special, text.end(), isDropped) && isWellFormedUtf8(text)) return text;
  // Decoding comes first: bytes on both sides of a tab are never one character.
  storage.clear();
  storage.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = readUtf8(text, at);
    if (character > 0x7F || !isDropped(static_cast<char>(character))) {
      appendUtf8(storage, character);
    }
  }
  return storage;
}

}  // namespace pagescan::internal
