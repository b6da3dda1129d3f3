// Writes characters in an encoding, as the queries of URLs need it.
#ifndef PAGESCAN_ENCODING_ENCODER_H
#define PAGESCAN_ENCODING_ENCODER_H

#include <cstdint>
#include <string>

#include "encoding/encoding.h"

namespace pagescan::internal {

// An encoder and its state, for one text. Not for several threads at once.
// Source    Encoding Standard, 4.1 "Encoders and decoders", "encode or fail"
class QueryEncoder {
 public:
  // An encoding without an encoder is taken as its output encoding, UTF-8.
  explicit QueryEncoder(Encoding encoding);

  Encoding encoding() const { return encoding_; }

  // Appends the bytes of one character to `out`.
  // codePoint  a scalar value: at most U+10FFFF and no surrogate
  // Returns    false when the encoding has none; the caller then writes what its error mode says,
  //            in ASCII without U+000E, U+000F, U+001B, `\` and `~`. Bytes that end a shift state
  //            may have been appended (ISO-2022-JP alone).
  // Fails      std::bad_alloc alone
  // Cost       bounded: a binary search
  bool append(char32_t codePoint, std::string& out);

  // The code point that the error names after append() returned false for `codePoint`: the same
  // one, but U+FFFD for three controls of ISO-2022-JP.
  char32_t refused(char32_t codePoint) const;

  // Ends the text: appends what leads back to ASCII.
  void finish(std::string& out);

 private:
  enum class Shift : std::uint8_t { ascii, roman, jis0208 };

  bool appendIso2022Jp(char32_t codePoint, std::string& out);
  void shiftTo(Shift shift, std::string& out);

  Encoding encoding_;
  Shift shift_ = Shift::ascii;  // ISO-2022-JP alone leaves ASCII
};

}  // namespace pagescan::internal

#endif
