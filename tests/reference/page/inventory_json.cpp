// The URLs in scripts that hold JSON.
#include <utility>

#include "reference/page/inventory_reader.h"
#include "reference/page/rules.h"

namespace reference::page {

void Reader::readJson(const Node& script, Found found, const Part& part) {
  const auto json = parseJson(textOf(script));
  if (!json) return;
  found.slot = "json";
  const std::string type = scriptTypeOf(script);
  if (type == "importmap") {
    readImportMap(*json, found, part);
  } else if (type == "speculationrules") {
    readSpeculationRules(*json, false, found, part);
  } else {
    readLinkedData(*json, false, found, part);
  }
}

void Reader::addJson(const JsonString& string, std::string kind, Found found, const Part& part) {
  if (stripped(toUtf8(string.value)).empty()) return;
  found.begin = string.begin;
  found.end = string.end;
  found.kind = std::move(kind);
  found.value = toUtf8(string.value);
  found.url = resolved(found.value, part.document->base(), "UTF-8");
  found_.push_back(found);
}

void Reader::readLinkedData(const JsonValue& value, bool isIdentifier, const Found& found,
                            const Part& part) {
  if (value.kind == JsonValue::Kind::string) {
    const std::string text = toUtf8(value.string.value);
    if (startsWithIgnoringCase(text, "http://") || startsWithIgnoringCase(text, "https://")) {
      addJson(value.string, isIdentifier ? "identifier" : "metadata", found, part);
    }
  }
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    const bool underKey = value.kind == JsonValue::Kind::object &&
                          isOneOf(toUtf8(value.keys[i].value), {"@context", "@type", "@vocab"});
    readLinkedData(value.items[i], isIdentifier || underKey, found, part);
  }
}

void Reader::readImportMap(const JsonValue& map, const Found& found, const Part& part) {
  const auto addValues = [&](const JsonValue& object) {
    if (object.kind != JsonValue::Kind::object) return;
    for (const JsonValue& item : object.items) {
      if (item.kind == JsonValue::Kind::string) addJson(item.string, "script", found, part);
    }
  };
  if (map.kind != JsonValue::Kind::object) return;
  for (std::size_t i = 0; i < map.items.size(); ++i) {
    const std::string key = toUtf8(map.keys[i].value);
    if (key == "imports") addValues(map.items[i]);
    if (key != "scopes" || map.items[i].kind != JsonValue::Kind::object) continue;
    const JsonValue& scopes = map.items[i];
    for (std::size_t k = 0; k < scopes.items.size(); ++k) {
      addJson(scopes.keys[k], "script", found, part);
      addValues(scopes.items[k]);
    }
  }
}

void Reader::readSpeculationRules(const JsonValue& value, bool underUrls, const Found& found,
                                  const Part& part) {
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    const JsonValue& item = value.items[i];
    const bool isArray = value.kind == JsonValue::Kind::array;
    if (isArray && underUrls && item.kind == JsonValue::Kind::string) {
      addJson(item.string, "script", found, part);
    }
    readSpeculationRules(item, !isArray && toUtf8(value.keys[i].value) == "urls", found, part);
  }
}

}  // namespace reference::page
