// forEachAttribute: all attributes of a record, for sinks.
#ifndef PAGESCAN_RECORDATTRIBUTES_H
#define PAGESCAN_RECORDATTRIBUTES_H

#include <cstddef>

#include "rw/rwcollectables.h"
#include "rw/rwordered.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldiettransactiondata.h"

namespace pagescan {

// Calls visit(attribute) with each attribute of `record`, a CZKHTMLDietAttributeObject&.
// visit   called once an attribute, in the order in which GetAttributeNames gives the names; it
//         inserts none into the record.
// Owns    nothing: the attributes stay the record's.
// Fails   std::bad_alloc, or what `visit` throws.
// Cost    linear in the number of attributes.
template <typename Visit>
void forEachAttribute(CZKHTMLDietTransactionsObject& record, Visit visit) {
  RWOrdered names;
  record.GetAttributeNames(names);
  for (std::size_t i = 0; i < names.entries(); ++i) {
    visit(*record.GetAttributeObject(static_cast<RWCollectableString&>(*names.at(i))));
  }
}

}  // namespace pagescan

#endif
