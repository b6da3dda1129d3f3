// UTS #46, 4 "Processing" and 4.2 "ToASCII", with CheckHyphens, UseSTD3ASCIIRules,
// Transitional_Processing, VerifyDnsLength and IgnoreInvalidPunycode false, CheckBidi and
// CheckJoiners true.
#include <algorithm>
#include <set>

#include "reference/url/url.h"
#include "url/unicode.h"

namespace reference {
namespace {

using enum pagescan::internal::BidiClass;
using pagescan::internal::BidiClass;
using pagescan::internal::IdnaStatus;
using pagescan::internal::idnaStatusOf;
using pagescan::internal::JoiningType;
using pagescan::internal::propertiesOf;

bool isAscii(const CodePoints& text) {
  return std::all_of(text.begin(), text.end(), [](char32_t c) { return c < 0x80; });
}

BidiClass bidi(char32_t c) {
  return propertiesOf(c).bidiClass;
}

// RFC 5892, Appendix A.1: Joining_Type:{L,D} (T)* ZWNJ (T)* Joining_Type:{R,D}.
bool joinsAround(const CodePoints& label, std::size_t at) {
  const auto typeAt = [&label](std::size_t i) { return propertiesOf(label[i]).joiningType; };
  std::size_t before = at, after = at + 1;
  while (before > 0 && typeAt(before - 1) == JoiningType::transparent) --before;
  while (after < label.size() && typeAt(after) == JoiningType::transparent) ++after;
  if (before == 0 || after == label.size()) return false;
  const JoiningType left = typeAt(before - 1), right = typeAt(after);
  return (left == JoiningType::left || left == JoiningType::dual) &&
         (right == JoiningType::right || right == JoiningType::dual);
}

bool satisfiesContextJ(const CodePoints& label) {
  for (std::size_t i = 0; i < label.size(); ++i) {
    if (label[i] != 0x200C && label[i] != 0x200D) continue;
    if (i > 0 && propertiesOf(label[i - 1]).combiningClass == 9) continue;
    if (label[i] == 0x200D || !joinsAround(label, i)) return false;
  }
  return true;
}

// RFC 5893, section 2, rule by rule.
bool satisfiesBidiRule(const CodePoints& label) {
  std::vector<BidiClass> classes;
  for (const char32_t c : label) classes.push_back(bidi(c));
  const auto isIn = [](BidiClass c, const std::set<BidiClass>& set) { return set.count(c) == 1; };
  const auto only = [&](const std::set<BidiClass>& set) {
    return std::all_of(classes.begin(), classes.end(), [&](BidiClass c) { return isIn(c, set); });
  };
  const auto has = [&](BidiClass c) { return std::count(classes.begin(), classes.end(), c) > 0; };
  std::vector<BidiClass> trimmed = classes;
  while (!trimmed.empty() && trimmed.back() == nonspacingMark) trimmed.pop_back();
  const BidiClass last = trimmed.empty() ? other : trimmed.back();
  if (classes[0] == rightToLeft || classes[0] == arabicLetter) {
    return only({rightToLeft, arabicLetter, arabicNumber, europeanNumber, europeanSeparator,
                 commonSeparator, europeanTerminator, otherNeutral, boundaryNeutral,
                 nonspacingMark}) &&
           isIn(last, {rightToLeft, arabicLetter, europeanNumber, arabicNumber}) &&
           !(has(europeanNumber) && has(arabicNumber));
  }
  return classes[0] == leftToRight &&
         only({leftToRight, europeanNumber, europeanSeparator, commonSeparator, europeanTerminator,
               otherNeutral, boundaryNeutral, nonspacingMark}) &&
         isIn(last, {leftToRight, europeanNumber});
}

bool isBidiLabel(const CodePoints& label) {
  return std::any_of(label.begin(), label.end(), [](char32_t c) {
    return bidi(c) == rightToLeft || bidi(c) == arabicLetter || bidi(c) == arabicNumber;
  });
}

// 4.1 "Validity Criteria", except for the last.
bool isValid(const CodePoints& label) {
  if (label.empty()) return true;
  if (toNfc(label) != label) return false;
  if (label.substr(0, 4) == U"xn--") return false;
  if (label.find(U'.') != CodePoints::npos) return false;
  if (propertiesOf(label[0]).isMark) return false;
  for (const char32_t c : label) {
    if (idnaStatusOf(c) != IdnaStatus::valid) return false;
  }
  return satisfiesContextJ(label);
}

std::vector<CodePoints> labelsOf(const CodePoints& domain) {
  std::vector<CodePoints> labels(1);
  for (const char32_t c : domain) {
    if (c == '.') {
      labels.emplace_back();
    } else {
      labels.back() += c;
    }
  }
  return labels;
}

}  // namespace

std::optional<CodePoints> unicodeToAscii(const CodePoints& domain) {
  CodePoints mapped;
  for (const char32_t c : domain) pagescan::internal::appendIdnaMapped(mapped, c);
  const std::vector<CodePoints> written = labelsOf(toNfc(mapped));
  std::vector<CodePoints> labels = written;
  for (CodePoints& label : labels) {
    if (label.substr(0, 4) == U"xn--") {
      if (!isAscii(label)) return std::nullopt;
      const std::optional<CodePoints> decoded = decodePunycode(label.substr(4));
      if (!decoded || isAscii(*decoded)) return std::nullopt;
      label = *decoded;
    }
    if (!isValid(label)) return std::nullopt;
  }
  if (std::any_of(labels.begin(), labels.end(), isBidiLabel)) {
    for (const CodePoints& label : labels) {
      if (!label.empty() && !satisfiesBidiRule(label)) return std::nullopt;
    }
  }
  CodePoints result;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    if (i > 0) result += U'.';
    if (isAscii(labels[i])) {
      result += labels[i];
      continue;
    }
    // Browsers do not encode again what they decoded: their limit on encoding does not count.
    const std::optional<CodePoints> encoded = encodePunycode(labels[i]);
    if (!encoded && isAscii(written[i])) {
      result += written[i];
    } else if (!encoded) {
      return std::nullopt;
    } else {
      result += U"xn--" + *encoded;
    }
  }
  return result;
}

}  // namespace reference
