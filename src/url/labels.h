// What the labels of a domain must keep to (UTS #46, 4.1 "Validity Criteria"; RFC 5892, A.1 and
// A.2; RFC 5893, 2).
#ifndef PAGESCAN_URL_LABELS_H
#define PAGESCAN_URL_LABELS_H

#include <string_view>

namespace pagescan::internal {

// All criteria but those of normal form and bidirectional text, with CheckHyphens off, CheckJoiners
// on and UseSTD3ASCIIRules off.
// label   not empty, without "."
bool isValidLabel(std::u32string_view label);

// Whether the label has characters from right to left: then all labels of its domain must keep the
// rule below.
bool isRightToLeft(std::u32string_view label);

// The "Bidi rule".
// label   not empty
bool keepsBidiRule(std::u32string_view label);

}  // namespace pagescan::internal

#endif
