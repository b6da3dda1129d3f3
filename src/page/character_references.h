// Character references of HTML: what "&amp;", "&#38;" or "&notin" stand for.
//
// Pure functions over [at, end); nothing outside is read, nothing allocates, any thread may call.
#ifndef PAGESCAN_PAGE_CHARACTER_REFERENCES_H
#define PAGESCAN_PAGE_CHARACTER_REFERENCES_H

#include <cstddef>
#include <string_view>

namespace pagescan::internal {

// Where a reference stands: in an attribute value a name without ";" is none before "=", a letter
// or a digit.
enum class ReferenceContext { text, attribute };

struct CharacterReference {
  std::size_t length = 0;  // its bytes, "&" included; 0: none begins here, "&" is an ampersand
  char32_t first = 0;
  char32_t second = 0;  // 0 for none: few names stand for two characters
};

// The reference that begins at `at`.
// at       points at a "&"
// Cost     linear in the reference's digits, else constant
// Source   HTML Standard, 13.2.5.72 "Character reference state" to 13.2.5.80
CharacterReference readCharacterReference(const char* at, const char* end,
                                          ReferenceContext context);

// What tree construction distinguishes in the text of an element.
enum class TextClass {
  whiteSpace,  // tab, LF, FF, CR, blank, as they are or as a reference
  nul,         // a NUL byte; a reference never is one
  other,
};

struct ClassifiedText {
  TextClass kind;
  std::size_t length;
};

// The class of the first character of a text, and the bytes of the run of characters of that class
// that it begins: of white space and NUL the whole run; of others a run that may stop early, but
// holds at least one byte.
// text     not empty; of an encoding in which "&" and the bytes below it stand for themselves
// Cost     linear in the run
ClassifiedText classifyText(std::string_view text);

// Whether the text, references decoded, is white space alone; true for an empty one.
bool isWhiteSpaceText(std::string_view text);

}  // namespace pagescan::internal

#endif
