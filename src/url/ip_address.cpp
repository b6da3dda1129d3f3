#include "url/ip_address.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "url/digits.h"

namespace pagescan::internal {
namespace {

constexpr std::uint64_t kBeyondIpv4 = std::uint64_t{1} << 32;

bool isAllDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return kDigits.contains(c); });
}

// "IPv4 number parser". Numbers beyond 32 bits give kBeyondIpv4, however long they are.
std::optional<std::uint64_t> ipv4Number(std::string_view text) {
  if (text.empty()) return std::nullopt;
  unsigned radix = 10;
  if (text.size() > 1 && text[0] == '0' && toLower(text[1]) == 'x') {
    radix = 16;
    text.remove_prefix(2);
  } else if (text.size() > 1 && text[0] == '0') {
    radix = 8;
    text.remove_prefix(1);
  }
  std::uint64_t value = 0;
  for (const char c : text) {
    if (!isHexDigit(c) || hexDigitValue(c) >= radix) return std::nullopt;
    value = std::min(value * radix + hexDigitValue(c), kBeyondIpv4);
  }
  return value;
}

// Takes the text up to the next "." away; false when nothing is left after it.
bool takeLabel(std::string_view& text, std::string_view& label) {
  const std::size_t dot = text.find('.');
  label = text.substr(0, dot);
  if (dot == std::string_view::npos) {
    text = {};
    return false;
  }
  text.remove_prefix(dot + 1);
  return true;
}

void appendHex(std::string& out, unsigned value) {
  constexpr char kHex[] = "0123456789abcdef";
  bool started = false;
  for (int shift = 12; shift >= 0; shift -= 4) {
    const unsigned digit = value >> shift & 15;
    started = started || digit != 0 || shift == 0;
    if (started) out += kHex[digit];
  }
}

void appendDottedQuad(std::string& out, std::uint64_t address) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    out += std::to_string(address >> shift & 255);
    if (shift > 0) out += '.';
  }
}

using Pieces = std::array<std::uint16_t, 8>;

// Reads the text of an IPv6 address piece by piece ("IPv6 parser").
class Ipv6Reader {
 public:
  explicit Ipv6Reader(std::string_view text) : text_(text) {}

  bool read() {
    if (peek() == ':') {
      if (text_.substr(0, 2) != "::") return false;
      at_ = 2;
      compressed_ = ++count_;
    }
    while (at_ < text_.size()) {
      if (count_ == pieces_.size()) return false;
      if (!readPiece()) return false;
    }
    return compressed_ ? spread() : count_ == pieces_.size();
  }

  const Pieces& pieces() const { return pieces_; }

 private:
  char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }

  // One piece and the ":" after it, a second ":", or the IPv4 address at the end.
  bool readPiece() {
    if (peek() == ':') {
      if (compressed_) return false;
      ++at_;
      compressed_ = ++count_;
      return true;
    }
    unsigned value = 0;
    std::size_t length = 0;
    for (; length < 4 && at_ < text_.size() && isHexDigit(text_[at_]); ++length) {
      value = value << 4 | hexDigitValue(text_[at_++]);
    }
    if (peek() == '.') {
      at_ -= length;
      return length > 0 && readIpv4();
    }
    if (peek() == ':') {
      if (++at_ == text_.size()) return false;
    } else if (at_ < text_.size()) {
      return false;
    }
    pieces_[count_++] = static_cast<std::uint16_t>(value);
    return true;
  }

  // Four decimal numbers without leading zeros: the last two pieces.
  bool readIpv4() {
    if (count_ > 6) return false;
    for (std::size_t seen = 0; seen < 4; ++seen) {
      if (seen > 0 && (at_ == text_.size() || text_[at_++] != '.')) return false;
      if (!kDigits.contains(peek())) return false;
      unsigned value = 0;
      for (std::size_t begin = at_; kDigits.contains(peek()); ++at_) {
        if (at_ > begin && value == 0) return false;
        value = value * 10 + static_cast<unsigned>(peek() - '0');
        if (value > 255) return false;
      }
      std::uint16_t& piece = pieces_[count_ + seen / 2];
      piece = static_cast<std::uint16_t>(piece * 256U + value);
    }
    count_ += 2;
    return at_ == text_.size();
  }

  // Moves the pieces after the "::" to the end.
  bool spread() {
    std::rotate(pieces_.begin() + static_cast<std::ptrdiff_t>(*compressed_),
                pieces_.begin() + static_cast<std::ptrdiff_t>(count_), pieces_.end());
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  Pieces pieces_{};
  std::size_t count_ = 0;                  // pieces read, the "::" counted as one
  std::optional<std::size_t> compressed_;  // the piece after the "::"
};

struct Run {
  std::size_t begin = 0;
  std::size_t length = 0;
};

// The first longest run of two or more pieces that are 0; its length is 0 when there is none.
Run longestRunOfZeros(const Pieces& pieces) {
  Run longest;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    Run run{i, 0};
    while (i < pieces.size() && pieces[i] == 0) ++i, ++run.length;
    if (run.length > 1 && run.length > longest.length) longest = run;
  }
  return longest;
}

}  // namespace

bool endsInNumber(std::string_view domain) {
  if (!domain.empty() && domain.back() == '.') domain.remove_suffix(1);
  const std::size_t dot = domain.rfind('.');
  const std::string_view last = dot == std::string_view::npos ? domain : domain.substr(dot + 1);
  return !last.empty() && (isAllDigits(last) || ipv4Number(last).has_value());
}

bool appendIpv4(std::string& out, std::string_view text) {
  if (!text.empty() && text.back() == '.') text.remove_suffix(1);
  std::uint64_t address = 0;
  bool more = true;
  for (int part = 0; more; ++part) {
    if (part == 4) return false;
    std::string_view label;
    more = takeLabel(text, label);
    const std::optional<std::uint64_t> number = ipv4Number(label);
    if (!number) return false;
    // The last number fills all the bytes that are left, each other one exactly one.
    const std::uint64_t limit = more ? 256 : std::uint64_t{1} << 8 * (4 - part);
    if (*number >= limit) return false;
    address += more ? *number << 8 * (3 - part) : *number;
  }
  appendDottedQuad(out, address);
  return true;
}

bool appendIpv6(std::string& out, std::string_view text) {
  Ipv6Reader reader(text);
  if (!reader.read()) return false;
  const Pieces& pieces = reader.pieces();
  const Run zeros = longestRunOfZeros(pieces);
  out += '[';
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (zeros.length > 0 && i == zeros.begin) {
      out += i == 0 ? "::" : ":";
      i += zeros.length - 1;
      continue;
    }
    appendHex(out, pieces[i]);
    if (i + 1 < pieces.size()) out += ':';
  }
  out += ']';
  return true;
}

}  // namespace pagescan::internal
