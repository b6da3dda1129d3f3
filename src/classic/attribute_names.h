// The names of the attributes that are recorded, ready to be used as keys.
#ifndef PAGESCAN_ATTRIBUTE_NAMES_H
#define PAGESCAN_ATTRIBUTE_NAMES_H

#include <cstddef>

#include "rw/rwcollectables.h"
#include "rw/rwcstring.h"

namespace pagescan::internal {

// The one key that all records share for an attribute of the tag table, by its id. It lives as long
// as the library, is never changed and never deleted: recording such a name costs no allocation.
RWCollectableString& sharedAttributeName(std::size_t id);

// The same by name, or null for any other name.
RWCollectableString* findSharedAttributeName(const RWCString& name);

bool isSharedAttributeName(const RWCollectable* key);

}  // namespace pagescan::internal

#endif
