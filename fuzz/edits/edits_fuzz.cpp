// Edits: the promises of their header, for a page and a style sheet.
//
// An input is a number each for the kernels, the encoding, scripts and profiles, the new values,
// each after the number of its reference, an empty value, and the page.
#include <vector>

#include "support/edit_promises.h"
#include "support/input.h"

namespace {

template <typename Document, typename Options>
void checkEdits(const Document& document, const Options& options,
                const std::vector<pagescan::Edit>& wanted) {
  std::string broken = fuzz::brokenByIdleEdits(document);
  fuzz::check(broken.empty(), broken.c_str());
  if (document.references().empty()) return;
  std::vector<pagescan::Edit> edits = wanted;
  for (pagescan::Edit& edit : edits) edit.reference %= document.references().size();
  broken = fuzz::brokenByEdits(document, options, edits);
  fuzz::check(broken.empty(), broken.c_str());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view kCharsets[] = {
      "", "utf-8", "shift_jis", "gb18030", "iso-2022-jp", "utf-16le", "big5", "windows-1252"};
  fuzz::Input input(data, size);
  pagescan::PageOptions options;
  options.url = "http://h.test/d/p.html?q#f";
  options.charset = kCharsets[input.number(std::size(kCharsets))];
  options.scripting = !input.flag();
  options.profiles = static_cast<pagescan::Profiles>(input.number(8));
  std::vector<pagescan::Edit> edits;
  for (;;) {
    const std::size_t reference = input.number(256);
    const std::string_view value = input.text();
    if (value.empty()) break;
    edits.push_back({reference, std::string(value), {}});
  }
  const fuzz::Block block(input.rest());
  const std::string_view bytes(block.data(), block.size());
  checkEdits(pagescan::Page(bytes, options), options, edits);
  const pagescan::StyleSheetOptions sheetOptions = {options.url, options.charset};
  checkEdits(pagescan::StyleSheet(bytes, sheetOptions), sheetOptions, edits);
  return 0;
}
