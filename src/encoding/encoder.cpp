// The encoders of the Encoding Standard: each writes one character or says that it has none.
#include "encoding/encoder.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <optional>

#include "encoding/generated/katakana.h"
#include "encoding/indexes.h"
#include "encoding/pointers.h"
#include "encoding/single_byte.h"

namespace pagescan::internal {
namespace {

constexpr bool isAscii(char32_t codePoint) {
  return codePoint < 0x80;
}

constexpr bool isHalfWidthKatakana(char32_t codePoint) {
  return codePoint >= 0xFF61 && codePoint <= 0xFF9F;
}

// The Japanese indexes have the full-width hyphen-minus where other tables have the minus sign.
constexpr char32_t withoutMinusSign(char32_t codePoint) {
  return codePoint == 0x2212 ? 0xFF0D : codePoint;
}

bool append(std::string& out, std::initializer_list<unsigned> bytes) {
  for (const unsigned byte : bytes) out += static_cast<char>(static_cast<unsigned char>(byte));
  return true;
}

// Source    Encoding Standard, 9.2 "single-byte encoder"
bool appendSingleByte(Encoding encoding, char32_t codePoint, std::string& out) {
  if (codePoint > 0xFFFF || codePoint == kReplacementCharacter) return false;
  const std::size_t pointer = singleByteIndexOf(encoding).find(static_cast<char16_t>(codePoint));
  if (pointer == std::u16string_view::npos) return false;
  return append(out, {static_cast<unsigned>(pointer) + 0x80});
}

// Source    Encoding Standard, 13.1.2 "EUC-KR encoder"
bool appendEucKr(char32_t codePoint, std::string& out) {
  const std::optional<unsigned> pointer = eucKrPointer(codePoint);
  return pointer && append(out, {*pointer / 190 + 0x81, *pointer % 190 + 0x41});
}

// Source    Encoding Standard, 11.1.2 "Big5 encoder"
bool appendBig5(char32_t codePoint, std::string& out) {
  const std::optional<unsigned> pointer = big5Pointer(codePoint);
  if (!pointer) return false;
  const unsigned trail = *pointer % 157;
  return append(out, {*pointer / 157 + 0x81, trail + (trail < 0x3F ? 0x40 : 0x62)});
}

// Source    Encoding Standard, 12.1.2 "EUC-JP encoder"
bool appendEucJp(char32_t codePoint, std::string& out) {
  if (codePoint == 0xA5) return append(out, {'\\'});
  if (codePoint == 0x203E) return append(out, {'~'});
  if (isHalfWidthKatakana(codePoint)) return append(out, {0x8E, codePoint - 0xFF61 + 0xA1});
  const std::optional<unsigned> pointer = jis0208Pointer(withoutMinusSign(codePoint));
  return pointer && append(out, {*pointer / 94 + 0xA1, *pointer % 94 + 0xA1});
}

// Source    Encoding Standard, 12.3.2 "Shift_JIS encoder"
bool appendShiftJis(char32_t codePoint, std::string& out) {
  if (codePoint == 0x80) return append(out, {0x80});
  if (codePoint == 0xA5) return append(out, {'\\'});
  if (codePoint == 0x203E) return append(out, {'~'});
  if (isHalfWidthKatakana(codePoint)) return append(out, {codePoint - 0xFF61 + 0xA1});
  const std::optional<unsigned> pointer = shiftJisPointer(withoutMinusSign(codePoint));
  if (!pointer) return false;
  const unsigned lead = *pointer / 188;
  const unsigned trail = *pointer % 188;
  return append(out, {lead + (lead < 0x1F ? 0x81 : 0xC1), trail + (trail < 0x3F ? 0x40 : 0x41)});
}

struct PrivateUseRow {
  char32_t codePoint;
  unsigned char bytes[2];
};

// Private-use characters that were the meaning of these bytes before GB 18030-2022.
constexpr PrivateUseRow kGb18030PrivateUse[] = {
    {U'\uE78D', {0xA6, 0xD9}}, {U'\uE78E', {0xA6, 0xDA}}, {U'\uE78F', {0xA6, 0xDB}},
    {U'\uE790', {0xA6, 0xDC}}, {U'\uE791', {0xA6, 0xDD}}, {U'\uE792', {0xA6, 0xDE}},
    {U'\uE793', {0xA6, 0xDF}}, {U'\uE794', {0xA6, 0xEC}}, {U'\uE795', {0xA6, 0xED}},
    {U'\uE796', {0xA6, 0xF3}}, {U'\uE81E', {0xFE, 0x59}}, {U'\uE826', {0xFE, 0x61}},
    {U'\uE82B', {0xFE, 0x66}}, {U'\uE82C', {0xFE, 0x67}}, {U'\uE832', {0xFE, 0x6D}},
    {U'\uE843', {0xFE, 0x7E}}, {U'\uE854', {0xFE, 0x90}}, {U'\uE864', {0xFE, 0xA0}},
};
static_assert(std::size(kGb18030PrivateUse) == 18);

bool appendFourBytes(unsigned pointer, std::string& out) {
  return append(out, {pointer / (10 * 126 * 10) + 0x81, pointer / (10 * 126) % 10 + 0x30,
                      pointer / 10 % 126 + 0x81, pointer % 10 + 0x30});
}

// Source    Encoding Standard, 10.2.2 "gb18030 encoder", 10.1.2 "GBK encoder"
bool appendGb18030(bool isGbk, char32_t codePoint, std::string& out) {
  if (codePoint == 0xE5E5) return false;  // its bytes decode to U+3000
  if (isGbk && codePoint == 0x20AC) return append(out, {0x80});
  const auto* const row =
      std::find_if(std::begin(kGb18030PrivateUse), std::end(kGb18030PrivateUse),
                   [codePoint](const PrivateUseRow& one) { return one.codePoint == codePoint; });
  if (row != std::end(kGb18030PrivateUse)) return append(out, {row->bytes[0], row->bytes[1]});
  if (const std::optional<unsigned> pointer = gb18030Pointer(codePoint)) {
    const unsigned trail = *pointer % 190;
    return append(out, {*pointer / 190 + 0x81, trail + (trail < 0x3F ? 0x40 : 0x41)});
  }
  return !isGbk && appendFourBytes(gb18030RangesPointer(codePoint), out);
}

constexpr bool isControlOfIso2022Jp(char32_t codePoint) {
  return codePoint == 0x0E || codePoint == 0x0F || codePoint == 0x1B;
}

}  // namespace

QueryEncoder::QueryEncoder(Encoding encoding) : encoding_(outputEncodingOf(encoding)) {}

bool QueryEncoder::append(char32_t codePoint, std::string& out) {
  if (encoding_ == Encoding::iso2022Jp) return appendIso2022Jp(codePoint, out);
  if (isAscii(codePoint)) {
    out += static_cast<char>(codePoint);
    return true;
  }
  switch (encoding_) {
    case Encoding::utf8:
      appendUtf8(out, codePoint);
      return true;
    case Encoding::gbk:
    case Encoding::gb18030:
      return appendGb18030(encoding_ == Encoding::gbk, codePoint, out);
    case Encoding::big5:
      return appendBig5(codePoint, out);
    case Encoding::eucJp:
      return appendEucJp(codePoint, out);
    case Encoding::shiftJis:
      return appendShiftJis(codePoint, out);
    case Encoding::eucKr:
      return appendEucKr(codePoint, out);
    default:
      return appendSingleByte(encoding_, codePoint, out);
  }
}

char32_t QueryEncoder::refused(char32_t codePoint) const {
  const bool isControl = encoding_ == Encoding::iso2022Jp && isControlOfIso2022Jp(codePoint);
  return isControl ? kReplacementCharacter : codePoint;
}

void QueryEncoder::finish(std::string& out) {
  shiftTo(Shift::ascii, out);
}

// Source    Encoding Standard, 12.2.2 "ISO-2022-JP encoder"
bool QueryEncoder::appendIso2022Jp(char32_t codePoint, std::string& out) {
  if (shift_ != Shift::jis0208 && isControlOfIso2022Jp(codePoint)) return false;
  if (isAscii(codePoint)) {
    const bool isOtherInRoman = codePoint == '\\' || codePoint == '~';
    if (shift_ != Shift::roman || isOtherInRoman) shiftTo(Shift::ascii, out);
    if (isControlOfIso2022Jp(codePoint)) return false;
    out += static_cast<char>(codePoint);
    return true;
  }
  if (codePoint == 0xA5 || codePoint == 0x203E) {
    shiftTo(Shift::roman, out);
    out += codePoint == 0xA5 ? '\\' : '~';
    return true;
  }
  codePoint = withoutMinusSign(codePoint);
  if (isHalfWidthKatakana(codePoint)) codePoint = kFullWidthKatakana[codePoint - 0xFF61];
  const std::optional<unsigned> pointer = jis0208Pointer(codePoint);
  if (!pointer) {
    if (shift_ == Shift::jis0208) shiftTo(Shift::ascii, out);
    return false;
  }
  shiftTo(Shift::jis0208, out);
  return internal::append(out, {*pointer / 94 + 0x21, *pointer % 94 + 0x21});
}

void QueryEncoder::shiftTo(Shift shift, std::string& out) {
  if (shift_ == shift) return;
  shift_ = shift;
  out += shift == Shift::ascii ? "\x1B(B" : shift == Shift::roman ? "\x1B(J" : "\x1B$B";
}

}  // namespace pagescan::internal
