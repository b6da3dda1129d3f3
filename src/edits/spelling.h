// How a value is written in its place: the reverse of reading it.
//
//   value                  a"b&c
//   in a CSS string        a\"b&c
//   in style='...'         a\"b&amp;c
//   in srcdoc="..."        a\&quot;b&amp;amp;c
//   in windows-1252        the same bytes; a character that it lacks is &#8364; in an attribute
#ifndef PAGESCAN_EDITS_SPELLING_H
#define PAGESCAN_EDITS_SPELLING_H

#include <optional>
#include <string>
#include <string_view>

#include "edits/page_encoder.h"
#include "edits/surroundings.h"
#include "pagescan/edits.h"
#include "pagescan/page.h"

namespace pagescan::internal {

// What takes the place of a value: bytes of the page.
struct Spelling {
  std::string before;  // a "=" or quote that the attribute lacks
  std::string value;
  std::string after;  // the quote that closes it
};

// Spells `value`, well-formed UTF-8, for a slot in these surroundings.
// Returns   why it cannot be written there, or nothing
// Fails     std::bad_alloc alone
// Cost      linear in the value, for each layer
std::optional<EditRefusal> spell(std::string_view value, Slot slot, const Surroundings& around,
                                 PageEncoder& encoder, Spelling& result);

}  // namespace pagescan::internal

#endif
