// Character references, beside the twin.

#include "charset.h"
#include "reference/classic/charset.h"
#include "support/input.h"

using fuzz::check;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::string text(input.rest());
  const RWCString original = fuzz::stringOf(text);
  RWCString decoded = original;
  std::string expected = text;
  CTQCharSet::fsGetSingleton()->convert(decoded);
  reference::convert(expected);
  check(fuzz::textOf(decoded) == expected, "references are decoded as by the twin");
  check(decoded.length() <= text.size(), "decoding never lengthens a text");
  check(fuzz::textOf(original) == text, "a string that shares its bytes stays as it is");
  RWCString copy = fuzz::stringOf(text);
  CTQCharSet::fsGetSingleton()->convert(copy);
  check(copy == decoded, "sharing makes no difference");
  return 0;
}
