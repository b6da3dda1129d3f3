// A slice of a text compared with another text, both in blocks of exactly their size.

#include "reference/classic/tqbuffpart.h"
#include "support/input.h"
#include "tqbuffpart.h"

using fuzz::check;

namespace {

int sign(int value) {
  return (value > 0) - (value < 0);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const bool ignoreCase = input.flag();
  const std::size_t offsetGiven = input.number(256);
  const fuzz::Block whole(input.text());
  const std::size_t offset = std::min(offsetGiven, whole.size());
  const std::string slice(whole.data() + offset, whole.size() - offset);
  const std::string text(input.rest());
  const int expected = sign(reference::comparePart(slice, text, ignoreCase));

  CTQBuffPart part;
  part.setPart(whole.data(), static_cast<int>(offset), static_cast<int>(slice.size()));
  const fuzz::Block block(text);
  RWCString string = fuzz::stringOf(text);
  check(sign(part.compare(block.data(), block.length(), ignoreCase)) == expected,
        "a slice compares with bytes as its twin does");
  check(sign(part.compare(string, ignoreCase)) == expected,
        "a slice compares with a string as its twin does");
  CTQBuffPart other;
  other.setPart(block.data(), 0, block.length());
  check(sign(part.compare(other, ignoreCase)) == expected, "two slices compare");
  check(sign(other.compare(part, ignoreCase)) == -expected, "the order is antisymmetric");
  const fuzz::CString upToNul(text);
  check(sign(part.compare(upToNul.data(), ignoreCase)) ==
            sign(reference::comparePart(slice, upToNul.data(), ignoreCase)),
        "a slice compares with a C string as its twin does");
  other.updatePart(upToNul.data());
  check(other.compare(upToNul.data(), false) == 0, "a slice takes over a C string");

  const std::string copy(part.getPart(), slice.size() + 1);
  check(copy == reference::copyOfPart(slice) + '\0', "a copy ends at the first NUL");
  check(part.getPart() == part.getPart(), "a copy is made once");
  return 0;
}
