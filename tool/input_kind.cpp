#include "input_kind.h"

#include <algorithm>
#include <iterator>

namespace pagescan::tool {

namespace {

using namespace std::string_view_literals;

struct Signature {
  std::string_view bytes;
  std::string_view kind;
};
constexpr Signature kSignatures[] = {
    {"\x1F\x8B\x08"sv, "gzip (zcat unpacks it)"},
    {"\x28\xB5\x2F\xFD"sv, "Zstandard (zstdcat unpacks it)"},
    {"\xFD"
     "7zXZ\0"sv,
     "xz (xzcat unpacks it)"},
    {"BZh91AY&SY"sv, "bzip2 (bzcat unpacks it)"},
    {"PK\x03\x04"sv, "a ZIP archive"},
    {"\x89PNG\r\n\x1A\n"sv, "a PNG picture"},
    {"\xFF\xD8\xFF"sv, "a JPEG picture"},
    {"GIF87a"sv, "a GIF picture"},
    {"GIF89a"sv, "a GIF picture"},
    {"%PDF-"sv, "PDF"},
    {"wOFF\0\1\0\0"sv, "a font"},
    {"wOF2\0\1\0\0"sv, "a font"},
    {"\x7F"
     "ELF"sv,
     "a program"},
};

bool isAscii(char byte) {
  return byte > 0;
}

}  // namespace

std::string_view binaryKindOf(std::string_view bytes) {
  const auto* row = std::find_if(std::begin(kSignatures), std::end(kSignatures),
                                 [&](auto& known) { return bytes.starts_with(known.bytes); });
  return row == std::end(kSignatures) ? "" : row->kind;
}

bool looksLikeUtf16(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv)) return true;
  if (bytes.size() < 4) return false;
  const bool isLittleEndian =
      isAscii(bytes[0]) && bytes[1] == '\0' && isAscii(bytes[2]) && bytes[3] == '\0';
  const bool isBigEndian =
      bytes[0] == '\0' && isAscii(bytes[1]) && bytes[2] == '\0' && isAscii(bytes[3]);
  return isLittleEndian || isBigEndian;
}

}  // namespace pagescan::tool
