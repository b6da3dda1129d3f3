// Style text: the references are those of the twin, and stand in the text in order.

#include <string>
#include <vector>

#include "encoding/decoder.h"
#include "page/style_text.h"
#include "reference/page/style_references.h"
#include "support/input.h"

using fuzz::check;

namespace {

using pagescan::internal::StyleForm;
using pagescan::internal::StyleReference;

void checkSame(const StyleReference& found, const reference::page::StyleReference& expected,
               std::string_view css) {
  using pagescan::Slot;
  check(found.span.begin == expected.begin && found.span.end == expected.end, "the span");
  check((found.slot == Slot::cssString) == expected.isString, "the slot");
  check(nameOf(found.kind) == expected.kind, "the kind");
  check(((found.flags & pagescan::kCandidate) != 0) == expected.isCandidate, "candidate");
  check(((found.flags & pagescan::kConditional) != 0) == expected.isConditional, "conditional");
  pagescan::internal::DecodedText value;
  decodeCssValue(css.substr(expected.begin, expected.end - expected.begin), found.slot, value);
  check(value.text() == toUtf8(expected.value), "the value");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  constexpr StyleForm kForms[] = {StyleForm::sheet, StyleForm::declarations, StyleForm::value};
  const std::size_t form = input.number(std::size(kForms));
  std::string decoded;
  pagescan::internal::appendDecoded(decoded, input.rest(), pagescan::internal::Encoding::utf8);
  const fuzz::Block block(decoded);
  const std::string_view css(block.data(), block.size());

  std::vector<StyleReference> found;
  readStyle(css, kForms[form], found);
  const auto expected = reference::page::styleReferences(
      reference::page::fromUtf8(css), static_cast<reference::page::StyleForm>(form));
  check(found.size() == expected.size(), "as many references");
  for (std::size_t i = 0; i < found.size(); ++i) checkSame(found[i], expected[i], css);
  return 0;
}
