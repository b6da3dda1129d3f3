// RFC 3492, 6.1 to 6.3, in numbers that cannot overflow, with the limits of browsers.
#include "reference/url/url.h"

namespace reference {
namespace {

using Number = unsigned long long;

constexpr Number kBase = 36, kTmin = 1, kTmax = 26, kSkew = 38, kDamp = 700;
constexpr Number kInitialBias = 72, kInitialN = 0x80, kMaxInt = 0x7FFFFFFF;

Number adapt(Number delta, Number numpoints, bool firsttime) {
  delta = firsttime ? delta / kDamp : delta / 2;
  delta += delta / numpoints;
  Number k = 0;
  while (delta > ((kBase - kTmin) * kTmax) / 2) {
    delta /= kBase - kTmin;
    k += kBase;
  }
  return k + ((kBase - kTmin + 1) * delta) / (delta + kSkew);
}

Number thresholdOf(Number k, Number bias) {
  if (k <= bias + kTmin) return kTmin;
  return k >= bias + kTmax ? kTmax : k - bias;
}

char32_t digitOf(Number value) {
  return static_cast<char32_t>(value < 26 ? 'a' + value : '0' + (value - 26));
}

}  // namespace

std::optional<CodePoints> encodePunycode(const CodePoints& input) {
  std::size_t units = 0;
  for (const char32_t c : input) units += c > 0xFFFF ? 2 : 1;
  if (units > 1000) return std::nullopt;
  CodePoints output;
  for (const char32_t c : input) {
    if (c < 0x80) output += c;
  }
  Number n = kInitialN, delta = 0, bias = kInitialBias, h = output.size();
  const Number b = h;
  if (b > 0) output += U'-';
  while (h < input.size()) {
    Number m = ~Number{0};
    for (const char32_t c : input) {
      if (c >= n && c < m) m = c;
    }
    delta += (m - n) * (h + 1);
    n = m;
    for (const char32_t c : input) {
      if (c < n) ++delta;
      if (c != n) continue;
      Number q = delta;
      for (Number k = kBase;; k += kBase) {
        const Number t = thresholdOf(k, bias);
        if (q < t) break;
        output += digitOf(t + (q - t) % (kBase - t));
        q = (q - t) / (kBase - t);
      }
      output += digitOf(q);
      bias = adapt(delta, h + 1, h == b);
      delta = 0;
      ++h;
    }
    ++delta;
    ++n;
  }
  return output;
}

std::optional<CodePoints> decodePunycode(const CodePoints& input) {
  if (input.size() > 2000) return std::nullopt;
  const std::size_t delimiter = input.rfind(U'-');
  const std::size_t b = delimiter == CodePoints::npos ? 0 : delimiter;
  CodePoints output = input.substr(0, b);
  Number n = kInitialN, i = 0, bias = kInitialBias;
  for (std::size_t in = b > 0 ? b + 1 : 0; in < input.size();) {
    const Number oldi = i;
    Number w = 1;
    for (Number k = kBase;; k += kBase) {
      if (in == input.size()) return std::nullopt;
      const char32_t c = input[in++];
      Number digit = 0;
      if (c >= 'a' && c <= 'z') {
        digit = c - 'a';
      } else if (c >= '0' && c <= '9') {
        digit = c - '0' + 26;
      } else {
        return std::nullopt;
      }
      i += digit * w;
      if (i > kMaxInt) return std::nullopt;
      const Number t = thresholdOf(k, bias);
      if (digit < t) break;
      w *= kBase - t;
      if (w > kMaxInt) return std::nullopt;
    }
    bias = adapt(i - oldi, output.size() + 1, oldi == 0);
    n += i / (output.size() + 1);
    i %= output.size() + 1;
    if (n > 0x10FFFF) return std::nullopt;
    output = output.substr(0, i) + static_cast<char32_t>(n) + output.substr(i);
    ++i;
  }
  return output;
}

}  // namespace reference
