// Style text: the records are those of the twin, and every value stands at its offset.

#include "reference/zkhtmloffsetparser.h"
#include "rw/rwbounds.h"
#include "support/input.h"
#include "support/records.h"

using fuzz::check;

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
  fuzz::checkValues(sink.records, css, pageUrl.data());
  return 0;
}
