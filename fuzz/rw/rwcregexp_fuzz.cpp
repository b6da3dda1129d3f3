// A pattern and a text, beside the backtracking matcher.

#include "reference/classic/regexp.h"
#include "rw/rwcregexp.h"
#include "support/input.h"

using fuzz::check;

namespace {

// The twin tries every way to match: only what it can do in time is given to it.
bool suitsTwin(std::string_view pattern, std::string_view text) {
  const auto isOperator = [](char c) { return c == '*' || c == '+' || c == '?'; };
  return text.size() <= 40 && std::count_if(pattern.begin(), pattern.end(), isOperator) <= 4;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::size_t start = input.number(64);
  const fuzz::CString pattern(input.text());
  const std::string text(input.rest());
  const RWCRegexp regexp(pattern.data());
  const RWCString string = fuzz::stringOf(text);

  std::size_t length = 0;
  const std::size_t position = string.index(regexp, &length, start);
  check(position == string.index(regexp, start), "both searches find the same place");
  if (position != RWCString::npos) {
    check(position >= start && position + length <= text.size(), "a match lies inside the text");
  }
  if (suitsTwin(pattern.data(), text)) {
    const reference::Match expected = reference::search(text, pattern.data(), start);
    check(position == expected.position, "a match is the leftmost one");
    check(position == RWCString::npos || length == expected.length, "a match is the longest one");
  }
  const RWCRegexp copy(regexp);
  check(string(copy).length() ==
            (start == 0 && position != RWCString::npos ? length : string(regexp).length()),
        "a copy matches as the pattern does");
  return 0;
}
