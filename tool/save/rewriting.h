// Makes the copy of a page or style sheet that opens without its server.
//
// What was saved is named by its copy, all else by its absolute URL, and the rest stays byte for
// byte, but for what would keep a browser from reading copies: see rewritePage.
#ifndef PAGESCAN_TOOL_SAVE_REWRITING_H
#define PAGESCAN_TOOL_SAVE_REWRITING_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/page.h"
#include "pagescan/style_sheet.h"

namespace pagescan::tool {

// A page or a style sheet as it came.
struct Original {
  std::string_view bytes;
  std::string url;
  std::string charset;   // of the response; may be empty
  std::string encoding;  // of the text that loads it; may be empty
};

// How an original is read. Its bytes must outlive the result.
Page readPage(const Original& page);
StyleSheet readSheet(const Original& sheet);

// How a copy names the copy of another URL (absolute, without a fragment); none where there is no
// copy. Asked for references of the kinds load and navigation.
using CopyOf = std::function<std::optional<std::string>(const std::string& url, Kind kind)>;

struct CopyText {
  std::string bytes;
  std::vector<std::string> told;  // what was taken off, or could not be done: parts of messages
};

// Besides references: takes off `integrity` and `crossorigin` of elements that load a copy,
// policies in `meta` elements and the `href` of `base` elements; and tells the encoding in the
// copy where the server alone told it.
CopyText rewritePage(const Original& original, const CopyOf& copyOf);
// Tells the encoding, too.
CopyText rewriteSheet(const Original& original, const CopyOf& copyOf);

}  // namespace pagescan::tool

#endif
