// The URLs in attribute values that hold more than one, or more than a URL.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_LISTS_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_LISTS_H

#include <optional>
#include <vector>

#include "reference/page/text.h"

namespace reference::page {

// HTML Standard, 4.8.4.3.10 "Parsing a srcset attribute": the URLs of the candidates.
std::vector<Text> srcsetUrls(const Text& value);

// HTML Standard, 4.2.5.3, "shared declarative refresh steps": the URL, if one is spelt.
std::optional<Text> refreshUrl(const Text& value);

// Between ASCII white space; between commas, without white space around.
std::vector<Text> wordsOf(const Text& value);
std::vector<Text> commaItemsOf(const Text& value);

struct JsonString {
  Text value;
  std::uint32_t begin = 0;  // between the quotes
  std::uint32_t end = 0;
};

struct JsonValue {
  enum class Kind { other, string, array, object };
  Kind kind = Kind::other;
  JsonString string;
  std::vector<JsonString> keys;  // of an object, beside `items`
  std::vector<JsonValue> items;  // of an array or object
};

// RFC 8259. None for a text that is no JSON.
std::optional<JsonValue> parseJson(const Text& text);

}  // namespace reference::page

#endif
