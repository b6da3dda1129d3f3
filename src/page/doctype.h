// The DOCTYPE token and the mode that it puts a page into (HTML Standard, 13.2.5.53 to 13.2.5.68
// and 13.2.6.4.1).
#ifndef PAGESCAN_PAGE_DOCTYPE_H
#define PAGESCAN_PAGE_DOCTYPE_H

#include <optional>
#include <string_view>

namespace pagescan::internal {

// Views of the page, as written.
struct Doctype {
  std::string_view name;
  std::optional<std::string_view> publicId;
  std::optional<std::string_view> systemId;
  bool forcesQuirks = false;
};

// The DOCTYPE whose name may start at `at`, right after "<!DOCTYPE". Sets `at` to after it.
Doctype readDoctype(const char*& at, const char* end);

bool meansQuirks(const Doctype& doctype);
bool meansLimitedQuirks(const Doctype& doctype);

}  // namespace pagescan::internal

#endif
