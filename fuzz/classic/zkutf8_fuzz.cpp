// Detection of UTF-8 and both conversions, beside the twins; the host routines in exact blocks.

#include <vector>

#include "hostroutines.h"
#include "reference/classic/zkutf8.h"
#include "support/input.h"
#include "zkutf8.h"

using fuzz::check;

namespace {

using Routine = int (*)(int, const char*, int, char*, int);

// Converts into blocks of the size that is needed, and of smaller ones.
void convertInto(Routine routine, const fuzz::Block& source, int length,
                 const std::string& expected) {
  for (const std::size_t room : {expected.size() + 1, expected.size() / 2 + 1, std::size_t{1}}) {
    std::vector<char> out(room);
    const int told = routine(0, source.data(), length, out.data(), static_cast<int>(room));
    const std::string result(out.data());
    check(told == static_cast<int>(result.size()), "the length of the result is told");
    check(expected.compare(0, result.size(), result) == 0, "a cut result is a beginning");
    check(room <= expected.size() || result == expected, "a result that fits is whole");
  }
}

// A text up to its closing NUL, and the same by its length with nothing after it.
void convert(Routine routine, const std::string& text, const std::string& expected) {
  convertInto(routine, fuzz::CString(text), -1, expected);
  const fuzz::Block block(text);
  convertInto(routine, block, block.length(), expected);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::string text(input.rest());
  const fuzz::Block block(text);
  check(isUtf8(block.data(), block.length()) == reference::isUtf8(text.data(), block.length()),
        "UTF-8 is known as by the twin");

  RWCString ansi = fuzz::stringOf(text);
  std::string expected = text;
  check(ConvertUtf8toAnsi(ansi) == ansi.data(), "the text's own bytes are returned");
  reference::ConvertUtf8toAnsi(expected);
  check(fuzz::textOf(ansi) == expected, "UTF-8 is converted as by the twin");

  RWCString utf8 = fuzz::stringOf(text);
  expected = text;
  check(ConvertAnsitoUtf8(utf8) == utf8.data(), "the text's own bytes are returned");
  reference::ConvertAnsitoUtf8(expected);
  check(fuzz::textOf(utf8) == expected, "bytes are converted as by the twin");

  const std::string upToNul = text.substr(0, text.find('\0'));
  convert(UTF8ToANSI, upToNul, reference::utf8ToLatin1(upToNul));
  convert(ANSIToUTF8, upToNul, reference::latin1ToUtf8(upToNul));
  check(reference::utf8ToLatin1(reference::latin1ToUtf8(upToNul)) == upToNul,
        "every byte comes back");
  return 0;
}
