#include "classic/zkurlencoding_canonical.h"

#include "base/byte_class.h"
#include "base/percent.h"

// Flavours are struck off a set byte by byte:
//
//   ab+%2f
//   ab       every flavour keeps letters
//   +        those that write it for a blank, and those that keep it and do not read it as one
//   %2f      those that escape "/", with digits in lower case: eSiebel alone is left
//
// One byte or escape can be judged without the others: where the encoder writes anything else for
// it, the two texts differ at that place, whatever stands around it. Only "%" needs more care:
//
// - Where no escape begins with it, it is decoded to the placeholder and encoded as "%" again: it
//   stays.
// - Where the end of the text, a name or a value cuts an escape off, it is not decoded: only the
//   flavours that keep "%" give it back.
// - "%26%2325;", or a mixture of the two spellings, is decoded to the placeholder's own text, which
//   is encoded as "%": it is canonical of no flavour.

namespace pagescan::internal {

namespace {

constexpr FlavoursByByte kKeeping = flavoursKeeping();
constexpr FlavoursByByte kEscaping = flavoursEscaping();
constexpr FlavoursByByte kOfDigit = flavoursOfDigit();

class CanonicalFlavours {
 public:
  CanonicalFlavours(std::string_view text, FlavourSet candidates)
      : at_(text.data()), end_(at_ + text.size()), candidates_(candidates) {}

  FlavourSet find() {
    for (;;) {
      skipPlainBytes();
      if (at_ == end_ || candidates_ == 0) return candidates_;
      if (*at_ == '%') {
        takePercent();
      } else if (isSeparator(*at_)) {
        inName_ = *at_ == '&';
        ++at_;
      } else {
        candidates_ &= kKeeping[toByte(*at_++)];
      }
    }
  }

 private:
  // Nothing for the bytes that need a closer look.
  static constexpr FlavoursByByte kPlain = [] {
    FlavoursByByte sets = kKeeping;
    for (const char c : std::string_view("%&=")) sets[toByte(c)] = 0;
    return sets;
  }();

  void skipPlainBytes() {
    while (at_ < end_) {
      const FlavourSet left = candidates_ & kPlain[toByte(*at_)];
      if (left == 0) return;
      candidates_ = left;
      ++at_;
    }
  }

  bool isSeparator(char c) const { return c == '&' || (c == '=' && inName_); }

  void takePercent() {
    if (isEscape(at_, end_)) {
      const FlavourSet ofDigits = kOfDigit[toByte(at_[1])] & kOfDigit[toByte(at_[2])];
      candidates_ &= kEscaping[escapedByte(at_)] & ofDigits;
      if (decodesToPlaceholder()) candidates_ = 0;
      at_ += kEscapeLength;
    } else {
      // Elsewhere it becomes the placeholder and "%" again.
      if (isCutOff()) candidates_ &= kKeeping['%'];
      ++at_;
    }
  }

  // Whether the name or value ends before an escape could.
  bool isCutOff() const {
    return end_ - at_ < kEscapeLength || isSeparator(at_[1]) || isSeparator(at_[2]);
  }

  bool decodesToPlaceholder() const {
    const char* at = at_;
    for (const char expected : kUsualPlaceholder) {
      if (at == end_) return false;
      const bool escaped = isEscape(at, end_);
      if ((escaped ? escapedByte(at) : toByte(*at)) != toByte(expected)) return false;
      at += escaped ? kEscapeLength : 1;
    }
    return true;
  }

  const char* at_;
  const char* end_;
  FlavourSet candidates_;
  bool inName_ = true;
};

}  // namespace

FlavourSet canonicalFlavours(std::string_view text, FlavourSet candidates) {
  return CanonicalFlavours(text, candidates).find();
}

}  // namespace pagescan::internal
