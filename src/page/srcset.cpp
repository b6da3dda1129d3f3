#include "page/srcset.h"

#include <cstdint>

#include "page/white_space.h"

namespace pagescan::internal {
namespace {

constexpr ByteClass kBetweenCandidates = kAsciiWhiteSpace | ByteClass::of(",");

// A "valid non-negative integer": digits alone.
bool isInteger(std::string_view text) {
  return !text.empty() && skipAll(text, 0, kDigits) == text.size();
}

bool isZero(std::string_view text) {
  return text.find_first_not_of('0') == std::string_view::npos;
}

// A "valid floating-point number" that is not below zero.
bool isNumber(std::string_view text) {
  std::size_t at = !text.empty() && text[0] == '-' ? 1 : 0;
  const bool isNegative = at == 1;
  const std::size_t whole = at;
  at = skipAll(text, at, kDigits);
  bool hasDigits = at > whole;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = at + 1;
    at = skipAll(text, fraction, kDigits);
    hasDigits = at > fraction;
  }
  const std::string_view mantissa = text.substr(whole, at - whole);
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    const std::size_t exponent = at;
    at = skipAll(text, at, kDigits);
    hasDigits = hasDigits && at > exponent;
  }
  const bool isBelowZero =
      isNegative && mantissa.find_first_of("123456789") != std::string_view::npos;
  return hasDigits && at == text.size() && !isBelowZero;
}

// The descriptors of one candidate, judged as they come.
class Descriptors {
 public:
  void add(std::string_view descriptor) {
    const char kind = descriptor.back();
    const std::string_view number = descriptor.substr(0, descriptor.size() - 1);
    if (kind == 'w' && isInteger(number)) {
      allow(!hasWidth_ && !hasDensity_ && !isZero(number));
      hasWidth_ = true;
    } else if (kind == 'x' && isNumber(number)) {
      allow(!hasWidth_ && !hasDensity_ && !hasHeight_);
      hasDensity_ = true;
    } else if (kind == 'h' && isInteger(number)) {
      allow(!hasHeight_ && !hasDensity_ && !isZero(number));
      hasHeight_ = true;
    } else {
      allow(false);
    }
  }

  bool areRight() const { return right_ && (hasWidth_ || !hasHeight_); }

 private:
  void allow(bool isAllowed) { right_ = right_ && isAllowed; }

  bool right_ = true;
  bool hasWidth_ = false;
  bool hasDensity_ = false;
  bool hasHeight_ = false;
};

// The end of the descriptor that begins at `at`: white space or a comma, unless in parentheses.
std::size_t findDescriptorEnd(std::string_view value, std::size_t at) {
  constexpr ByteClass kStops = kBetweenCandidates | ByteClass::of("(");
  for (;;) {
    at = findIn(value, at, kStops);
    if (at == value.size() || value[at] != '(') return at;
    at = value.find(')', at);
    if (at == std::string_view::npos) return value.size();
  }
}

}  // namespace

// Reads up to the comma that ends the candidate, and returns whether the descriptors are right.
bool SrcsetReader::readDescriptors() {
  Descriptors descriptors;
  for (;;) {
    at_ = skipAll(value_, at_, kAsciiWhiteSpace);
    const std::size_t begin = at_;
    at_ = findDescriptorEnd(value_, at_);
    if (at_ > begin) descriptors.add(value_.substr(begin, at_ - begin));
    if (at_ == value_.size()) break;
    if (value_[at_++] == ',') break;
  }
  return descriptors.areRight();
}

std::optional<Span> SrcsetReader::next() {
  for (;;) {
    const std::size_t begin = skipAll(value_, at_, kBetweenCandidates);
    if (begin == value_.size()) return std::nullopt;
    at_ = findIn(value_, begin, kAsciiWhiteSpace);
    std::size_t end = at_;
    while (value_[end - 1] == ',') --end;
    if (end < at_ || readDescriptors()) {
      return Span{static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
    }
  }
}

}  // namespace pagescan::internal
