// The pointers by which encoders write a character: the look-ups of the Encoding Standard,
// section 5, in the direction of encoding.
#ifndef PAGESCAN_ENCODING_POINTERS_H
#define PAGESCAN_ENCODING_POINTERS_H

#include <optional>

namespace pagescan::internal {

// "Index pointer": the first pointer of a character in an index; none when it is not there.
// Cost      bounded: a binary search
std::optional<unsigned> eucKrPointer(char32_t codePoint);
std::optional<unsigned> gb18030Pointer(char32_t codePoint);
std::optional<unsigned> jis0208Pointer(char32_t codePoint);

// "Index Big5 pointer": none of the Hong Kong extensions, and for six characters the last pointer.
std::optional<unsigned> big5Pointer(char32_t codePoint);

// "Index Shift_JIS pointer": index jis0208 without its duplicates of NEC.
std::optional<unsigned> shiftJisPointer(char32_t codePoint);

}  // namespace pagescan::internal

#endif
