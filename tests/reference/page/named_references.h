// The named character references of the HTML Standard, 13.5.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_NAMED_REFERENCES_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_NAMED_REFERENCES_H

#include <map>
#include <string>
#include <string_view>

namespace reference::page {

// From a name without "&", with its ";" if it has one, to one or two code points.
const std::map<std::string_view, std::u32string_view>& namedReferences();

}  // namespace reference::page

#endif
