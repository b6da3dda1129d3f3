// All attributes of a tag: as the twin finds them, each at its offset.

#include "reference/classic/strings.h"
#include "reference/classic/zkhtmlattributefinder.h"
#include "rw/rwcollectables.h"
#include "support/input.h"
#include "zkhtmlattributefinder.h"

using fuzz::check;

namespace {

struct Found {
  Found() = default;
  Found(const Found&) = delete;
  Found& operator=(const Found&) = delete;
  ~Found() {
    values.clearAndDestroy();
    offsets.clearAndDestroy();
  }

  RWHashDictionary values;
  RWHashDictionary offsets;
};

std::map<std::string, std::string> valuesOf(const RWHashDictionary& dictionary) {
  std::map<std::string, std::string> result;
  RWHashDictionaryIterator next(dictionary);
  while (const RWCollectable* const key = next()) {
    result.emplace(fuzz::textOf(*dynamic_cast<const RWCollectableString*>(key)),
                   fuzz::textOf(*dynamic_cast<const RWCollectableString*>(next.value())));
  }
  return result;
}

std::map<std::string, int> offsetsOf(const RWHashDictionary& dictionary) {
  std::map<std::string, int> result;
  RWHashDictionaryIterator next(dictionary);
  while (const RWCollectable* const key = next()) {
    result.emplace(fuzz::textOf(*dynamic_cast<const RWCollectableString*>(key)),
                   dynamic_cast<const RWCollectableInt*>(next.value())->value());
  }
  return result;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  unsigned long pos = input.number(64);
  unsigned long expectedPos = pos;
  const std::string text(input.rest());
  RWCString string = fuzz::stringOf(text);

  Found found;
  CHTMLAttributeFinder finder;
  finder.FindAttributes(string, pos, found.values, found.offsets);
  std::map<std::string, std::string> expectedValues;
  std::map<std::string, int> expectedOffsets;
  reference::FindAttributes(text, expectedPos, expectedValues, expectedOffsets);
  const auto values = valuesOf(found.values);
  const auto offsets = offsetsOf(found.offsets);
  check(pos == expectedPos, "reading stops where the twin stops");
  check(values == expectedValues && offsets == expectedOffsets, "the twin finds the same");
  for (const auto& [name, value] : values) {
    check(name == reference::lowered(name), "names are in lower case");
    const int offset = offsets.at(name);
    if (offset < 0) {
      check(value.empty(), "an attribute without a value is empty");
    } else {
      check(text.compare(static_cast<std::size_t>(offset), value.size(), value) == 0,
            "a value stands at its offset");
    }
  }
  check(fuzz::textOf(string) == text, "the text is not changed");
  finder.FindAttributes(string, pos, found.values, found.offsets);
  return 0;
}
