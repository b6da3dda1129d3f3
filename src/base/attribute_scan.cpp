#include "base/attribute_scan.h"

#include <array>

#include "base/byte_class.h"
#include "base/search.h"

namespace pagescan::internal {
namespace {

constexpr ByteClass kNameBytes = kLettersAndDigits | ByteClass::of("-");
constexpr ByteClass kSeparators = kHtmlWhiteSpace | ByteClass::of("\"");
constexpr ByteClass kBreaks = kHtmlWhiteSpace | ByteClass::of(">");
constexpr ByteClass kQuotes = ByteClass::of("\"'");

enum class ByteKind : unsigned char { unexpected, nameByte, separator, tagEnd, equals };

constexpr std::array<ByteKind, 256> kKinds = [] {
  std::array<ByteKind, 256> kinds{};
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    const char c = static_cast<char>(i);
    if (kNameBytes.contains(c)) kinds[i] = ByteKind::nameByte;
    if (kSeparators.contains(c)) kinds[i] = ByteKind::separator;
  }
  kinds[toByte('>')] = ByteKind::tagEnd;
  kinds[toByte('=')] = ByteKind::equals;
  return kinds;
}();

// A name on its way: begun when `begin` is set, complete when `end` is.
struct Name {
  const char* begin = nullptr;
  const char* end = nullptr;

  void endAt(const char* at) {
    if (begin && !end) end = at;
  }

  ScannedName as(ScannedName::Kind kind, const char* readTo) const {
    return {kind, begin, end, end, readTo};
  }
  ScannedName before(const char* equals) const {
    return {ScannedName::equals, begin, end, equals, equals};
  }
};

ScannedName without(ScannedName::Kind kind, const char* next) {
  return {kind, nullptr, nullptr, next, next};
}

// Reads a name whatever stands around it.
ScannedName scanAnyName(const char* begin, const char* end) {
  Name name;
  for (const char* at = begin; at < end; ++at) {
    switch (kKinds[toByte(*at)]) {
      case ByteKind::separator:
        name.endAt(at);
        break;
      case ByteKind::nameByte:
        if (name.end) return name.as(ScannedName::bareName, at);
        if (!name.begin) name.begin = at;
        at = findFirstNotOf(at + 1, end, kNameBytes) - 1;
        break;
      case ByteKind::tagEnd:
        name.endAt(at);
        return name.begin ? name.as(ScannedName::lastName, at)
                          : without(ScannedName::tagEnd, at + 1);
      case ByteKind::equals:
        name.endAt(at);
        return name.begin ? name.before(at) : without(ScannedName::strayEquals, at);
      case ByteKind::unexpected:
        at = findFirstOf(at, end, kBreaks);
        if (at == end) {
          return name.end ? name.as(ScannedName::cutName, end) : without(ScannedName::nothing, end);
        }
        if (*at == '>') {
          return name.end ? name.as(ScannedName::lastName, at)
                          : without(ScannedName::tagEnd, at + 1);
        }
        break;
    }
  }
  return name.end ? name.as(ScannedName::bareName, end) : without(ScannedName::nothing, end);
}

}  // namespace

ScannedName scanName(const char* begin, const char* end) {
  // The usual form first: a name and its "=".
  begin = findFirstNotOf(begin, end, kSeparators);
  const char* nameEnd = findFirstNotOf(begin, end, kNameBytes);
  const bool isUsual = begin < nameEnd && nameEnd < end && *nameEnd == '=';
  return isUsual ? ScannedName{ScannedName::equals, begin, nameEnd, nameEnd, nameEnd}
                 : scanAnyName(begin, end);
}

ScannedValue scanValue(const char* begin, const char* end) {
  begin = skipWhiteSpace(begin, end);
  if (begin >= end) return {ScannedValue::missing, nullptr, nullptr};
  const bool isQuoted = kQuotes.contains(*begin);
  const char quote = *begin;
  if (isQuoted) ++begin;
  const char* stop =
      isQuoted ? findNearbyByte(begin, end, quote) : findFirstOf(begin, end, kBreaks);
  return {stop == end ? ScannedValue::cut : ScannedValue::whole, begin, stop};
}

ScannedAttribute scanAttribute(const char* begin, const char* end) {
  const ScannedName scanned = scanName(begin, end);
  const bool isLast = scanned.kind == ScannedName::lastName;
  switch (scanned.kind) {
    case ScannedName::bareName:
    case ScannedName::cutName:
    case ScannedName::lastName:
      return {isLast, scanned.end, scanned.readTo, scanned.name(), {}};
    case ScannedName::equals: {
      const ScannedValue value = scanValue(scanned.next + 1, end);
      if (value.kind != ScannedValue::whole) return {true, end, end, {}, {}};
      return {false, value.end, value.end, scanned.name(), value.value()};
    }
    case ScannedName::nothing:
    case ScannedName::tagEnd:
    case ScannedName::strayEquals:
      break;
  }
  return {true, end, scanned.readTo, {}, {}};
}

}  // namespace pagescan::internal
