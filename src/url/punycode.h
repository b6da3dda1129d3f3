// Punycode (RFC 3492) of one label, without its "xn--".
#ifndef PAGESCAN_URL_PUNYCODE_H
#define PAGESCAN_URL_PUNYCODE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace pagescan::internal {

// Punycode takes quadratic time in the length of a label. Browsers refuse longer labels, and so do
// we; in the DNS a label has 63 bytes at most.
inline constexpr std::size_t kMostUnitsToEncode = 1000;  // of UTF-16
inline constexpr std::size_t kMostBytesToDecode = 2000;

// Appends the form of a label in ASCII. False where it is too long; nothing is appended then.
bool appendPunycode(std::string& out, std::u32string_view label);

// The label that a form in ASCII spells; none where it spells none or is too long. The result may
// hold any code points, surrogates among them.
std::optional<std::u32string> decodedPunycode(std::u32string_view text);

}  // namespace pagescan::internal

#endif
