// Encoding of any characters in any encoding beside the twin.

#include <string>

#include "encoding/encoder.h"
#include "reference/encoding/encode.h"
#include "support/input.h"

using fuzz::check;
using namespace pagescan::internal;

namespace {

// Three bytes a character; what is none is left out.
std::u32string charactersOf(std::string_view bytes) {
  std::u32string text;
  for (; bytes.size() >= 3; bytes.remove_prefix(3)) {
    char32_t c = 0;
    for (std::size_t i = 0; i < 3; ++i) c = c << 8 | static_cast<unsigned char>(bytes[i]);
    if (c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF)) text += c;
  }
  return text;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const auto encoding = static_cast<Encoding>(input.number(kEncodingCount));
  const std::u32string text = charactersOf(input.rest().substr(0, 300));
  std::string encoded;
  QueryEncoder encoder(encoding);
  for (const char32_t c : text) {
    if (encoder.append(c, encoded)) continue;
    encoded += "&#" + std::to_string(static_cast<unsigned>(encoder.refused(c))) + ";";
  }
  encoder.finish(encoded);
  check(encoded == reference::encode(text, encoding), "text is encoded as the standard says");
  return 0;
}
