// What a place is for, and under which condition: the rules that the table of places names.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_RULES_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_RULES_H

#include <set>
#include <string>
#include <string_view>

#include "reference/page/places.h"
#include "reference/page/tree.h"

namespace reference::page {

struct Verdict {
  std::string kind;
  std::set<std::string> flags;
};

// Whether the row is for this element: its name, attribute, profile and, for some, its values.
bool isRowFor(const PlaceRow& row, const Node& element, std::string_view attribute);

// The kind and flags of an attribute's references, except for CSS, JSON and base.
// value   the decoded value of the attribute
Verdict judge(const PlaceRow& row, const Node& element, std::string_view attribute,
              std::string_view value, bool scripting);

// "text/javascript" for what runs as a classic script, "module", else the type in lower case.
std::string scriptTypeOf(const Node& script);

}  // namespace reference::page

#endif
