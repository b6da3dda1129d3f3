#include "url/labels.h"

#include <algorithm>
#include <initializer_list>

#include "url/unicode.h"

namespace pagescan::internal {
namespace {

constexpr char32_t kZeroWidthNonJoiner = 0x200C, kZeroWidthJoiner = 0x200D;

// Whether the characters between two joining ones, from `at` on in the direction of `step`, are
// transparent up to one of this type or dual.
bool joins(std::u32string_view label, std::size_t at, std::size_t step, JoiningType type) {
  for (at += step; at < label.size(); at += step) {  // before 0, it wraps to the largest number
    const JoiningType found = propertiesOf(label[at]).joiningType;
    if (found != JoiningType::transparent) return found == type || found == JoiningType::dual;
  }
  return false;
}

// RFC 5892, A.1 and A.2. No character is looked at more than twice from joiners: a joiner is not
// transparent.
bool isJoinerInPlace(std::u32string_view label, std::size_t at) {
  if (at > 0 && propertiesOf(label[at - 1]).combiningClass == kVirama) return true;
  constexpr auto kBackwards = static_cast<std::size_t>(-1);
  return label[at] == kZeroWidthNonJoiner && joins(label, at, kBackwards, JoiningType::left) &&
         joins(label, at, 1, JoiningType::right);
}

// A set of bidi classes.
class BidiClasses {
 public:
  constexpr BidiClasses(std::initializer_list<BidiClass> classes) {
    for (const BidiClass c : classes) bits_ |= bitOf(c);
  }
  constexpr bool has(BidiClass c) const { return (bits_ & bitOf(c)) != 0; }
  constexpr bool hasAllOf(BidiClasses other) const { return (other.bits_ & ~bits_) == 0; }
  constexpr void add(BidiClass c) { bits_ |= bitOf(c); }

 private:
  static constexpr unsigned bitOf(BidiClass c) { return 1U << static_cast<unsigned>(c); }
  unsigned bits_ = 0;
};

using enum BidiClass;
constexpr BidiClasses kRightToLeft = {rightToLeft, arabicLetter, arabicNumber};
constexpr BidiClasses kInRightToLeft = {
    rightToLeft,     arabicLetter,       arabicNumber, europeanNumber,  europeanSeparator,
    commonSeparator, europeanTerminator, otherNeutral, boundaryNeutral, nonspacingMark};
constexpr BidiClasses kAtEndOfRightToLeft = {rightToLeft, arabicLetter, europeanNumber,
                                             arabicNumber};
constexpr BidiClasses kInLeftToRight = {leftToRight,     europeanNumber,     europeanSeparator,
                                        commonSeparator, europeanTerminator, otherNeutral,
                                        boundaryNeutral, nonspacingMark};
constexpr BidiClasses kAtEndOfLeftToRight = {leftToRight, europeanNumber};
constexpr BidiClasses kBothNumbers = {europeanNumber, arabicNumber};

}  // namespace

bool isValidLabel(std::u32string_view label) {
  if (label.substr(0, 4) == U"xn--" || propertiesOf(label.front()).isMark) return false;
  for (std::size_t at = 0; at < label.size(); ++at) {
    const char32_t character = label[at];
    if (idnaStatusOf(character) != IdnaStatus::valid) return false;
    const bool isJoiner = character == kZeroWidthNonJoiner || character == kZeroWidthJoiner;
    if (isJoiner && !isJoinerInPlace(label, at)) return false;
  }
  return true;
}

bool isRightToLeft(std::u32string_view label) {
  return std::any_of(label.begin(), label.end(),
                     [](char32_t c) { return kRightToLeft.has(propertiesOf(c).bidiClass); });
}

bool keepsBidiRule(std::u32string_view label) {
  const BidiClass first = propertiesOf(label.front()).bidiClass;
  const bool fromRight = first == rightToLeft || first == arabicLetter;
  if (!fromRight && first != leftToRight) return false;
  const BidiClasses& allowed = fromRight ? kInRightToLeft : kInLeftToRight;
  BidiClasses found = {};
  BidiClass last = other;  // but for nonspacing marks
  for (const char32_t character : label) {
    const BidiClass bidiClass = propertiesOf(character).bidiClass;
    if (!allowed.has(bidiClass)) return false;
    found.add(bidiClass);
    if (bidiClass != nonspacingMark) last = bidiClass;
  }
  if (!fromRight) return kAtEndOfLeftToRight.has(last);
  return kAtEndOfRightToLeft.has(last) && !found.hasAllOf(kBothNumbers);
}

}  // namespace pagescan::internal
