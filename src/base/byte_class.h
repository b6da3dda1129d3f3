// Sets of bytes, built at compile time from texts, ranges and unions, so that each reads like its
// rule. ASCII only: no locale is ever consulted.
#ifndef PAGESCAN_BASE_BYTE_CLASS_H
#define PAGESCAN_BASE_BYTE_CLASS_H

#include <array>
#include <string_view>

namespace pagescan::internal {

constexpr unsigned char toByte(char c) {
  return static_cast<unsigned char>(c);
}

class ByteClass {
 public:
  constexpr ByteClass() = default;

  static constexpr ByteClass of(std::string_view bytes) {
    ByteClass result;
    for (const char c : bytes) result.add(c);
    return result;
  }

  static constexpr ByteClass range(char first, char last) {
    ByteClass result;
    for (int c = toByte(first); c <= toByte(last); ++c) result.add(static_cast<char>(c));
    return result;
  }

  constexpr void add(char c) { member_[toByte(c)] = true; }
  constexpr bool contains(char c) const { return member_[toByte(c)]; }

  constexpr bool intersects(const ByteClass& other) const {
    for (std::size_t i = 0; i < member_.size(); ++i) {
      if (member_[i] && other.member_[i]) return true;
    }
    return false;
  }

  constexpr std::size_t size() const {
    std::size_t count = 0;
    for (const bool isMember : member_) count += isMember ? 1 : 0;
    return count;
  }

  friend constexpr ByteClass operator|(const ByteClass& a, const ByteClass& b) {
    ByteClass result;
    for (std::size_t i = 0; i < result.member_.size(); ++i) {
      result.member_[i] = a.member_[i] || b.member_[i];
    }
    return result;
  }

 private:
  std::array<bool, 256> member_{};
};

inline constexpr ByteClass kUpper = ByteClass::range('A', 'Z');
inline constexpr ByteClass kLower = ByteClass::range('a', 'z');
inline constexpr ByteClass kLetters = kUpper | kLower;
inline constexpr ByteClass kDigits = ByteClass::range('0', '9');
inline constexpr ByteClass kLettersAndDigits = kLetters | kDigits;

// The white space of HTML; form feed and vertical tab are ordinary bytes to hosts.
inline constexpr ByteClass kHtmlWhiteSpace = ByteClass::of("\t\n\r ");

// The white space of the C library's number readers.
inline constexpr ByteClass kCWhiteSpace = ByteClass::of("\t\n\v\f\r ");

static_assert(kLettersAndDigits.size() == 62 && kHtmlWhiteSpace.size() == 4);

constexpr char toLower(char c) {
  return kUpper.contains(c) ? static_cast<char>(c + 32) : c;
}
constexpr char toUpper(char c) {
  return kLower.contains(c) ? static_cast<char>(c - 32) : c;
}

}  // namespace pagescan::internal

#endif
