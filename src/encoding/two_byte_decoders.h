// The decoders of the encodings whose characters have two bytes as a rule; see decoders.h.
#ifndef PAGESCAN_ENCODING_TWO_BYTE_DECODERS_H
#define PAGESCAN_ENCODING_TWO_BYTE_DECODERS_H

#include "encoding/decoders.h"
#include "encoding/pair_tables.h"

namespace pagescan::internal {

// A pair that means nothing: an ASCII byte after the lead byte stays.
inline const Byte* malformedPair(const Byte* at, char*& out) {
  return malformed(at, isAscii(at[1]) ? 1 : 2, out);
}

inline const Byte* asciiCharacter(const Byte* at, char*& out) {
  *out++ = static_cast<char>(*at);
  return at + 1;
}

// Source    Encoding Standard, 13.1.1 "EUC-KR decoder"
class EucKrDecoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    const Byte* const after = kEucKrPairs.next(kEucKr, at, end, out);
    return after != nullptr ? after : other(at, end, out);
  }

 private:
  static const Byte* other(const Byte* at, const Byte* end, char*& out) {
    if (isAscii(*at)) return asciiCharacter(at, out);
    const bool isPair = isBetween(*at, 0x81, 0xFE) && end - at >= 2;
    return isPair ? malformedPair(at, out) : malformed(at, 1, out);
  }
};

// Source    Encoding Standard, 11.1.1 "Big5 decoder"
class Big5Decoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    const Byte* const after = kBig5Pairs.next(kBig5Index.units, at, end, out);
    return after != nullptr ? after : other(at, end, out);
  }

 private:
  static const Byte* other(const Byte* at, const Byte* end, char*& out) {
    if (isAscii(*at)) return asciiCharacter(at, out);
    if (!isBetween(*at, 0x81, 0xFE) || end - at < 2) return malformed(at, 1, out);
    const unsigned pointer = big5PointerOf(at[0], at[1]);
    const char32_t codePoint = big5CodePoint(pointer);
    if (codePoint == kReplacementCharacter) return letterAndMark(pointer, at, out);
    out = writeUtf8(codePoint, out);
    return at + 2;
  }

  // Four pointers are two characters each: U+00CA or U+00EA with a macron or a caron.
  static const Byte* letterAndMark(unsigned pointer, const Byte* at, char*& out) {
    if (pointer != 1133 && pointer != 1135 && pointer != 1164 && pointer != 1166) {
      return malformedPair(at, out);
    }
    out = writeUtf8(pointer < 1164 ? U'\u00CA' : U'\u00EA', out);
    out = writeUtf8(pointer == 1133 || pointer == 1164 ? U'\u0304' : U'\u030C', out);
    return at + 2;
  }
};

// Source    Encoding Standard, 12.1.1 "EUC-JP decoder"
class EucJpDecoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    const Byte* const after = kEucJpPairs.next(kJis0208, at, end, out);
    return after != nullptr ? after : other(at, end, out);
  }

 private:
  static const Byte* other(const Byte* at, const Byte* end, char*& out) {
    const Byte lead = *at;
    if (isAscii(lead)) return asciiCharacter(at, out);
    const bool isLead = lead == 0x8E || lead == 0x8F || isEucJpByte(lead);
    if (!isLead || end - at < 2) return malformed(at, 1, out);
    if (lead == 0x8E && isBetween(at[1], 0xA1, 0xDF)) {
      out = writeUtf8(0xFF61U - 0xA1U + at[1], out);
      return at + 2;
    }
    if (lead == 0x8F && isEucJpByte(at[1])) return threeBytes(at, end, out);
    return malformedPair(at, out);
  }

  static const Byte* threeBytes(const Byte* at, const Byte* end, char*& out) {
    if (end - at < 3) return malformed(at, 2, out);
    const unsigned pointer = eucJpPointerOf(at[1], at[2]);
    const char16_t unit = pointer == kNoPointer ? kReplacementCharacter : kJis0212[pointer];
    if (unit == kReplacementCharacter) return malformedPair(at + 1, out);
    out = writeUtf8(unit, out);
    return at + 3;
  }
};

// Source    Encoding Standard, 12.3.1 "Shift_JIS decoder"
class ShiftJisDecoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    const Byte* const after = kShiftJisPairs.next(kJis0208, at, end, out);
    return after != nullptr ? after : other(at, end, out);
  }

 private:
  // Characters of the user's own, from U+E000 on.
  static constexpr unsigned kFirstUserDefined = 8836;
  static constexpr unsigned kLastUserDefined = 10715;

  static const Byte* other(const Byte* at, const Byte* end, char*& out) {
    const Byte lead = *at;
    if (isAscii(lead)) return asciiCharacter(at, out);
    if (isShiftJisLead(lead) && end - at >= 2) return otherPair(at, out);
    const bool isKatakana = isBetween(lead, 0xA1, 0xDF);
    if (!isKatakana && lead != 0x80) return malformed(at, 1, out);
    out = writeUtf8(isKatakana ? 0xFF61U - 0xA1U + lead : lead, out);
    return at + 1;
  }

  static const Byte* otherPair(const Byte* at, char*& out) {
    const unsigned pointer = shiftJisPointerOf(at[0], at[1]);
    if (!isBetween(pointer, kFirstUserDefined, kLastUserDefined)) return malformedPair(at, out);
    out = writeUtf8(0xE000 + pointer - kFirstUserDefined, out);
    return at + 2;
  }
};

// Source    Encoding Standard, 10.2.1 "gb18030 decoder", which GBK has, too
class Gb18030Decoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    const Byte* const after = kGb18030Pairs.next(kGb18030, at, end, out);
    return after != nullptr ? after : other(at, end, out);
  }

 private:
  static constexpr bool isDigit(Byte byte) { return isBetween(byte, 0x30, 0x39); }

  static const Byte* other(const Byte* at, const Byte* end, char*& out) {
    if (isAscii(*at)) return asciiCharacter(at, out);
    if (*at == 0x80) {
      out = writeUtf8(U'\u20AC', out);
      return at + 1;
    }
    if (*at == 0xFF || end - at < 2) return malformed(at, 1, out);
    return isDigit(at[1]) ? fourBytes(at, end, out) : malformedPair(at, out);
  }

  // The end in the middle is one error; a wrong byte leaves all bytes but the first.
  static const Byte* fourBytes(const Byte* at, const Byte* end, char*& out) {
    if (end - at < 3) return malformed(at, 2, out);
    if (!isBetween(at[2], 0x81, 0xFE)) return malformed(at, 1, out);
    if (end - at < 4) return malformed(at, 3, out);
    if (!isDigit(at[3])) return malformed(at, 1, out);
    const unsigned pointer =
        (((at[0] - 0x81U) * 10 + (at[1] - 0x30U)) * 126 + (at[2] - 0x81U)) * 10 + (at[3] - 0x30U);
    out = writeUtf8(gb18030RangesCodePoint(pointer), out);
    return at + 4;
  }
};

}  // namespace pagescan::internal

#endif
