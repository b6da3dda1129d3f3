// Scripts and delimited regions are blanked as by the twins, and nothing moves.

#include "reference/classic/zkhtmlparseutils.h"
#include "support/input.h"
#include "zkhtmlparseutils.h"

using fuzz::check;

namespace {

// What blanking writes.
bool isBlanking(char c) {
  return std::string_view(" <>/p").find(c) != std::string_view::npos;
}

void checkBlanked(const std::string& blanked, const std::string& text) {
  check(blanked.size() == text.size(), "blanking keeps the length");
  for (std::size_t i = 0; i < text.size(); ++i) {
    check(blanked[i] == text[i] || isBlanking(blanked[i]), "a byte stays or is blanked");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  std::string open(input.text());
  std::string close(input.text());
  if (open.empty() && close.empty()) {
    open = "<!--";
    close = "-->";
  }
  const std::string text(input.rest());

  const RWCString shared = fuzz::stringOf(text);
  RWCString regions = shared;
  std::string expected = text;
  tqOverwriteTagWithBlanks(regions, fuzz::stringOf(open), fuzz::stringOf(close));
  reference::tqOverwriteTagWithBlanks(expected, open, close);
  check(fuzz::textOf(regions) == expected, "regions are blanked as by the twin");
  checkBlanked(expected, text);

  RWCString scripts = shared;
  expected = text;
  std::size_t endlessAt = 0;
  const bool returns = reference::tqOverwriteScriptWithBlanks(expected, endlessAt);
  check(tqFindEndlessScript(scripts) == endlessAt, "endless scripts are found beforehand");
  check(returns == (endlessAt == RWCString::npos), "a call that returns is not endless");
  if (returns) {
    tqOverwriteScriptWithBlanks(scripts);
    check(fuzz::textOf(scripts) == expected, "scripts are blanked as by the twin");
    checkBlanked(expected, text);
    RWCString again = scripts;
    tqOverwriteScriptWithBlanks(again);
    check(again == scripts, "blanked scripts stay as they are");
  }
  check(fuzz::textOf(shared) == text, "a string that shares its bytes stays as it is");
  return 0;
}
