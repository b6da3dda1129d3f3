// Writes text in the encoding of a page, in the middle of it.
#ifndef PAGESCAN_EDITS_PAGE_ENCODER_H
#define PAGESCAN_EDITS_PAGE_ENCODER_H

#include <string>
#include <string_view>

#include "encoding/encoding.h"

namespace pagescan::internal {

// Not for several threads at once.
class PageEncoder {
 public:
  explicit PageEncoder(Encoding encoding) : encoding_(encoding) {}

  // Whether the character can be written so that it reads back as itself, whatever stands around
  // it. In ISO-2022-JP only ASCII can, where no shift state is left behind.
  // Cost   bounded
  bool canWrite(char32_t character);

  // The bytes of a text of such characters.
  // Fails  std::bad_alloc alone
  std::string encode(std::string_view utf8);

 private:
  bool appendInLegacy(char32_t character, std::string& bytes) const;

  Encoding encoding_;
  std::string bytes_, again_;  // used again and again
};

}  // namespace pagescan::internal

#endif
