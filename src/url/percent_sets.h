// The percent-encode sets of the URL Standard, 1.3 "Percent-encoded bytes", over the bytes of
// UTF-8: every byte of a character beyond ASCII is in each of them.
#ifndef PAGESCAN_URL_PERCENT_SETS_H
#define PAGESCAN_URL_PERCENT_SETS_H

#include "base/byte_class.h"

namespace pagescan::internal {

inline constexpr ByteClass kC0Controls = ByteClass::range('\0', '\x1F');
inline constexpr ByteClass kBeyondAscii = ByteClass::range('\x80', '\xFF');

inline constexpr ByteClass kC0ControlSet = kC0Controls | ByteClass::of("\x7F") | kBeyondAscii;
inline constexpr ByteClass kFragmentSet = kC0ControlSet | ByteClass::of(" \"<>`");
inline constexpr ByteClass kQuerySet = kC0ControlSet | ByteClass::of(" \"#<>");
inline constexpr ByteClass kSpecialQuerySet = kQuerySet | ByteClass::of("'");
inline constexpr ByteClass kPathSet = kQuerySet | ByteClass::of("?^`{}");
inline constexpr ByteClass kUserinfoSet = kPathSet | ByteClass::of("/:;=@[\\]|");

// 3.1 "Host representation": what no host may hold, and what no domain may.
inline constexpr ByteClass kForbiddenInHost =
    ByteClass::range('\0', '\0') | ByteClass::of("\t\n\r #/:<>?@[\\]^|");
inline constexpr ByteClass kForbiddenInDomain =
    kForbiddenInHost | kC0Controls | ByteClass::of("%\x7F");

static_assert(kC0ControlSet.size() == 32 + 1 + 128);
static_assert(kFragmentSet.size() == kC0ControlSet.size() + 5);
static_assert(kUserinfoSet.size() == kC0ControlSet.size() + 5 + 5 + 9);
static_assert(kForbiddenInHost.size() == 17 && kForbiddenInDomain.size() == 17 + 28 + 2);

}  // namespace pagescan::internal

#endif
