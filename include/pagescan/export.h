// Marks what the shared library libpagescan-page shows to its hosts; everything else stays hidden.
#ifndef PAGESCAN_PAGESCAN_EXPORT_H
#define PAGESCAN_PAGESCAN_EXPORT_H

#define PAGESCAN_PAGE_EXPORT __attribute__((visibility("default")))

#endif
