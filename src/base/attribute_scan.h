// The one reading of a tag's attributes: names, values quoted or bare, and both at once. Works on
// [begin, end), copies nothing, never throws; cost is linear in the bytes passed.
#ifndef PAGESCAN_BASE_ATTRIBUTE_SCAN_H
#define PAGESCAN_BASE_ATTRIBUTE_SCAN_H

#include <string_view>

namespace pagescan::internal {

struct ScannedName {
  enum Kind {
    nothing,      // the text ended
    tagEnd,       // ">" came first; `next` is after it
    strayEquals,  // "=" without a name came first; `next` is at it
    bareName,     // a name without "="; `next` is at its end
    lastName,     // the same, and the tag ends after it
    cutName,      // the same, and nothing but unexpected bytes follows up to the end of the text
    equals,       // a name, and `next` is at its "="
  };

  Kind kind;
  const char* begin;
  const char* end;
  const char* next;
  const char* readTo;  // no later byte was looked at, except for one that stopped the reading

  std::string_view name() const { return {begin, static_cast<std::size_t>(end - begin)}; }
};

// Reads the next name. Letters, digits and "-" make names; white space and double quotes separate
// them; any other byte is unexpected and skipped up to the next white space or ">". A name that was
// begun before unexpected bytes goes on after them, and takes them in: "a/b c=d" is one name, "a/b
// c".
ScannedName scanName(const char* begin, const char* end);

struct ScannedValue {
  enum Kind {
    missing,  // nothing but white space follows; `begin` is null
    cut,      // the text ended inside the value
    whole,    // `end` is the closing quote or the byte that ended a bare value
  };

  Kind kind;
  const char* begin;
  const char* end;

  std::string_view value() const { return {begin, static_cast<std::size_t>(end - begin)}; }
};

// Reads the value that follows a "=", from the byte after it on. There are no escapes; in quotes
// all other bytes are content.
ScannedValue scanValue(const char* begin, const char* end);

// One attribute of a tag, or the end of its reading.
struct ScannedAttribute {
  bool isLast;             // nothing is read after this one
  const char* next;        // where to go on
  const char* readTo;      // how far the text was looked at
  std::string_view name;   // empty when there is no attribute, or none that can be read whole
  std::string_view value;  // for an attribute without "=" a view of nothing, its data() null
};

// Reads the next attribute: a tag's attributes are those of one call after the other.
//
//    src = "a.gif" alt>
//   ^               ^  ^
//   begin           |  next of the second call, which is the last one
//                   next of the first: a closing quote, or the byte that ends a bare value or a
//                   name
ScannedAttribute scanAttribute(const char* begin, const char* end);

}  // namespace pagescan::internal

#endif
