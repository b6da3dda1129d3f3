// Slow twin of link ranking.
#ifndef PAGESCAN_TESTS_REFERENCE_URLCMP_H
#define PAGESCAN_TESTS_REFERENCE_URLCMP_H

namespace reference {

struct LinkCompare {
  int level = 0;
  bool topRank = false;
  bool preferred = false;
  bool exact = false;
  bool qualifierA = false;
  bool qualifierB = false;
  bool propFirst = false;
  bool propSecond = false;
  bool propThird = false;

  // A level so large that the rank overflows wraps around.
  int rank() const;
  int propRank() const;
};

}  // namespace reference

#endif
