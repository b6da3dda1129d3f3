// Properties of characters that domains need, from generated tables.
#ifndef PAGESCAN_URL_UNICODE_H
#define PAGESCAN_URL_UNICODE_H

#include <string>
#include <string_view>

namespace pagescan::internal {

// The version of Unicode that the tables hold.
std::string_view unicodeVersion();

// What a character is to UTS #46, 5 "IDNA Mapping Table", without transitional processing.
enum class IdnaStatus : unsigned char { valid, ignored, disallowed, mapped };
IdnaStatus idnaStatusOf(char32_t character);

// Appends what the table maps a character to; characters that it does not map stay.
void appendIdnaMapped(std::u32string& out, char32_t character);

enum class BidiClass : unsigned char {
  other,
  leftToRight,
  rightToLeft,
  arabicLetter,
  arabicNumber,
  europeanNumber,
  europeanSeparator,
  commonSeparator,
  europeanTerminator,
  otherNeutral,
  boundaryNeutral,
  nonspacingMark,
};

enum class JoiningType : unsigned char { other, left, dual, right, transparent };

inline constexpr unsigned char kVirama = 9;  // a combining class

struct CharacterProperties {
  unsigned char combiningClass;
  BidiClass bidiClass;
  JoiningType joiningType;
  bool isMark;  // General_Category Mark
};
CharacterProperties propertiesOf(char32_t character);

// Puts the text into Normalization Form C. Time n log n at worst, in the longest run of marks.
void normalize(std::u32string& text);

}  // namespace pagescan::internal

#endif
