// Text as tree construction asks for it: is the next character white space, NUL or another one?
#ifndef PAGESCAN_PAGE_TEXT_UNITS_H
#define PAGESCAN_PAGE_TEXT_UNITS_H

#include "page/character_references.h"
#include "page/tag_scanner.h"

namespace pagescan::internal {

class TextUnits {
 public:
  // hasReferences  whether "&" may start a character reference; not so in a CDATA section
  TextUnits(const char* begin, const char* end, bool hasReferences)
      : at_(begin), end_(end), hasReferences_(hasReferences) {}

  bool empty() const { return at_ == end_; }

  // Passes one LF, however it is written.
  void skipNewline() {
    if (empty()) return;
    if (*at_ == '\n' || *at_ == '\r') {
      at_ += *at_ == '\r' && at_ + 1 != end_ && at_[1] == '\n' ? 2 : 1;
    } else if (*at_ == '&' && hasReferences_) {
      const CharacterReference reference = referenceAt(at_);
      if (reference.length != 0 && reference.first == '\n') at_ += reference.length;
    }
  }

  void skipWhiteSpace() {
    while (!empty()) {
      if (kTagWhiteSpace.contains(*at_)) {
        ++at_;
      } else if (*at_ == '&' && hasReferences_) {
        const CharacterReference reference = referenceAt(at_);
        if (!isWhiteSpace(reference)) return;
        at_ += reference.length;
      } else {
        return;
      }
    }
  }

  // Whether a white space character is left.
  bool holdsWhiteSpace() const {
    for (const char* at = at_; at != end_; ++at) {
      if (kTagWhiteSpace.contains(*at)) return true;
      if (*at == '&' && hasReferences_ && isWhiteSpace(referenceAt(at))) return true;
    }
    return false;
  }

  // Passes all that is left. What it holds: nothing but NULs, white space too, or more.
  enum class Content { nothing, whiteSpace, more };
  Content rest() {
    Content content = Content::nothing;
    while (!empty()) {
      const char* before = at_;
      skipWhiteSpace();
      if (at_ != before) content = Content::whiteSpace;
      if (empty()) break;
      if (*at_ != '\0') {
        at_ = end_;
        return Content::more;
      }
      ++at_;
    }
    return content;
  }

 private:
  CharacterReference referenceAt(const char* at) const {
    return readCharacterReference(at, end_, ReferenceContext::text);
  }
  static bool isWhiteSpace(const CharacterReference& reference) {
    return reference.length != 0 && reference.second == 0 && reference.first < 0x80 &&
           kTagWhiteSpace.contains(static_cast<char>(reference.first));
  }

  const char* at_;
  const char* end_;
  bool hasReferences_;
};

}  // namespace pagescan::internal

#endif
