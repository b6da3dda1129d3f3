// Positions in a tag, beside the twins: every primitive of scanning.

#include "reference/classic/zkhtmlparseutils.h"
#include "support/input.h"
#include "zkhtmlparseutils.h"

namespace {

using fuzz::check;

void skip(RWCString& string, const std::string& text, unsigned long end, unsigned long start) {
  unsigned long pos = start;
  unsigned long expected = start;
  const bool reached = htmlSkipWhiteSpaces(string, end, pos);
  check(reached == reference::htmlSkipWhiteSpaces(text, end, expected) && pos == expected,
        "white space is skipped as by the twin");
  check(!reached || pos < end, "what is reached lies before the end");
  pos = expected = start;
  const bool word = htmlSkipNonWhiteSpaces(string, end, pos);
  check(word == reference::htmlSkipNonWhiteSpaces(text, end, expected) && pos == expected,
        "words are skipped as by the twin");
}

void readValue(RWCString& string, const std::string& text, unsigned long end, unsigned long start) {
  RWCString value("before");
  std::string expected = "before";
  unsigned long valueStart = 5;
  unsigned long furthest = 3;
  unsigned long expectedStart = 5;
  unsigned long expectedFurthest = 3;
  const bool isWhole = htmlGetStringValue(string, value, start, valueStart, furthest, end);
  check(isWhole == reference::htmlGetStringValue(text, expected, start, expectedStart,
                                                 expectedFurthest, end),
        "a value is whole when the twin says so");
  check(fuzz::textOf(value) == expected && valueStart == expectedStart &&
            furthest == expectedFurthest,
        "a value is read as by the twin");
  if (isWhole) {
    check(text.compare(valueStart, expected.size(), expected) == 0, "a value stands at its offset");
  }
}

// Reads a tag to its end as a host does.
void readAttributes(RWCString& string, const std::string& text, unsigned long start) {
  unsigned long pos = start;
  for (;;) {
    RWCString name;
    RWCString value("before");
    std::string expectedName;
    std::string expectedValue = "before";
    unsigned long valueStart = 0;
    unsigned long expectedStart = 0;
    const unsigned long before = pos;
    unsigned long expected = pos;
    htmlFindNextAttribute_(string, name, value, pos, valueStart);
    reference::htmlFindNextAttribute_(text, expectedName, expectedValue, expected, expectedStart);
    check(pos == expected && valueStart == expectedStart && fuzz::textOf(name) == expectedName &&
              fuzz::textOf(value) == expectedValue,
          "an attribute is read as by the twin");
    check(pos >= before, "reading goes forward");
    if (name.length() == 0 || pos == before) return;
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const unsigned long start = input.number(64);
  const unsigned long cut = input.number(64);
  const fuzz::Block name(input.text());
  const std::string text(input.rest());
  RWCString string = fuzz::stringOf(text);
  const unsigned long end = text.size() + 8 - std::min<std::size_t>(cut, text.size() + 8);

  skip(string, text, end, start);
  readValue(string, text, end, start);
  readAttributes(string, text, start);
  for (const char terminator : {' ', '~', '/', '\0'}) {
    check(isElementOfType(name.data(), name.size(), string, start, terminator) ==
              reference::isElementOfType(name.data(), name.size(), text, start, terminator),
          "an element is known as by the twin");
  }
  check(fuzz::textOf(string) == text, "scanning changes nothing");
  return 0;
}
