// Normalization Form C by its definitions, over the generated tables as they are: decompose, order
// by swapping neighbours, compose pair by pair.
#include <map>

#include "reference/url/url.h"
#include "url/generated/idna_tables.h"
#include "url/unicode.h"

namespace reference {
namespace {

using pagescan::internal::Decomposition;
using pagescan::internal::kCompositions;
using pagescan::internal::kDecompositions;

using Pair = std::pair<char32_t, char32_t>;

// Hangul syllables are listed, instead of calculated as they are needed.
struct Tables {
  std::map<char32_t, Pair> parts;  // of characters that decompose in one step
  std::map<Pair, char32_t> whole;

  Tables() {
    for (const Decomposition& row : kDecompositions) parts[row.whole] = {row.first, row.second};
    for (const std::uint16_t i : kCompositions) {
      whole[{kDecompositions[i].first, kDecompositions[i].second}] = kDecompositions[i].whole;
    }
    char32_t syllable = 0xAC00;
    for (char32_t lead = 0x1100; lead < 0x1113; ++lead) {
      for (char32_t vowel = 0x1161; vowel < 0x1176; ++vowel) {
        const char32_t open = syllable++;
        add(open, lead, vowel);
        for (char32_t trail = 0x11A8; trail < 0x11C3; ++trail) add(syllable++, open, trail);
      }
    }
  }
  void add(char32_t syllable, char32_t first, char32_t second) {
    parts[syllable] = {first, second};
    whole[{first, second}] = syllable;
  }
};

const Tables& tables() {
  static const Tables result;
  return result;
}

unsigned ccc(char32_t c) {
  return pagescan::internal::propertiesOf(c).combiningClass;
}

void decompose(char32_t c, CodePoints& out) {
  const auto row = tables().parts.find(c);
  if (row == tables().parts.end()) {
    out += c;
    return;
  }
  decompose(row->second.first, out);
  if (row->second.second != 0) decompose(row->second.second, out);
}

void order(CodePoints& text) {
  for (bool isSwapped = true; isSwapped;) {
    isSwapped = false;
    for (std::size_t i = 1; i < text.size(); ++i) {
      if (ccc(text[i]) != 0 && ccc(text[i - 1]) > ccc(text[i])) {
        std::swap(text[i - 1], text[i]);
        isSwapped = true;
      }
    }
  }
}

// D115: whether something between the starter and a character keeps them apart.
bool isBlocked(const CodePoints& text, std::size_t starter, std::size_t at) {
  for (std::size_t i = starter + 1; i < at; ++i) {
    if (ccc(text[i]) == 0 || ccc(text[i]) >= ccc(text[at])) return true;
  }
  return false;
}

// D117: the last starter before a character, if it composes with it.
bool composeAt(CodePoints& text, std::size_t at) {
  std::size_t starter = at;
  do {
    if (starter == 0) return false;
  } while (ccc(text[--starter]) != 0);
  const auto row = tables().whole.find({text[starter], text[at]});
  if (row == tables().whole.end() || isBlocked(text, starter, at)) return false;
  text[starter] = row->second;
  text.erase(at, 1);
  return true;
}

}  // namespace

CodePoints toNfc(const CodePoints& text) {
  CodePoints result;
  for (const char32_t c : text) decompose(c, result);
  order(result);
  for (std::size_t at = 1; at < result.size();) {
    if (!composeAt(result, at)) ++at;
  }
  return result;
}

}  // namespace reference
