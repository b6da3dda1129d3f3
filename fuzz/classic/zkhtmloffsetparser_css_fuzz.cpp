// Style text: the records are those of the twin, and every value stands at its offset.

#include "reference/classic/zkhtmloffsetparser.h"
#include "rw/rwbounds.h"
#include "support/input.h"
#include "support/records.h"

using fuzz::check;

namespace {

// A URL that begins with a quote loses all such quotes at its beginning, but its offset is that of
// the byte after the first one.
std::size_t quotesPassed(const std::string& css, std::size_t offset) {
  const char quote = offset == 0 ? '\0' : css[offset - 1];
  if (quote != '"' && quote != '\'') return 0;
  return std::min(css.find_first_not_of(quote, offset), css.size()) - offset;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const fuzz::CString pageUrl(input.text());
  const std::string css(input.rest());

  fuzz::Records sink;
  CHTMLOffsetParser parser(pageUrl.data());
  parser.SetDietVirtualQueue(&sink);
  bool boundsError = false;
  try {
    parser.ParseCSS(fuzz::stringOf(css));
  } catch (const RWBoundsErr&) {
    boundsError = true;
  }
  const reference::StylePass expected = reference::ParseCSS(pageUrl.data(), css);
  check(boundsError == expected.boundsError, "the error is raised where the twin raises it");
  check(sink.records == fuzz::asShown(expected.records), "the records are those of the twin");
  check(fuzz::printed(parser) == reference::PrintAll(expected.records), "they are printed as told");
  fuzz::checkValues(sink.records, css, pageUrl.data(),
                    [&](std::size_t offset) { return quotesPassed(css, offset); });
  return 0;
}
