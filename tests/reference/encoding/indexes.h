// Look-ups in the indexes of the Encoding Standard, section 5, from the first row to the last.
#ifndef PAGESCAN_TESTS_REFERENCE_ENCODING_INDEXES_H
#define PAGESCAN_TESTS_REFERENCE_ENCODING_INDEXES_H

#include <vector>

#include "encoding/encoding.h"

namespace reference {

constexpr int kNull = -1;

// Code points by pointer; kNull for a pointer that is not in the index.
using Index = std::vector<int>;

const Index& indexBig5();
const Index& indexEucKr();
const Index& indexGb18030();
const Index& indexJis0208();
const Index& indexJis0212();
const Index& indexKatakana();
const Index& indexSingleByte(pagescan::internal::Encoding encoding);

int indexCodePoint(const Index& index, int pointer);
int indexPointer(const Index& index, int codePoint);

int indexGb18030RangesCodePoint(int pointer);
int indexGb18030RangesPointer(int codePoint);
int indexShiftJisPointer(int codePoint);
int indexBig5Pointer(int codePoint);

}  // namespace reference

#endif
