// Normalization Form C (UAX #15), over the canonical decompositions.
#include <algorithm>
#include <iterator>
#include <tuple>

#include "url/generated/idna_tables.h"
#include "url/unicode.h"

namespace pagescan::internal {
namespace {

// Below this, every text is its own normal form.
constexpr char32_t kFirstThatCombines = 0x300;

// Hangul syllables are composed by arithmetic (The Unicode Standard, 3.12).
constexpr char32_t kSyllables = 0xAC00, kLeads = 0x1100, kVowels = 0x1161, kTrails = 0x11A7;
constexpr char32_t kLeadCount = 19, kVowelCount = 21, kTrailCount = 28;
constexpr char32_t kSyllablesOfLead = kVowelCount * kTrailCount;

// Whether a character is one of `count` from `lowest` on.
constexpr bool isIn(char32_t c, char32_t lowest, char32_t count) {
  return c - lowest < count;
}

unsigned char classOf(char32_t character) {
  return character < kFirstThatCombines ? 0 : propertiesOf(character).combiningClass;
}

void appendDecomposed(std::u32string& out, char32_t character) {
  if (isIn(character, kSyllables, kLeadCount * kSyllablesOfLead)) {
    const char32_t index = character - kSyllables;
    out.push_back(kLeads + index / kSyllablesOfLead);
    out.push_back(kVowels + index % kSyllablesOfLead / kTrailCount);
    if (index % kTrailCount > 0) out.push_back(kTrails + index % kTrailCount);
    return;
  }
  const auto row = std::lower_bound(
      std::begin(kDecompositions), std::end(kDecompositions), character,
      [](const Decomposition& step, char32_t wanted) { return step.whole < wanted; });
  if (row == std::end(kDecompositions) || row->whole != character) {
    out += character;
    return;
  }
  appendDecomposed(out, row->first);  // a few steps at most
  if (row->second != 0) out += row->second;
}

// Sorts each run of marks by their combining classes.
void orderMarks(std::u32string& text) {
  for (auto begin = text.begin(); begin != text.end();) {
    if (classOf(*begin) == 0) {
      ++begin;
      continue;
    }
    const auto end = std::find_if(begin, text.end(), [](char32_t c) { return classOf(c) == 0; });
    std::stable_sort(begin, end, [](char32_t a, char32_t b) { return classOf(a) < classOf(b); });
    begin = end;
  }
}

// The character that two compose to; 0 where there is none.
char32_t composed(char32_t starter, char32_t second) {
  if (isIn(starter, kLeads, kLeadCount) && isIn(second, kVowels, kVowelCount)) {
    return kSyllables + ((starter - kLeads) * kVowelCount + second - kVowels) * kTrailCount;
  }
  if (isIn(starter, kSyllables, kLeadCount * kSyllablesOfLead) &&
      (starter - kSyllables) % kTrailCount == 0 && isIn(second, kTrails + 1, kTrailCount - 1)) {
    return starter + (second - kTrails);
  }
  const auto parts = [](std::uint16_t row) {
    return std::tuple(kDecompositions[row].first, kDecompositions[row].second);
  };
  const std::tuple wanted(starter, second);
  const auto found =
      std::lower_bound(std::begin(kCompositions), std::end(kCompositions), wanted,
                       [&parts](std::uint16_t row, const auto& key) { return parts(row) < key; });
  if (found == std::end(kCompositions) || parts(*found) != wanted) return 0;
  return kDecompositions[*found].whole;
}

// Composes each starter with what follows it and is not blocked.
void compose(std::u32string& text) {
  std::size_t kept = 0;
  std::size_t starter = text.size();  // none yet
  unsigned char before = 0;           // the class of the last character kept after the starter
  for (const char32_t character : text) {
    const unsigned char combiningClass = classOf(character);
    const bool isNext = kept == starter + 1;
    if (starter < kept && (isNext || before < combiningClass)) {
      if (const char32_t whole = composed(text[starter], character); whole != 0) {
        text[starter] = whole;
        continue;
      }
    }
    if (combiningClass == 0) starter = kept;
    before = combiningClass;
    text[kept++] = character;
  }
  text.resize(kept);
}

}  // namespace

void normalize(std::u32string& text) {
  if (std::all_of(text.begin(), text.end(), [](char32_t c) { return c < kFirstThatCombines; })) {
    return;
  }
  std::u32string decomposed;
  decomposed.reserve(text.size());
  for (const char32_t character : text) appendDecomposed(decomposed, character);
  orderMarks(decomposed);
  compose(decomposed);
  text = std::move(decomposed);
}

}  // namespace pagescan::internal
