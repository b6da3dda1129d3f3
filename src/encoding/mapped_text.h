// A text in UTF-8 that knows where each of its characters stands in the bytes it was decoded from.
//
//   bytes  <  ESC $ B  F| K|  ESC ( B  >        ISO-2022-JP: an escape sequence belongs to the
//          |  '-----------'|  '-----'           character after it
//   text   <  E6 97 A5  E6 9C AC  >
//
// Offsets are byte offsets; ranges are half-open.
#ifndef PAGESCAN_ENCODING_MAPPED_TEXT_H
#define PAGESCAN_ENCODING_MAPPED_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "encoding/encoding.h"

namespace pagescan::internal {

// For every encoding; UTF-16 and ISO-2022-JP pages cannot be read without it. Const calls are safe
// on several threads at once.
// Memory    the text, and an eighth of it for the map
class MappedText {
 public:
  struct Range {
    std::size_t begin;
    std::size_t end;
  };

  // Decodes bytes[from, end).
  // bytes     must outlive the object
  // from      where the text begins: after a byte order mark. Offsets count from the start of bytes
  // Fails     std::bad_alloc alone
  // Cost      linear
  MappedText(std::string_view bytes, Encoding encoding, std::size_t from = 0);

  // Valid as long as the object.
  std::string_view text() const { return text_; }

  // Where the character begins that holds text()[at]; the end of the bytes for at == text().size().
  // Cost      constant: decodes at most kBlock bytes anew
  std::size_t rawBegin(std::size_t at) const;

  // Where the character ends that holds text()[at - 1]; the start of the text for 0.
  // Cost      as above
  std::size_t rawEnd(std::size_t at) const;

  // Where in text() the first character begins that begins at `raw` or after it; the size of the
  // text when there is none. The inverse of rawBegin() for the starts of characters.
  // Cost      logarithmic in the text, and decodes at most kBlock bytes anew
  std::size_t textAt(std::size_t raw) const;

  // The bytes of text()[begin, end): of an empty range the empty one after the character before it.
  Range rawRange(std::size_t begin, std::size_t end) const;

 private:
  // Where decoding can set in anew: at the first character that begins in a block of the text.
  struct Checkpoint {
    std::size_t raw;     // the end of the character before it
    std::uint8_t skip;   // bytes of the block that belong to the character before
    std::uint8_t state;  // of the decoder
  };
  struct Place {
    std::size_t rawBegin;
    std::size_t rawEnd;
  };
  static constexpr std::size_t kBlock = 128;

  template <typename Decoder>
  void build(Decoder& decoder);
  template <typename Decoder>
  Place find(Decoder& decoder, std::size_t at) const;
  template <typename Decoder>
  std::size_t findText(Decoder& decoder, std::size_t block, std::size_t raw) const;
  Place characterAt(std::size_t at) const;

  std::string_view bytes_;
  std::size_t from_;
  Encoding encoding_;
  std::string text_;
  std::vector<Checkpoint> checkpoints_;
};

}  // namespace pagescan::internal

#endif
