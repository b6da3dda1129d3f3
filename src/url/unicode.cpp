#include "url/unicode.h"

#include <algorithm>
#include <iterator>

#include "url/generated/idna_tables.h"

namespace pagescan::internal {
namespace {

// The kinds of runs in kMappingStarts; texts of n characters have kTextOfOne - 1 + n.
constexpr unsigned kKindBits = 5;
enum Kind : unsigned { kValid, kIgnored, kDisallowed, kTextOfOne };

struct MappingRun {
  char32_t first;
  unsigned kind;
  std::int32_t value;
};

MappingRun mappingRunOf(char32_t character) {
  const auto next = std::upper_bound(
      std::begin(kMappingStarts), std::end(kMappingStarts), character,
      [](char32_t wanted, std::uint32_t start) { return wanted < start >> kKindBits; });
  const auto row = next - std::begin(kMappingStarts) - 1;
  const std::uint32_t start = kMappingStarts[row];
  return {start >> kKindBits, start & ((1U << kKindBits) - 1), kMappingValues[row]};
}

}  // namespace

std::string_view unicodeVersion() {
  return kUnicodeVersion;
}

IdnaStatus idnaStatusOf(char32_t character) {
  switch (mappingRunOf(character).kind) {
    case kValid:
      return IdnaStatus::valid;
    case kIgnored:
      return IdnaStatus::ignored;
    case kDisallowed:
      return IdnaStatus::disallowed;
    default:
      return IdnaStatus::mapped;
  }
}

void appendIdnaMapped(std::u32string& out, char32_t character) {
  const MappingRun run = mappingRunOf(character);
  switch (run.kind) {
    case kIgnored:
      return;
    case kValid:
    case kDisallowed:
      out += character;
      return;
    case kTextOfOne:
      out += static_cast<char32_t>(static_cast<std::int32_t>(character) + run.value);
      return;
    default:
      const std::size_t length = run.kind - kTextOfOne + 1;
      const std::size_t before = (character - run.first) * length;
      out.append(kMappingTexts + run.value + before, length);
  }
}

CharacterProperties propertiesOf(char32_t character) {
  const auto next =
      std::upper_bound(std::begin(kPropertyStarts), std::end(kPropertyStarts), character);
  const unsigned packed = kPropertyValues[next - std::begin(kPropertyStarts) - 1];
  return {static_cast<unsigned char>(packed & 0xFF), static_cast<BidiClass>(packed >> 8 & 15),
          static_cast<JoiningType>(packed >> 12 & 7), packed >> 15 != 0};
}

}  // namespace pagescan::internal
