// Tags, elements and event handlers are removed as by the twins.

#include "reference/classic/zkhtmlparseutils.h"
#include "support/input.h"
#include "zkhtmlparseutils.h"

using fuzz::check;

namespace {

constexpr std::size_t kLongestTag = 254;  // a longer one ends the process

void removeTag(const RWCString& page, const std::string& text, const std::string& tag) {
  RWCString string = page;
  std::string expected = text;
  tqRemoveFirstSingleTag(string, fuzz::stringOf(tag));
  reference::tqRemoveFirstSingleTag(expected, tag);
  check(fuzz::textOf(string) == expected, "a tag is removed as by the twin");
  check(expected.size() <= text.size(), "removing a tag never lengthens a text");
}

void emptyElements(const RWCString& page, const std::string& text, const std::string& tag) {
  RWCString string = page;
  std::string expected = text;
  tqSkipTagBody(fuzz::stringOf(tag), string);
  reference::tqSkipTagBody(tag, expected);
  check(fuzz::textOf(string) == expected, "elements are emptied as by the twin");
}

void disarmHandlers(const RWCString& page, const std::string& text) {
  RWCString string = page;
  std::string expected = text;
  tqSkipOnloadAttribute(string);
  reference::tqSkipOnloadAttribute(expected);
  check(fuzz::textOf(string) == expected, "handlers are disarmed as by the twin");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::string tag(input.text().substr(0, kLongestTag));
  const std::string text(input.rest());
  const RWCString page = fuzz::stringOf(text);
  removeTag(page, text, tag);
  emptyElements(page, text, tag);
  disarmHandlers(page, text);
  check(fuzz::textOf(page) == text, "a string that shares its bytes stays as it is");
  return 0;
}
