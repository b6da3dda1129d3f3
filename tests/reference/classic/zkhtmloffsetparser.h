// Slow twins of the HTML pass and of the style pass.
#ifndef PAGESCAN_TESTS_REFERENCE_ZKHTMLOFFSETPARSER_H
#define PAGESCAN_TESTS_REFERENCE_ZKHTMLOFFSETPARSER_H

#include <string>
#include <vector>

#include "reference/classic/records.h"

namespace reference {

struct HtmlPass {
  std::vector<Record> records;
  bool endless = false;  // the library's call never returns; no record was made
};

struct StylePass {
  std::vector<Record> records;
  bool boundsError = false;  // the library raises RWBoundsErr after these records
};

// Both read the page URL up to its first NUL, and ParseHTML the page too.
HtmlPass ParseHTML(const std::string& pageUrl, const std::string& page);
StylePass ParseCSS(const std::string& pageUrl, const std::string& css);

}  // namespace reference

#endif
