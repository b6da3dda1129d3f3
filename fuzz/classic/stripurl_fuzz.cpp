// Cleaning and classifying a URL, beside the twins.

#include "reference/classic/strings.h"
#include "reference/classic/tqurlbase.h"
#include "reference/classic/zkhtmlparseutils.h"
#include "support/input.h"
#include "tqurlbase.h"
#include "zkhtmlparseutils.h"

using fuzz::check;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const bool decodePercent = input.flag();
  const std::string text(input.rest());
  const RWCString url = fuzz::stringOf(text);

  RWCString clean = url;
  std::string expected = text;
  stripUrl(clean, decodePercent);
  reference::stripUrl(expected, decodePercent);
  check(fuzz::textOf(clean) == expected, "a URL is cleaned as by the twin");
  if (!decodePercent) {
    check(std::none_of(expected.begin(), expected.end(),
                       [](char c) { return c != ' ' && reference::isBlank(c); }),
          "no line break is left");
    RWCString again = clean;
    stripUrl(again, false);
    check(again == clean, "a clean URL stays as it is");
  }

  int length = 0;
  int expectedLength = 0;
  check(getProtocol(url, length) == reference::getProtocol(text, expectedLength) &&
            length == expectedLength,
        "a scheme is known as by the twin");
  check(isHttpProtocol(url) == reference::isHttpProtocol(text), "http is known as by the twin");
  check(fuzz::textOf(url) == text, "a string that shares its bytes stays as it is");
  return 0;
}
