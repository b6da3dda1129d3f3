// Replaces URLs of a page or a style sheet, and nothing else: the rest stays byte for byte.
//
//   const Page page(bytes, options);
//   const EditResult result = applyEdits(page, {{0, "https://example.org/a?b&c", {}}});
//
// A new URL is written as its place asks for: character references in attributes, escapes in CSS
// and JSON, a layer more for each srcdoc attribute around, in the page's encoding. The result is
// read again before it is given out: each new URL is found where it was written, and every other
// reference as it was before. An edit for which that does not hold is refused, with its reason.
//
// Offsets count bytes of the page as given; spans are half-open. Texts are UTF-8. Pure functions:
// nothing is kept, and any thread may call them.
#ifndef PAGESCAN_EDITS_H
#define PAGESCAN_EDITS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/export.h"
#include "pagescan/page.h"
#include "pagescan/style_sheet.h"

namespace pagescan {

// A new value for a reference.
struct Edit {
  std::size_t reference;                // an index of references()
  std::string value;                    // what it is to spell, as value() gives it: UTF-8
  std::optional<std::string> expected;  // what value() must be now; none: whatever it is
};

// Bytes in the place of others, for what is no reference: an attribute that is to go, text that is
// to come. They are written as they are, in the page's encoding.
struct ByteEdit {
  Span span;                            // what they replace; an empty one where they are inserted
  std::string bytes;                    // what stands there afterwards; empty: nothing
  std::optional<std::string> expected;  // what bytes must be there now; none: whatever they are
};

// Why an edit is not made.
enum class EditRefusal : std::uint8_t {
  noReference,      // the page has no such reference, or no such bytes
  notExpected,      // something else than the text expected stands there
  overlaps,         // another edit that stands earlier in the page holds these bytes, too
  notUtf8,          // the value is no UTF-8
  noEscape,         // the value has a character that cannot be written in this place
  notInEncoding,    // the page's encoding lacks a character, and the place has no escape for it
  split,            // read again, the value would be several, another one or none
  dividedByMarkup,  // tags stand between the bytes of this URL
  changesEncoding,  // the page would be read in another encoding
  changesOthers,    // other references would change, come or go
  tooLarge,         // the page would have more than 2^32-1 bytes
};

// Its name: "no_reference", "not_expected", "split".
PAGESCAN_PAGE_EXPORT std::string_view nameOf(EditRefusal reason);

// It as a part of a sentence, without a full stop: "the page has no such reference".
PAGESCAN_PAGE_EXPORT std::string_view sentenceOf(EditRefusal reason);

// An edit that was not made.
struct RefusedEdit {
  std::size_t edit;    // its index; that of a ByteEdit counts on after the last Edit
  EditRefusal reason;  // why
};

// What applyEdits() gives.
struct EditResult {
  std::string bytes;                 // with all edits that were not refused
  std::vector<RefusedEdit> refused;  // by their index; empty: all were made

  // Where each edit stands in `bytes`, by its index: the bytes that spell its value, or the bytes
  // of a ByteEdit. {0, 0} for one that was refused.
  std::vector<Span> spans;
};

// Makes all edits at once; their order does not matter.
//
// An edit that changes nothing (a reference's own value, equal bytes) leaves the bytes alone. All
// references that no edit touches keep bytes, value, place, kind and flags; what their URLs resolve
// to changes where a base element is edited. References may come and go within the spans of
// ByteEdits alone.
//
// page       the value of a reference is looked up in it, and its options are used to read again
// edits      of references; each at most once
// byteEdits  of anything else; they overlap neither one another nor the span of an edited reference
// Returns    the new bytes; those of the page where nothing could be changed
// Fails      std::bad_alloc alone
// Cost       that of reading a page up to four times, and the logarithm of the page's length for
//            each edit
PAGESCAN_PAGE_EXPORT EditResult applyEdits(const Page& page, const std::vector<Edit>& edits,
                                           const std::vector<ByteEdit>& byteEdits = {});
PAGESCAN_PAGE_EXPORT EditResult applyEdits(const StyleSheet& sheet, const std::vector<Edit>& edits,
                                           const std::vector<ByteEdit>& byteEdits = {});

}  // namespace pagescan

#endif
