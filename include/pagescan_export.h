// Marks what the shared library shows to its hosts; everything else stays hidden. What a class that
// is shown keeps to itself, and no inline function of a header calls, is marked as internal.
#ifndef PAGESCAN_EXPORT_H
#define PAGESCAN_EXPORT_H

#define PAGESCAN_EXPORT __attribute__((visibility("default")))
#define PAGESCAN_INTERNAL __attribute__((visibility("hidden")))

#endif
