// The names of the attributes that are recorded, ready to be used as keys.
#ifndef PAGESCAN_ATTRIBUTE_NAMES_H
#define PAGESCAN_ATTRIBUTE_NAMES_H

#include "rw/rwcollectables.h"
#include "rw/rwcstring.h"

namespace pagescan {

// The one key that all records share for a name of the tag table, or null for any other name. It
// lives as long as the library, is never changed and never deleted: recording such a name costs no
// allocation.
RWCollectableString* sharedAttributeName(const RWCString& name);

bool isSharedAttributeName(const RWCollectable* key);

}  // namespace pagescan

#endif
