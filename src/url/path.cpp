#include "url/path.h"

#include "url/percent_encoding.h"
#include "url/percent_sets.h"

namespace pagescan::internal {
namespace {

// How many dots a dot segment has: 1 or 2; 0 for other segments. A dot may be spelled "%2e".
int dotsOf(std::string_view segment) {
  int dots = 0;
  while (!segment.empty()) {
    if (segment.front() == '.') {
      segment.remove_prefix(1);
    } else if (segment.size() > 2 && segment.substr(0, 2) == "%2" && toLower(segment[2]) == 'e') {
      segment.remove_prefix(3);
    } else {
      return 0;
    }
    if (++dots > 2) return 0;
  }
  return dots;
}

}  // namespace

bool isDriveLetter(std::string_view text) {
  return text.size() == 2 && kLetters.contains(text[0]) && (text[1] == ':' || text[1] == '|');
}

bool startsWithDriveLetter(std::string_view text) {
  constexpr ByteClass kMayFollow = ByteClass::of("/\\?#");
  return isDriveLetter(text.substr(0, 2)) && (text.size() == 2 || kMayFollow.contains(text[2]));
}

bool beginsWithNormalDriveLetter(std::string_view path) {
  return path.size() > 2 && isDriveLetter(path.substr(1, 2)) && path[2] == ':' &&
         (path.size() == 3 || path[3] == '/');
}

void PathWriter::append(std::string_view segment, bool isLast) {
  const int dots = dotsOf(segment);
  if (dots == 2) shorten();
  if (dots > 0) {
    if (isLast) text_ += '/';
    return;
  }
  const bool isFirst = text_.size() == begin_;
  text_ += '/';
  appendPercentEncoded(text_, segment, kPathSet);
  if (isFirst && isFile_ && isDriveLetter(segment)) text_.back() = ':';
}

void PathWriter::shorten() {
  if (text_.size() == begin_) return;
  const std::string_view path = std::string_view(text_).substr(begin_);
  if (isFile_ && path.size() == 3 && beginsWithNormalDriveLetter(path)) return;
  text_.resize(begin_ + path.rfind('/'));
}

}  // namespace pagescan::internal
