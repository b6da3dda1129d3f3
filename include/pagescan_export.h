// Marks what the shared library shows to its hosts; everything else stays hidden.
#ifndef PAGESCAN_EXPORT_H
#define PAGESCAN_EXPORT_H

#define PAGESCAN_EXPORT __attribute__((visibility("default")))

#endif
