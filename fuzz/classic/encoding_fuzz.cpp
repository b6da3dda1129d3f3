// Percent encoding, beside the twin, and undone by decoding.

#include "reference/classic/zkurlencoding.h"
#include "support/input.h"
#include "zkurlencoding.h"

using fuzz::check;
using fuzz::textOf;

namespace {

// Whether decoding gives back what was encoded: no byte that decoding keeps away, none that the
// flavour keeps although it means something else, and no placeholder.
bool canBeUndone(const std::string& text, int type) {
  const reference::CharArray& table = reference::tableOf(type);
  const bool plusIsBlank = type != UrlEncoding::eChrome94 && type != UrlEncoding::eSiebel;
  if (text.find(reference::kPlaceholder) != std::string::npos) return false;
  return std::none_of(text.begin(), text.end(), [&](char c) {
    const bool isKept = table[static_cast<unsigned char>(c)] == std::string(1, c);
    return static_cast<unsigned char>(c) < 32 || (c == '%' && isKept) ||
           (c == '+' && isKept && plusIsBlank);
  });
}

void encodeUnreadables(std::string_view text) {
  const fuzz::Block block(text);
  RWCString output("before");
  std::string expected = "before";
  check(UrlEncoding::EncodeStringUnreadables(block.data(), block.size(), output),
        "any text is made printable");
  reference::EncodeStringUnreadables(block.data(), block.size(), expected);
  check(textOf(output) == expected, "a text is made printable as by the twin");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const int type = static_cast<int>(input.number(12)) - 1;
  const auto flavour = static_cast<UrlEncoding::EncodingType>(type);
  const std::string before(input.text());
  const std::string text(input.rest());

  RWCString source = fuzz::stringOf(text);
  RWCString destination = fuzz::stringOf(before);
  std::string expected = before;
  const bool isEncoded = UrlEncoding::EncodeString(source, destination, flavour);
  check(
      isEncoded == reference::EncodeString(text, expected, type) && textOf(destination) == expected,
      "a text is encoded as by the twin");
  check(textOf(source) == text, "the source is not changed");
  if (type != UrlEncoding::eNone && canBeUndone(text, type)) {
    RWCString encoded;
    UrlEncoding::EncodeString(source, encoded, flavour);
    UrlEncoding::DecodeString(encoded, flavour);
    check(textOf(encoded) == text, "decoding undoes encoding");
  }
  encodeUnreadables(text);
  return 0;
}
