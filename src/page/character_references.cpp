#include "page/character_references.h"

#include <cstdint>
#include <cstring>
#include <iterator>

#include "base/byte_class.h"
#include "page/generated/character_references.h"
#include "page/white_space.h"

namespace pagescan::internal {
namespace {

static_assert(kReferenceCount == 2231 && std::size(kNamedReferences) == 2125);

constexpr ByteClass kHexDigits = kDigits | ByteClass::range('a', 'f') | ByteClass::range('A', 'F');

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

// The longest name, and the longest one that may lack its ";".
constexpr std::size_t longestName(bool lackingSemicolon) {
  std::size_t longest = 0;
  for (const NamedReferenceRow& row : kNamedReferences) {
    if (lackingSemicolon && !row.mayLackSemicolon) continue;
    if (row.length > longest) longest = row.length;
  }
  return longest;
}
constexpr std::size_t kLongestName = longestName(false);
constexpr std::size_t kLongestBareName = longestName(true);
static_assert(kLongestName == 31 && kLongestBareName == 6);

// The hash and the row as in scripts/generate/character_references.py.
constexpr std::uint32_t kEmptyHash = 0x811C9DC5;

constexpr std::uint32_t extendHash(std::uint32_t hash, char c) {
  return (hash ^ toByte(c)) * 0x01000193U;
}

std::size_t rowOf(std::uint32_t hash) {
  hash ^= kReferenceSeeds[hash % std::size(kReferenceSeeds)] * 0x9E3779B1U;
  hash ^= hash >> 15;
  hash *= 0x2C1B3C6DU;
  hash ^= hash >> 13;
  return static_cast<std::size_t>((std::uint64_t{hash} * std::size(kNamedReferences)) >> 32);
}

// The row of a name without "&" and ";", or null.
const NamedReferenceRow* findName(std::string_view name, std::uint32_t hash) {
  const NamedReferenceRow& row = kNamedReferences[rowOf(hash)];
  return std::string_view(kReferenceNames + row.name, row.length) == name ? &row : nullptr;
}

// Numbers that mean something else than the character of that value: the bytes 80 to 9F of
// windows-1252. 0 for those that mean themselves.
constexpr char32_t kWindows1252[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,       //
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char32_t characterOf(char32_t number) {
  const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
  if (number == 0 || number > kLastCodePoint || isSurrogate) return kReplacement;
  if (number < 0x80 || number > 0x9F || kWindows1252[number - 0x80] == 0) return number;
  return kWindows1252[number - 0x80];
}

unsigned digitValue(char c) {
  return kDigits.contains(c) ? toByte(c) - unsigned{'0'} : toByte(toLower(c)) - unsigned{'a'} + 10;
}

// `at` points after "&#".
CharacterReference readNumber(const char* begin, const char* at, const char* end) {
  const bool isHex = at != end && toLower(*at) == 'x';
  const ByteClass& digits = isHex ? kHexDigits : kDigits;
  const unsigned radix = isHex ? 16 : 10;
  if (isHex) ++at;
  const char* const firstDigit = at;
  char32_t number = 0;
  for (; at != end && digits.contains(*at); ++at) {
    if (number <= kLastCodePoint) number = number * radix + digitValue(*at);
  }
  if (at == firstDigit) return {};
  if (at != end && *at == ';') ++at;
  return {static_cast<std::size_t>(at - begin), characterOf(number), 0};
}

// `at` points after "&". A name with ";" takes all letters and digits there are, so the longest
// match is that one, else the longest of those that may lack the ";".
CharacterReference readName(const char* begin, const char* at, const char* end,
                            ReferenceContext context) {
  const char* const name = at;
  const NamedReferenceRow* bare = nullptr;
  std::uint32_t hash = kEmptyHash;
  for (; at != end && kLettersAndDigits.contains(*at); ++at) {
    const auto length = static_cast<std::size_t>(at - name) + 1;
    if (length > kLongestName) break;
    hash = extendHash(hash, *at);
    if (length > kLongestBareName) continue;
    const NamedReferenceRow* row = findName({name, length}, hash);
    if (row != nullptr && row->mayLackSemicolon) bare = row;
  }
  if (at != end && *at == ';') {
    const NamedReferenceRow* row = findName({name, static_cast<std::size_t>(at - name)}, hash);
    if (row != nullptr) return {static_cast<std::size_t>(at + 1 - begin), row->first, row->second};
  }
  if (bare == nullptr) return {};
  const char* const after = name + bare->length;
  const bool staysInAttribute =
      after != end && (*after == '=' || kLettersAndDigits.contains(*after));
  if (context == ReferenceContext::attribute && staysInAttribute) return {};
  return {static_cast<std::size_t>(after - begin), bare->first, bare->second};
}

bool isWhiteSpaceCharacter(char32_t c) {
  return c < 0x80 && kAsciiWhiteSpace.contains(static_cast<char>(c));
}

// The bytes of white space that begin at `at`: of one character, or 0.
std::size_t whiteSpaceLength(const char* at, const char* end) {
  if (kAsciiWhiteSpace.contains(*at)) return 1;
  if (*at != '&') return 0;
  const CharacterReference reference = readCharacterReference(at, end, ReferenceContext::text);
  const bool isSpace = reference.second == 0 && isWhiteSpaceCharacter(reference.first);
  return isSpace ? reference.length : 0;
}

constexpr ByteClass kMayChangeClass = kAsciiWhiteSpace | ByteClass::of({"&\0", 2});

}  // namespace

CharacterReference readCharacterReference(const char* at, const char* end,
                                          ReferenceContext context) {
  // Nearly all are this one.
  if (end - at >= 5 && std::memcmp(at, "&amp;", 5) == 0) return {5, '&', 0};
  const char* const begin = at;
  ++at;
  if (at != end && *at == '#') return readNumber(begin, at + 1, end);
  return readName(begin, at, end, context);
}

ClassifiedText classifyText(std::string_view text) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const char* at = begin;
  while (at != end && *at == '\0') ++at;
  if (at != begin) return {TextClass::nul, static_cast<std::size_t>(at - begin)};
  while (at != end) {
    const std::size_t length = whiteSpaceLength(at, end);
    if (length == 0) break;
    at += length;
  }
  if (at != begin) return {TextClass::whiteSpace, static_cast<std::size_t>(at - begin)};
  do {
    ++at;
  } while (at != end && !kMayChangeClass.contains(*at));
  return {TextClass::other, static_cast<std::size_t>(at - begin)};
}

bool isWhiteSpaceText(std::string_view text) {
  if (text.empty()) return true;
  const ClassifiedText first = classifyText(text);
  return first.kind == TextClass::whiteSpace && first.length == text.size();
}

}  // namespace pagescan::internal
