// The first look at a link: most have nothing in them that resolving would have to change.
#ifndef PAGESCAN_BASE_LINK_SCAN_H
#define PAGESCAN_BASE_LINK_SCAN_H

#include <string_view>

namespace pagescan {

struct LinkTraits {
  bool needsCleaning;  // a blank, a control byte or a "%"
  bool needsFolding;   // a backslash or a "./"
};

// Linear; links are too short for vectors wider than the baseline's.
LinkTraits scanLink(std::string_view link);

}  // namespace pagescan

#endif
