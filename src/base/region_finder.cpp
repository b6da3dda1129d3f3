#include "base/region_finder.h"

namespace pagescan {
namespace {

// Shorter ones filter too little, and longer delimiters are not worth the search for it.
constexpr std::size_t kShortestCore = 2;
constexpr std::size_t kLongestDelimiter = 32;

std::size_t commonLength(std::string_view a, std::string_view b) {
  std::size_t length = 0;
  while (length < a.size() && length < b.size() && toLower(a[length]) == toLower(b[length])) {
    ++length;
  }
  return length;
}

// Whether `text` stands `before` bytes before `at`, all of it in [from, end).
bool standsBefore(const char* at, std::size_t before, const SearchedText& text, const char* from,
                  const char* end) {
  if (static_cast<std::size_t>(at - from) < before) return false;
  const char* begin = at - before;
  return static_cast<std::size_t>(end - begin) >= text.size() &&
         equalsIgnoringCase(begin, text.text().data(), text.size());
}

}  // namespace

RegionFinder::RegionFinder(std::string_view open, std::string_view close)
    : open_(open), close_(close), core_("") {
  if (open.size() > kLongestDelimiter || close.size() > kLongestDelimiter) return;
  std::size_t longest = kShortestCore - 1;
  for (std::size_t i = 0; i < open.size(); ++i) {
    for (std::size_t k = 0; k < close.size(); ++k) {
      const std::size_t length = commonLength(open.substr(i), close.substr(k));
      if (length <= longest) continue;
      longest = length;
      core_ = open.substr(i, length);
      coreInOpen_ = i;
      coreInClose_ = k;
    }
  }
}

// The search goes on behind the `close` as far as an `open` that begins before it may reach.
bool RegionFinder::findByCore(const char* from, const char* end, const char*& open,
                              const char*& close) const {
  open = close = nullptr;
  for (const char* at = findIgnoringCase(from, end, core_); at != end;
       at = findIgnoringCase(at + 1, end, core_)) {
    if (close && at >= close + coreInOpen_) break;
    if (!open && standsBefore(at, coreInOpen_, open_, from, end)) open = at - coreInOpen_;
    if (!close && standsBefore(at, coreInClose_, close_, from, end)) close = at - coreInClose_;
    if (close && open) break;
  }
  return open && close && open < close;
}

bool RegionFinder::findApart(const char* from, const char* end, const char*& open,
                             const char*& close) const {
  close = findIgnoringCase(from, end, close_);
  if (close == end) return false;
  const auto left = static_cast<std::size_t>(end - close);
  const char* limit = open_.size() < left ? close + open_.size() : end;
  open = findIgnoringCase(from, limit, open_);
  return open < close;
}

bool RegionFinder::find(std::string_view text, std::size_t pos, Region& region) const {
  const char* from = text.data() + pos;
  const char* end = text.data() + text.size();
  const char* open = nullptr;
  const char* close = nullptr;
  const bool found =
      core_.size() > 0 ? findByCore(from, end, open, close) : findApart(from, end, open, close);
  if (!found) return false;
  region = {static_cast<std::size_t>(open - text.data()),
            static_cast<std::size_t>(close - text.data())};
  return true;
}

}  // namespace pagescan
