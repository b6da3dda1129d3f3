// Regions of a text between two delimiters.
#ifndef PAGESCAN_BASE_DELIMITERS_H
#define PAGESCAN_BASE_DELIMITERS_H

#include <cstddef>
#include <string_view>

#include "base/byte_class.h"
#include "base/kernels.h"
#include "base/search.h"

namespace pagescan::internal {

// Two delimiters, found ignoring case. Where both hold the same two bytes at the same distance, as
// those of comments do, they are looked for at once. Letters do not count: words stand in other
// places, too, and what they cost there is more than what is saved. Keeps views of both.
class Delimiters {
 public:
  constexpr Delimiters(std::string_view open, std::string_view close) : open_(open), close_(close) {
    if (open.size() > kShortText || close.size() > kShortText) return;
    for (std::size_t i = 0; i < open.size(); ++i) {
      for (std::size_t j = 0; j < close.size(); ++j) probeAt(i, j);
    }
  }

  const CaselessText& open() const { return open_; }
  const CaselessText& close() const { return close_; }

  // Finds the first closing delimiter in [begin, end) and the first opening one there. False where
  // there is none of either, or when the opening one does not begin before the other.
  bool find(const char* begin, const char* end, Region& region) const;

 private:
  // Takes what both hold after `inOpen` and `inClose` where that is the rarest so far.
  constexpr void probeAt(std::size_t inOpen, std::size_t inClose) {
    const std::string_view open = open_.text().substr(inOpen);
    const std::string_view close = close_.text().substr(inClose);
    if (!areShared(open[0], close[0])) return;
    for (std::size_t i = 1; i < open.size() && i < close.size(); ++i) {
      const std::size_t rarity = SearchedText::rarity(open[0]) + SearchedText::rarity(open[i]);
      if (!areShared(open[i], close[i]) || rarity < rarity_) continue;
      rarity_ = rarity;
      open_.probeAt(inOpen, i);
      close_.probeAt(inClose, i);
    }
  }

  static constexpr bool areShared(char inOpen, char inClose) {
    return inOpen == inClose && !kLetters.contains(inOpen);
  }

  CaselessText open_;
  CaselessText close_;
  std::size_t rarity_ = 0;
};

}  // namespace pagescan::internal

#endif
