// CDOMBaseLinkCmp: ranks a link by flags that its owner sets.
#ifndef PAGESCAN_URLCMP_H
#define PAGESCAN_URLCMP_H

#include "pagescan_export.h"

struct PAGESCAN_EXPORT CDOMBaseLinkCmp {
  // What the owner knows of the link.
  int level = 0;
  bool topRank = false;
  bool preferred = false;
  bool exact = false;
  bool qualifierA = false;
  bool qualifierB = false;
  bool propFirst = false;
  bool propSecond = false;
  bool propThird = false;

  // 1 for `topRank`; 2 to 4 with both qualifiers: exact, preferred, neither; otherwise
  // 2 * level + 3 when preferred, else 2 * level + 4, wrapping around on overflow.
  int rank();

  // How many of the three properties are set.
  int propRank();
};

#endif
