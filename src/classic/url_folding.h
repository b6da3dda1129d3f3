// The folding of dot segments in URLs, one pass each.
#ifndef PAGESCAN_URL_FOLDING_H
#define PAGESCAN_URL_FOLDING_H

#include <string_view>

#include "classic/scratch_text.h"

namespace pagescan::internal {

// Appends a link with every "/./" folded to "/" and then every backslash turned into "/": a
// backslash takes no part in the folding.
void appendLink(std::string_view link, ScratchText& result);

// Folds each "../" that begins at or after `from` into the text before it, up to the first "?".
// All bytes between the last "/" before it and its dots go with it, those before `from` included:
// from 9, "http://w1/a/b../c" becomes "http://w1/a/c". Only right after `from` does a "../" go
// alone. `from` counts bytes of the text as it stands at each step. Where no "/" stands before,
// everything before goes.
void foldParents(std::string_view url, std::size_t from, ScratchText& result);

}  // namespace pagescan::internal

#endif
