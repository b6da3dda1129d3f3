// 3.5 "Host parsing" and 3.6 "Host serializing".
#include <array>
#include <cstdint>
#include <cstdio>

#include "reference/url/percent.h"
#include "reference/url/url.h"

namespace reference {
namespace {

bool isAsciiDigit(char32_t c) {
  return c >= '0' && c <= '9';
}

bool isForbiddenHostCodePoint(char32_t c) {
  return c == 0 || CodePoints(U"\t\n\r #/:<>?@[\\]^|").find(c) != CodePoints::npos;
}
bool isForbiddenDomainCodePoint(char32_t c) {
  return isForbiddenHostCodePoint(c) || c <= 0x1F || c == '%' || c == 0x7F;
}

std::vector<CodePoints> strictlySplit(const CodePoints& input) {
  std::vector<CodePoints> parts(1);
  for (const char32_t c : input) {
    if (c == '.') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

// Numbers beyond all addresses are cut.
std::optional<std::uint64_t> parseIpv4Number(CodePoints input) {
  if (input.empty()) return std::nullopt;
  std::uint64_t radix = 10;
  if (input.size() >= 2 && (input.substr(0, 2) == U"0x" || input.substr(0, 2) == U"0X")) {
    input.erase(0, 2);
    radix = 16;
  } else if (input.size() >= 2 && input[0] == '0') {
    input.erase(0, 1);
    radix = 8;
  }
  std::uint64_t output = 0;
  for (const char32_t c : input) {
    const int digit = hexValue(c);
    if (digit < 0 || static_cast<std::uint64_t>(digit) >= radix) return std::nullopt;
    if (output < (1ULL << 40)) output = output * radix + static_cast<std::uint64_t>(digit);
  }
  return output;
}

bool endsInANumber(const CodePoints& input) {
  std::vector<CodePoints> parts = strictlySplit(input);
  if (parts.back().empty()) {
    if (parts.size() == 1) return false;
    parts.pop_back();
  }
  const CodePoints& last = parts.back();
  bool onlyDigits = !last.empty();
  for (const char32_t c : last) onlyDigits = onlyDigits && isAsciiDigit(c);
  return onlyDigits || parseIpv4Number(last).has_value();
}

std::optional<CodePoints> parseIpv4(const CodePoints& input) {
  std::vector<CodePoints> parts = strictlySplit(input);
  if (parts.back().empty() && parts.size() > 1) parts.pop_back();
  if (parts.size() > 4) return std::nullopt;
  std::vector<std::uint64_t> numbers;
  for (const CodePoints& part : parts) {
    const std::optional<std::uint64_t> result = parseIpv4Number(part);
    if (!result) return std::nullopt;
    numbers.push_back(*result);
  }
  for (std::size_t i = 0; i + 1 < numbers.size(); ++i) {
    if (numbers[i] > 255) return std::nullopt;
  }
  std::uint64_t limit = 1;
  for (std::size_t i = 0; i < 5 - numbers.size(); ++i) limit *= 256;
  if (numbers.back() >= limit) return std::nullopt;
  std::uint64_t ipv4 = numbers.back();
  for (std::size_t i = 0; i + 1 < numbers.size(); ++i) ipv4 += numbers[i] << (8 * (3 - i));
  std::string output;
  for (int i = 3; i >= 0; --i) {
    output += std::to_string(ipv4 >> (8 * i) & 255) + (i > 0 ? "." : "");
  }
  return decodeUtf8(output);
}

using Address = std::array<unsigned, 8>;

// "IPv6 parser", with its pointer.
struct Ipv6Parser {
  const CodePoints& input;
  Address address{};
  std::size_t pieceIndex = 0, pointer = 0;

  bool isEof() const { return pointer >= input.size(); }
  char32_t c() const { return isEof() ? char32_t{0xFFFFFFFF} : input[pointer]; }

  std::optional<Address> parse() {
    std::optional<std::size_t> compress;
    if (c() == ':') {
      if (input.substr(0, 2) != U"::") return std::nullopt;
      pointer += 2;
      compress = ++pieceIndex;
    }
    while (!isEof()) {
      if (pieceIndex == 8) return std::nullopt;
      if (c() == ':') {
        if (compress) return std::nullopt;
        ++pointer;
        compress = ++pieceIndex;
        continue;
      }
      unsigned value = 0;
      std::size_t length = 0;
      for (; length < 4 && hexValue(c()) >= 0; ++pointer, ++length) {
        value = value * 16 + static_cast<unsigned>(hexValue(c()));
      }
      if (c() == '.') {
        if (length == 0) return std::nullopt;
        pointer -= length;
        if (pieceIndex > 6 || !parseIpv4Pieces()) return std::nullopt;
        break;
      }
      if (c() == ':') {
        ++pointer;
        if (isEof()) return std::nullopt;
      } else if (!isEof()) {
        return std::nullopt;
      }
      address[pieceIndex++] = value;
    }
    if (!compress) return pieceIndex == 8 ? std::optional(address) : std::nullopt;
    std::size_t swaps = pieceIndex - *compress;
    for (pieceIndex = 7; pieceIndex != 0 && swaps > 0; --pieceIndex, --swaps) {
      std::swap(address[pieceIndex], address[*compress + swaps - 1]);
    }
    return address;
  }

  bool parseIpv4Pieces() {
    int numbersSeen = 0;
    while (!isEof()) {
      std::optional<unsigned> ipv4Piece;
      if (numbersSeen > 0) {
        if (c() != '.' || numbersSeen >= 4) return false;
        ++pointer;
      }
      if (!isAsciiDigit(c())) return false;
      for (; isAsciiDigit(c()); ++pointer) {
        const unsigned number = c() - '0';
        if (ipv4Piece == 0U) return false;
        ipv4Piece = ipv4Piece ? *ipv4Piece * 10 + number : number;
        if (*ipv4Piece > 255) return false;
      }
      address[pieceIndex] = address[pieceIndex] * 256 + *ipv4Piece;
      ++numbersSeen;
      if (numbersSeen == 2 || numbersSeen == 4) ++pieceIndex;
    }
    return numbersSeen == 4;
  }
};

CodePoints serializeIpv6(const Address& address) {
  std::size_t compress = 8, longest = 1;  // the first longest run of two or more zeros
  for (std::size_t i = 0; i < 8; ++i) {
    std::size_t length = 0;
    while (i + length < 8 && address[i + length] == 0) ++length;
    if (length > longest) {
      compress = i;
      longest = length;
    }
  }
  CodePoints output;
  bool ignore0 = false;
  for (std::size_t i = 0; i < 8; ++i) {
    if (ignore0 && address[i] == 0) continue;
    ignore0 = false;
    if (i == compress) {
      output += i == 0 ? U"::" : U":";
      ignore0 = true;
      continue;
    }
    char piece[9];
    std::snprintf(piece, sizeof piece, "%x", address[i]);
    output += decodeUtf8(piece);
    if (i != 7) output += U":";
  }
  return U"[" + output + U"]";
}

}  // namespace

std::optional<CodePoints> parseHost(const CodePoints& input, bool isOpaque) {
  if (!input.empty() && input.front() == '[') {
    if (input.back() != ']') return std::nullopt;
    const CodePoints text = input.substr(1, input.size() - 2);
    const std::optional<Address> address = Ipv6Parser{text}.parse();
    return address ? std::optional(serializeIpv6(*address)) : std::nullopt;
  }
  if (isOpaque) {
    CodePoints output;
    for (const char32_t c : input) {
      if (isForbiddenHostCodePoint(c)) return std::nullopt;
      output += utf8PercentEncode(c, isInC0ControlSet);
    }
    return output;
  }
  const std::optional<CodePoints> asciiDomain = domainToAscii(decodeUtf8(percentDecode(input)));
  if (!asciiDomain) return std::nullopt;
  return endsInANumber(*asciiDomain) ? parseIpv4(*asciiDomain) : asciiDomain;
}

std::optional<CodePoints> domainToAscii(const CodePoints& domain) {
  bool isAscii = true;
  CodePoints result;
  for (const char32_t c : domain) {
    isAscii = isAscii && c < 0x80;
    result += c >= 'A' && c <= 'Z' ? c + 32 : c;
  }
  if (!isAscii) {
    const std::optional<CodePoints> ascii = unicodeToAscii(domain);
    if (!ascii) return std::nullopt;
    result = *ascii;
  }
  if (result.empty()) return std::nullopt;
  for (const char32_t c : result) {
    if (isForbiddenDomainCodePoint(c)) return std::nullopt;
  }
  return result;
}

}  // namespace reference
