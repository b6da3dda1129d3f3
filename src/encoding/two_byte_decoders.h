// The decoders of the encodings whose characters have two bytes as a rule; see decoders.h.
#ifndef PAGESCAN_ENCODING_TWO_BYTE_DECODERS_H
#define PAGESCAN_ENCODING_TWO_BYTE_DECODERS_H

#include "encoding/decoders.h"
#include "encoding/indexes.h"

namespace pagescan::internal {

// A pointer that stands for none.
inline constexpr unsigned kNoPointer = ~0U;

// A pair that means nothing: an ASCII byte after the lead byte stays.
inline const Byte* malformedPair(const Byte* at, char*& out) {
  return malformed(at, isAscii(at[1]) ? 1 : 2, out);
}

// Writes the character that an index has at `pointer`.
inline const Byte* pairFromIndex(const char16_t* index, unsigned pointer, const Byte* at,
                                 char*& out) {
  const char32_t codePoint = pointer == kNoPointer ? kReplacementCharacter : index[pointer];
  if (codePoint == kReplacementCharacter) return malformedPair(at, out);
  out = writeUtf8(codePoint, out);
  return at + 2;
}

inline const Byte* asciiCharacter(const Byte* at, char*& out) {
  *out++ = static_cast<char>(*at);
  return at + 1;
}

// Source    Encoding Standard, 13.1.1 "EUC-KR decoder"
class EucKrDecoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    if (isAscii(*at)) return asciiCharacter(at, out);
    if (!isBetween(*at, 0x81, 0xFE) || end - at < 2) return malformed(at, 1, out);
    const unsigned pointer =
        isBetween(at[1], 0x41, 0xFE) ? (*at - 0x81U) * 190 + (at[1] - 0x41U) : kNoPointer;
    return pairFromIndex(kEucKr, pointer, at, out);
  }
};

// Source    Encoding Standard, 11.1.1 "Big5 decoder"
class Big5Decoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    if (isAscii(*at)) return asciiCharacter(at, out);
    if (!isBetween(*at, 0x81, 0xFE) || end - at < 2) return malformed(at, 1, out);
    const unsigned pointer = pointerOf(at[0], at[1]);
    const char32_t codePoint = big5CodePoint(pointer);
    if (codePoint == kReplacementCharacter) return letterAndMark(pointer, at, out);
    out = writeUtf8(codePoint, out);
    return at + 2;
  }

 private:
  static unsigned pointerOf(Byte lead, Byte trail) {
    if (isBetween(trail, 0x40, 0x7E)) return (lead - 0x81U) * 157 + (trail - 0x40U);
    if (isBetween(trail, 0xA1, 0xFE)) return (lead - 0x81U) * 157 + (trail - 0x62U);
    return kNoPointer;
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
    const Byte lead = *at;
    if (isAscii(lead)) return asciiCharacter(at, out);
    if (lead != 0x8E && lead != 0x8F && !isKanji(lead)) return malformed(at, 1, out);
    if (end - at < 2) return malformed(at, 1, out);
    if (isKanji(lead)) return pairFromIndex(kJis0208, pointerOf(lead, at[1]), at, out);
    if (lead == 0x8E && isBetween(at[1], 0xA1, 0xDF)) {
      out = writeUtf8(0xFF61U - 0xA1U + at[1], out);
      return at + 2;
    }
    if (lead == 0x8F && isKanji(at[1])) return nextOfThree(at, end, out);
    return malformedPair(at, out);
  }

 private:
  static bool isKanji(Byte byte) { return isBetween(byte, 0xA1, 0xFE); }

  static unsigned pointerOf(Byte lead, Byte trail) {
    return isKanji(trail) ? (lead - 0xA1U) * 94 + (trail - 0xA1U) : kNoPointer;
  }

  static const Byte* nextOfThree(const Byte* at, const Byte* end, char*& out) {
    if (end - at < 3) return malformed(at, 2, out);
    return pairFromIndex(kJis0212, pointerOf(at[1], at[2]), at + 1, out);
  }
};

// Source    Encoding Standard, 12.3.1 "Shift_JIS decoder"
class ShiftJisDecoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    const Byte lead = *at;
    if (isAscii(lead)) return asciiCharacter(at, out);
    if (isBetween(lead, 0x81, 0x9F) || isBetween(lead, 0xE0, 0xFC)) return pair(at, end, out);
    if (isBetween(lead, 0xA1, 0xDF)) {
      out = writeUtf8(0xFF61U - 0xA1U + lead, out);
      return at + 1;
    }
    if (lead != 0x80) return malformed(at, 1, out);
    out = writeUtf8(0x80, out);
    return at + 1;
  }

 private:
  static unsigned pointerOf(Byte lead, Byte trail) {
    const unsigned row = (lead - (lead < 0xA0 ? 0x81U : 0xC1U)) * 188;
    if (isBetween(trail, 0x40, 0x7E)) return row + (trail - 0x40U);
    return isBetween(trail, 0x80, 0xFC) ? row + (trail - 0x41U) : kNoPointer;
  }

  static const Byte* pair(const Byte* at, const Byte* end, char*& out) {
    if (end - at < 2) return malformed(at, 1, out);
    const unsigned pointer = pointerOf(at[0], at[1]);
    if (!isBetween(pointer, kFirstUserDefined, kLastUserDefined)) {
      return pairFromIndex(kJis0208, pointer, at, out);
    }
    out = writeUtf8(0xE000 + pointer - kFirstUserDefined, out);
    return at + 2;
  }

  // Characters of the user's own, from U+E000 on.
  static constexpr unsigned kFirstUserDefined = 8836;
  static constexpr unsigned kLastUserDefined = 10715;
};

// Source    Encoding Standard, 10.2.1 "gb18030 decoder", which GBK has, too
class Gb18030Decoder : public StatelessDecoder {
 public:
  static const Byte* next(const Byte* at, const Byte* end, char*& out) {
    if (isAscii(*at)) return asciiCharacter(at, out);
    if (*at == 0x80) {
      out = writeUtf8(U'\u20AC', out);
      return at + 1;
    }
    if (*at == 0xFF || end - at < 2) return malformed(at, 1, out);
    if (isDigit(at[1])) return nextOfFour(at, end, out);
    return pairFromIndex(kGb18030, pointerOf(at[0], at[1]), at, out);
  }

 private:
  static bool isDigit(Byte byte) { return isBetween(byte, 0x30, 0x39); }

  static unsigned pointerOf(Byte lead, Byte trail) {
    if (isBetween(trail, 0x40, 0x7E)) return (lead - 0x81U) * 190 + (trail - 0x40U);
    return isBetween(trail, 0x80, 0xFE) ? (lead - 0x81U) * 190 + (trail - 0x41U) : kNoPointer;
  }

  // The end in the middle is one error; a wrong byte leaves all bytes but the first.
  static const Byte* nextOfFour(const Byte* at, const Byte* end, char*& out) {
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
