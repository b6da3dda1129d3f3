// What the classic reading of style text passes over.
#ifndef PAGESCAN_TOOL_UNREAD_STYLE_H
#define PAGESCAN_TOOL_UNREAD_STYLE_H

#include <string>
#include <vector>

#include "rw/rwcstring.h"

namespace pagescan::tool {

// Tells about each "url(" and "@import" outside comments that gave no record, except for those that
// are empty or a fragment.
// offsets  where the values that were read begin in `css`, ascending
// lead     bytes before the input's own text
// Cost     linear in the text
void tellUnreadStyle(const std::string& inputName, const RWCString& css,
                     const std::vector<int>& offsets, std::size_t lead);

}  // namespace pagescan::tool

#endif
