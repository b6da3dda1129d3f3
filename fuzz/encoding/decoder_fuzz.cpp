// Decoding of any encoding beside the twin, and the map from the text back to the bytes.

#include <string>

#include "encoding/decoder.h"
#include "encoding/mapped_text.h"
#include "reference/encoding/decode.h"
#include "support/input.h"

using fuzz::check;
using namespace pagescan::internal;

namespace {

// Characters follow each other without a gap, and every byte of one leads to the same place.
void checkMap(const MappedText& mapped, std::size_t size) {
  std::size_t begin = 0;
  std::size_t end = 0;
  for (std::size_t at = 0; at < mapped.text().size(); ++at) {
    if (mapped.rawBegin(at) != begin || end == 0) {
      begin = mapped.rawBegin(at);
      check(begin == end, "a character begins where the one before it ends");
      end = mapped.rawEnd(at + 1);
      check(begin < end && end <= size, "a character has bytes");
    }
    check(mapped.rawEnd(at + 1) == end, "the bytes of a character end at one place");
  }
  check(mapped.rawBegin(mapped.text().size()) == size, "the text ends where the bytes do");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const auto encoding = static_cast<Encoding>(input.number(kEncodingCount));
  const fuzz::Block block(input.rest());
  const std::string_view bytes(block.data(), block.size());
  const std::string expected = reference::decode(bytes, encoding);
  std::string decoded;
  appendDecoded(decoded, bytes, encoding);
  check(decoded == expected, "text is decoded as the standard says");
  const MappedText mapped(bytes, encoding);
  check(mapped.text() == expected, "mapped text is decoded alike");
  if (bytes.size() < 5000) checkMap(mapped, bytes.size());
  return 0;
}
