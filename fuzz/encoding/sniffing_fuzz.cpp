// Labels, byte order marks, the prescan, a meta's content and @charset beside the twins.

#include "encoding/sniffing.h"
#include "reference/encoding/sniff.h"
#include "support/input.h"

using fuzz::check;
using namespace pagescan::internal;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const fuzz::Block block(input.rest());
  const std::string_view bytes(block.data(), block.size());
  const std::optional<ByteOrderMark> mark = bomOf(bytes);
  check((mark ? std::optional(mark->encoding) : std::nullopt) == reference::bomSniff(bytes),
        "a byte order mark is found");
  check(prescan(bytes) == reference::prescan(bytes), "the prescan follows the standard");
  check(encodingFromMetaContent(bytes) == reference::extractFromMeta(bytes),
        "a meta's content names an encoding");
  check(encodingFromCharsetRule(bytes) == reference::charsetRule(bytes),
        "a charset rule names an encoding");
  check(encodingForLabel(bytes) == reference::getEncoding(bytes), "labels are known");
  return 0;
}
