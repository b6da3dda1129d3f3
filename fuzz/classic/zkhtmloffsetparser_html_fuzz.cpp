// Pages: the records are those of the twin, and every value stands at its offset.

#include <utility>
#include <vector>

#include "reference/classic/zkhtmloffsetparser.h"
#include "support/input.h"
#include "support/records.h"
#include "zkhtmlparseutils.h"

using fuzz::check;

namespace {

// Blanking would never return at an endless script: its opening is taken out.
std::string mended(std::string_view page) {
  RWCString text = fuzz::stringOf(page.substr(0, page.find('\0')));
  for (std::size_t at = tqFindEndlessScript(text); at != RWCString::npos;
       at = tqFindEndlessScript(text)) {
    text(at) = '_';
  }
  return fuzz::textOf(text);
}

std::string blanked(const std::string& page) {
  RWCString text = fuzz::stringOf(page);
  tqOverwriteScriptWithBlanks(text);
  tqOverwriteTagWithBlanks(text, "<!--", "-->");
  return fuzz::textOf(text);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const fuzz::CString pageUrl(input.text());
  const std::string page = mended(input.rest());
  const fuzz::CString block(page);

  fuzz::Records sink;
  CHTMLOffsetParser parser(pageUrl.data());
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML(block.data(), block.size());
  const reference::HtmlPass expected = reference::ParseHTML(pageUrl.data(), page);
  check(!expected.endless, "a mended page ends");
  check(sink.records == fuzz::asShown(expected.records), "the records are those of the twin");
  check(fuzz::printed(parser) == reference::PrintAll(expected.records), "they are printed as told");
  fuzz::checkValues(sink.records, blanked(page), pageUrl.data(),
                    [](std::size_t /*offset*/) { return std::size_t{0}; });

  const std::vector<reference::Record> once = std::exchange(sink.records, {});
  parser.ParseHTML(block.data(), 0);
  check(sink.records == once, "a second pass adds the same records");
  check(parser.findTagName().length() == 0, "a pass ends at the end of the page");
  return 0;
}
