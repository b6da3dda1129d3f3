// The URLs of the JSON that script elements hold.
//
// Reads decoded UTF-8 of at most 2^32-1 bytes. Spans are byte offsets in that text, half-open, and
// lie between the quotes of a string. Pure functions; any thread may call.
#ifndef PAGESCAN_PAGE_JSON_STRINGS_H
#define PAGESCAN_PAGE_JSON_STRINGS_H

#include <string_view>
#include <vector>

#include "page/decoded_text.h"
#include "pagescan/page.h"

namespace pagescan::internal {

enum class JsonForm {
  linkedData,        // application/ld+json: values that begin with http:// or https://
  importMap,         // importmap: the values of "imports" and of the maps in "scopes", its keys
  speculationRules,  // speculationrules: the strings of an array under a key "urls"
};

struct JsonReference {
  Span span = {};
  Kind kind = Kind::metadata;  // metadata, identifier or script
};

// Appends the strings of `json` that are URLs by its form, in the order of the text. Empty strings
// are none. Of several equal keys each counts. A text that is not JSON appends nothing.
// Fails    std::bad_alloc alone
// Cost     linear in the text, however deep it nests; memory a byte for each open bracket
// Source   RFC 8259
void readJsonStrings(std::string_view json, JsonForm form, std::vector<JsonReference>& references);

// What a string spells: its escapes decoded, a lone surrogate as U+FFFD. Offsets count from the
// start of raw.
// raw      what stands between the quotes of a string of valid JSON
// Cost     linear
void decodeJsonString(std::string_view raw, DecodedText& result);

}  // namespace pagescan::internal

#endif
