// Everything that the library offers.
#ifndef PAGESCAN_PAGESCAN_H
#define PAGESCAN_PAGESCAN_H

#include "charset.h"
#include "hostroutines.h"
#include "recordattributes.h"
#include "rw/rwbounds.h"
#include "rw/rwcollectable.h"
#include "rw/rwcollectables.h"
#include "rw/rwcregexp.h"
#include "rw/rwcstring.h"
#include "rw/rwhashdictionary.h"
#include "rw/rwordered.h"
#include "tqbuffpart.h"
#include "tqurlbase.h"
#include "urlcmp.h"
#include "zkhtmlattributefinder.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldiettransactiondata.h"
#include "zkhtmldietvirtualqueue.h"
#include "zkhtmloffsetparser.h"
#include "zkhtmlparseutils.h"
#include "zkurlencoding.h"
#include "zkutf8.h"

#endif
