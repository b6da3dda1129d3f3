#include "base/numbers.h"

#include <limits>

#include "base/byte_class.h"
#include "base/search.h"

namespace pagescan::internal {
namespace {

// One byte that stands alone: white space, signs and the like read as no number.
int digitOrZero(char c) {
  const int value = hexDigitValue(c);
  return value < 0 ? 0 : value;
}

// Digits of one base, saturating at the largest long.
class Accumulator {
 public:
  explicit Accumulator(bool negative) : negative_(negative) {}

  void take(int digit, int base) {
    const auto step = static_cast<unsigned long>(digit);
    const auto factor = static_cast<unsigned long>(base);
    if (value_ > (limit() - step) / factor) {
      saturated_ = true;
    } else {
      value_ = value_ * factor + step;
    }
  }

  // The low 32 bits of the signed number.
  int low32() const {
    const auto low = static_cast<unsigned>(saturated_ ? limit() : value_);
    return static_cast<int>(negative_ && low != 0 ? ~low + 1 : low);
  }

 private:
  unsigned long limit() const {
    return static_cast<unsigned long>(std::numeric_limits<long>::max()) + (negative_ ? 1 : 0);
  }

  bool negative_;
  bool saturated_ = false;
  unsigned long value_ = 0;
};

int digitValue(char c, int base) {
  const int value = hexDigitValue(c);
  return value < base ? value : -1;
}

bool isHexPrefix(const char* begin, const char* end) {
  return end - begin >= 2 && begin[0] == '0' && toLower(begin[1]) == 'x';
}

}  // namespace

int readHexEscape(char first, char second) {
  const int high = hexDigitValue(first);
  if (high >= 0) {
    const int low = hexDigitValue(second);
    return low >= 0 ? high * 16 + low : high;
  }
  if (kCWhiteSpace.contains(first) || first == '+') return digitOrZero(second);
  if (first == '-') return -digitOrZero(second);
  return 0;
}

std::optional<int> readInteger(const char* begin, const char* end) {
  const char* at = findFirstNotOf(begin, end, kCWhiteSpace);
  const bool negative = at < end && *at == '-';
  if (at < end && (*at == '-' || *at == '+')) ++at;
  if (at == end || !kDigits.contains(*at)) return std::nullopt;
  int base = *at == '0' ? 8 : 10;
  if (isHexPrefix(at, end)) {
    base = 16;
    at += 2;
  }
  Accumulator number(negative);
  for (; at < end && digitValue(*at, base) >= 0; ++at) number.take(digitValue(*at, base), base);
  return number.low32();
}

}  // namespace pagescan::internal
