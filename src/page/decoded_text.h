// A piece of a page decoded to UTF-8, which knows the bytes that each of its characters stems from.
//
//   raw   a & a m p ; b \r\n c          in an attribute value
//   text  a &         b \n   c
//
// Most texts are their own decoding: then nothing is copied and nothing recorded. Otherwise a run
// is recorded only where text and raw bytes stop moving together. Layers are undone one after the
// other: a place in CSS is taken to the attribute value, and from there to the page.
//
// Offsets are byte offsets, ranges half-open. Raw offsets count from the start of the source.
#ifndef PAGESCAN_PAGE_DECODED_TEXT_H
#define PAGESCAN_PAGE_DECODED_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "encoding/encoding.h"
#include "page/character_references.h"
#include "pagescan/page.h"

namespace pagescan::internal {

// Keeps its storage when it is started again, so that one object serves many values. Const calls
// are safe on several threads at once.
// Limits   source and text of at most 2^32-1 bytes each; what would exceed that is left out
// Fails    std::bad_alloc alone
// Memory   none for a text that is its own decoding; else the text and 16 bytes a run
class DecodedText {
 public:
  // Becomes empty. `source` must outlive the text; a page ends where it ends.
  void start(std::string_view source);

  // Appends source[begin, end) as it is: well-formed UTF-8.
  void appendAsIs(std::size_t begin, std::size_t end);

  // Appends `utf8`, which source[begin, end) spells as a whole; `utf8` may be empty.
  void appendSpelled(std::size_t begin, std::size_t end, std::string_view utf8);

  // Appends source[begin, end) decoded from an encoding, the same in all calls: whole characters.
  void appendEncoded(std::size_t begin, std::size_t end, Encoding encoding);

  // Valid until the object or the source changes.
  std::string_view text() const;

  // Where the character begins that holds text()[at]; the end of the last one at the text's end.
  // Cost     logarithmic in the runs; within characters of a legacy encoding linear in their run,
  //          which holds no white space, quote, bracket or comma
  std::size_t rawBegin(std::size_t at) const;

  // Where the character ends that holds text()[at - 1]; the start of the first one for 0.
  std::size_t rawEnd(std::size_t at) const;

  // The bytes that spell a range of the text; of an empty one the empty range at its place.
  Span rawSpan(Span span) const;

 private:
  enum class Spelling : std::uint8_t {
    asIs,     // byte by byte
    whole,    // all of its text by all of its bytes
    encoded,  // characters of encoding_
  };
  struct Run {
    std::uint32_t text;  // where it begins; it ends where the next one begins
    std::uint32_t rawBegin;
    std::uint32_t rawEnd;
    Spelling spelling;
  };

  void append(Run run, std::string_view utf8);
  const Run& runAt(std::size_t at) const;
  Span characterIn(const Run& run, std::size_t at) const;

  std::string_view source_;
  Encoding encoding_ = Encoding::utf8;
  bool isOwn_ = false;  // whether the text is in own_, not in the source
  std::string own_;
  std::vector<Run> runs_;
};

// What is decoded besides the encoding. NUL becomes U+FFFD, CR LF and CR become LF in all.
enum class TextForm {
  attributeValue,  // character references by the rule for attributes
  text,            // character references
  rawText,         // no references: style, script, CDATA
};

// Appends page[begin, end), as `form` has it, to a text that was started with `page`. A style
// element of SVG has several such pieces. A value's pieces are in order.
// encoding  none that needs conversion (UTF-16, ISO-2022-JP): such a page is converted as a whole
// Cost      linear
void appendPiece(DecodedText& result, std::string_view page, std::size_t begin, std::size_t end,
                 TextForm form, Encoding encoding);

// Appends the text of page[begin, end) to `result`, and keeps no map; else as appendPiece.
void appendTextOf(std::string& result, std::string_view page, std::size_t begin, std::size_t end,
                  TextForm form, Encoding encoding);

// The value of an attribute written as `raw`. Offsets count from the start of raw.
void decodeAttributeValue(std::string_view raw, Encoding encoding, DecodedText& result);

// The text of an element written as `raw`.
void decodeText(std::string_view raw, TextForm form, Encoding encoding, DecodedText& result);

}  // namespace pagescan::internal

#endif
