// The tables of the single-byte encodings, made from their indexes at compile time.
#include "encoding/generated/single_byte.h"

#include <cstddef>

#include "encoding/single_byte.h"
#include "encoding/utf8.h"

namespace pagescan::internal {
namespace {

constexpr ByteInUtf8 inUtf8(char32_t codePoint) {
  char bytes[4]{};
  const char* const end = writeUtf8(codePoint, bytes);
  return {{bytes[0], bytes[1], bytes[2]}, static_cast<std::uint8_t>(end - bytes)};
}

struct UserDefinedIndex {
  char16_t units[128];

  constexpr UserDefinedIndex() : units() {
    for (std::size_t i = 0; i < 128; ++i) units[i] = static_cast<char16_t>(0xF780 + i);
  }
};
constexpr UserDefinedIndex kUserDefined;

constexpr SingleByteTable tableOf(const char16_t* index) {
  SingleByteTable table{};
  for (std::size_t i = 0; i < 128; ++i) {
    table[i] = inUtf8(static_cast<char32_t>(i));
    table[i + 128] = inUtf8(index[i]);
  }
  return table;
}

// Both of what an encoding needs, for decoding and for encoding.
struct SingleByteRow {
  Encoding encoding;
  const char16_t* index;
  SingleByteTable table;

  constexpr SingleByteRow(Encoding of, const char16_t* its)
      : encoding(of), index(its), table(tableOf(its)) {}
};

constexpr SingleByteRow kRows[] = {
    {Encoding::ibm866, kIbm866},
    {Encoding::iso8859_2, kIso8859_2},
    {Encoding::iso8859_3, kIso8859_3},
    {Encoding::iso8859_4, kIso8859_4},
    {Encoding::iso8859_5, kIso8859_5},
    {Encoding::iso8859_6, kIso8859_6},
    {Encoding::iso8859_7, kIso8859_7},
    {Encoding::iso8859_8, kIso8859_8},
    {Encoding::iso8859_8I, kIso8859_8},
    {Encoding::iso8859_10, kIso8859_10},
    {Encoding::iso8859_13, kIso8859_13},
    {Encoding::iso8859_14, kIso8859_14},
    {Encoding::iso8859_15, kIso8859_15},
    {Encoding::iso8859_16, kIso8859_16},
    {Encoding::koi8R, kKoi8R},
    {Encoding::koi8U, kKoi8U},
    {Encoding::macintosh, kMacintosh},
    {Encoding::windows874, kWindows874},
    {Encoding::windows1250, kWindows1250},
    {Encoding::windows1251, kWindows1251},
    {Encoding::windows1252, kWindows1252},
    {Encoding::windows1253, kWindows1253},
    {Encoding::windows1254, kWindows1254},
    {Encoding::windows1255, kWindows1255},
    {Encoding::windows1256, kWindows1256},
    {Encoding::windows1257, kWindows1257},
    {Encoding::windows1258, kWindows1258},
    {Encoding::xMacCyrillic, kXMacCyrillic},
    {Encoding::xUserDefined, kUserDefined.units},
};

// A row stands where its encoding is in the enumeration, x-user-defined at the end.
constexpr std::size_t placeOf(Encoding encoding) {
  return encoding == Encoding::xUserDefined
             ? sizeof kRows / sizeof kRows[0] - 1
             : static_cast<std::size_t>(encoding) - static_cast<std::size_t>(Encoding::ibm866);
}

constexpr bool isEveryRowInItsPlace() {
  std::size_t count = 0;
  for (int i = 0; i < kEncodingCount; ++i) {
    const auto encoding = static_cast<Encoding>(i);
    if (!isSingleByte(encoding)) continue;
    if (kRows[placeOf(encoding)].encoding != encoding) return false;
    ++count;
  }
  return count == sizeof kRows / sizeof kRows[0];
}
static_assert(isEveryRowInItsPlace());

}  // namespace

const SingleByteTable& singleByteTableOf(Encoding encoding) {
  return kRows[placeOf(encoding)].table;
}

std::u16string_view singleByteIndexOf(Encoding encoding) {
  return {kRows[placeOf(encoding)].index, 128};
}

}  // namespace pagescan::internal
