// The special schemes (URL Standard, 4.2 "URL miscellaneous").
#ifndef PAGESCAN_URL_SCHEME_H
#define PAGESCAN_URL_SCHEME_H

#include <string_view>

#include "base/byte_class.h"

namespace pagescan::internal {

enum class SchemeKind : unsigned char { other, file, ftp, http, https, ws, wss };

inline constexpr ByteClass kSchemeBytes = kLettersAndDigits | ByteClass::of("+-.");

struct SpecialScheme {
  std::string_view name;
  SchemeKind kind;
  unsigned defaultPort;
};
inline constexpr unsigned kNoPort = 0x10000;
inline constexpr SpecialScheme kSpecialSchemes[] = {
    {"https", SchemeKind::https, 443}, {"http", SchemeKind::http, 80},
    {"ftp", SchemeKind::ftp, 21},      {"ws", SchemeKind::ws, 80},
    {"wss", SchemeKind::wss, 443},     {"file", SchemeKind::file, kNoPort},
};

// The kind of a scheme in lower case, without its ":".
constexpr SchemeKind schemeKindOf(std::string_view scheme) {
  for (const SpecialScheme& row : kSpecialSchemes) {
    if (row.name == scheme) return row.kind;
  }
  return SchemeKind::other;
}

// The port that is left out; kNoPort where there is none.
constexpr unsigned defaultPortOf(SchemeKind kind) {
  for (const SpecialScheme& row : kSpecialSchemes) {
    if (row.kind == kind) return row.defaultPort;
  }
  return kNoPort;
}

}  // namespace pagescan::internal

#endif
