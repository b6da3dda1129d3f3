// The URLs of JSON.
#include "page/json_strings.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "reference/page/lists.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using internal::DecodedText;
using internal::decodeJsonString;
using internal::JsonForm;
using internal::JsonReference;
using internal::readJsonStrings;

// "kind raw" of each reference, between blanks.
std::string found(std::string_view json, JsonForm form) {
  std::vector<JsonReference> references;
  readJsonStrings(json, form, references);
  std::string result;
  for (const JsonReference& reference : references) {
    if (!result.empty()) result += ' ';
    result += std::string(nameOf(reference.kind)) + ' ';
    result += json.substr(reference.span.begin, reference.span.end - reference.span.begin);
  }
  return result;
}

struct Row {
  Here here;
  std::string_view json;
  std::string_view found;
};

void check(const Row* begin, const Row* end, JsonForm form) {
  const std::vector<Row> rows(begin, end);
  forEachPlacement(rows, [form](const Row& row, Placement& placement) {
    EXPECT_EQ(found(placement.bytes(row.json), form), row.found) << row.json;
  });
}

constexpr Row kLinkedData[] = {
    {HERE, R"({"url":"http://a","x":["HTTPS://b",{"c":"ftp://d","http://key":"http://e"}],"y":""})",
     "metadata http://a metadata HTTPS://b metadata http://e"},
    {HERE, R"({"@context":"http://s","@type":["http://t",{"a":[["http://u"]]}],"z":"http://v"})",
     "identifier http://s identifier http://t identifier http://u metadata http://v"},
    {HERE, R"([{"@vocab":{"a":"http://y"}},"http://z",null,1e3,true,false,-0.5E-7])",
     "identifier http://y metadata http://z"},
    {HERE, R"({"u":"h\u0074tp:\/\/h\/a","\u0040type":"http:\/\/t"})",
     R"(metadata h\u0074tp:\/\/h\/a identifier http:\/\/t)"},
    {HERE, R"("http://a")", "metadata http://a"},
    {HERE, R"(["http:/a","http//b","https:","xhttp://c","http://"])", "metadata http://"},
    {HERE, R"({"a":"http://1","a":"http://2"})", "metadata http://1 metadata http://2"},
};

constexpr Row kImportMaps[] = {
    {HERE, R"({})", ""},
    {HERE, R"({"imports":{},"scopes":{"/s/":{}},"x":[]})", "script /s/"},
    {HERE, R"({"imports":{"a":"./1.js","b":"","c":null,"d":{"e":"no"},"f":["no"]}})",
     "script ./1.js"},
    {HERE, R"({"scopes":{"/s/":{"f":"2.js"},"":{"g":"3.js"}},"integrity":{"x":"sha"}})",
     "script /s/ script 2.js script 3.js"},
    {HERE, R"({"x":{"imports":{"a":"no"}},"imports":["no"],"scopes":"no"})", ""},
    {HERE, R"([{"imports":{"a":"no"}}])", ""},
    {HERE, R"({"im\u0070orts":{"a":" "}})", "script  "},
};

constexpr Row kSpeculationRules[] = {
    {HERE, R"({"prefetch":[{"source":"list","urls":["1","2",{"urls":["3"]},["no"]]}],"urls":"no"})",
     "script 1 script 2 script 3"},
    {HERE, R"({"x":{"urls":["5",6,""]},"urls":{"a":"no"}})", "script 5"},
};

constexpr Row kNoJson[] = {
    {HERE, "", ""},
    {HERE, " ", ""},
    {HERE, R"({"a":"http://x",})", ""},
    {HERE, R"(["http://x",])", ""},
    {HERE, R"(["http://x"] x)", ""},
    {HERE, R"(["http://x")", ""},
    {HERE, R"(["http://x"})", ""},
    {HERE, R"({"a" "http://x"})", ""},
    {HERE, R"({"a","http://x"})", ""},
    {HERE, R"({a:"http://x"})", ""},
    {HERE, R"(["http://x","\x"])", ""},
    {HERE, R"(["http://x","\u12g4"])", ""},
    {HERE, R"(["http://x","\u12)", ""},
    {HERE, R"(["http://x","\)", ""},
    {HERE, "[\"http://x\n\"]", ""},
    {HERE, {"[\"http://x\0\"]", 13}, ""},
    {HERE, R"(["http://x",01])", ""},
    {HERE, R"(["http://x",1.])", ""},
    {HERE, R"(["http://x",.1])", ""},
    {HERE, R"(["http://x",+1])", ""},
    {HERE, R"(["http://x",1e])", ""},
    {HERE, R"(["http://x",-])", ""},
    {HERE, R"(["http://x",nul])", ""},
    {HERE, R"(["http://x",'a'])", ""},
    {HERE, "[\"http://x\",\f1]", ""},
    {HERE, "\xEF\xBB\xBF[\"http://x\"]", ""},
    {HERE, "[\"http://x\" // y\n]", ""},
};

TEST(JsonStrings, AreUrlsByTheirForm) {
  check(std::begin(kLinkedData), std::end(kLinkedData), JsonForm::linkedData);
  check(std::begin(kImportMaps), std::end(kImportMaps), JsonForm::importMap);
  check(std::begin(kSpeculationRules), std::end(kSpeculationRules), JsonForm::speculationRules);
}

TEST(JsonStrings, AreNoneWhereTheTextIsNotJson) {
  check(std::begin(kNoJson), std::end(kNoJson), JsonForm::linkedData);
}

TEST(JsonStrings, KeepWhatWasFoundBefore) {
  std::vector<JsonReference> references(1);
  readJsonStrings("[\"http://x\"", JsonForm::linkedData, references);
  EXPECT_EQ(references.size(), 1U);
}

TEST(JsonStrings, MayNestDeeply) {
  const std::string open(1000000, '[');
  EXPECT_EQ(found(open + "\"http://x\"" + std::string(1000000, ']'), JsonForm::linkedData),
            "metadata http://x");
  EXPECT_EQ(found(open + "\"http://x\"", JsonForm::linkedData), "");
}

struct StringRow {
  Here here;
  std::string_view raw;
  std::string_view value;
};

constexpr StringRow kStrings[] = {
    {HERE, "", ""},
    {HERE, "abc", "abc"},
    {HERE, R"(\"\\\/\b\f\n\r\t)", "\"\\/\b\f\n\r\t"},
    {HERE, R"(\u0041\u00e9\u20AC)", "A\xC3\xA9\xE2\x82\xAC"},
    {HERE, R"(\uD83D\uDE00.)", "\xF0\x9F\x98\x80."},
    {HERE, R"(\uD83D.)", "\xEF\xBF\xBD."},
    {HERE, R"(\uD83D\u0041)",
     "\xEF\xBF\xBD"
     "A"},
    {HERE, R"(\uDE00\uD83D)", "\xEF\xBF\xBD\xEF\xBF\xBD"},
};

TEST(JsonStrings, AreDecoded) {
  forEachPlacement(kStrings, [](const StringRow& row, Placement& placement) {
    DecodedText value;
    decodeJsonString(placement.bytes(row.raw), value);
    EXPECT_EQ(value.text(), row.value);
    EXPECT_EQ(value.rawEnd(value.text().size()), row.raw.size());
  });
}

// All strings of the twin's tree that are values and begin with "http://".
std::string expectedOf(const std::string& json) {
  using reference::page::JsonValue;
  const auto value = reference::page::parseJson(reference::page::fromUtf8(json));
  std::string result;
  const std::function<void(const JsonValue&)> visit = [&](const JsonValue& one) {
    if (one.kind == JsonValue::Kind::string && toUtf8(one.string.value).find("http://") == 0) {
      if (!result.empty()) result += ' ';
      result += "metadata " + json.substr(one.string.begin, one.string.end - one.string.begin);
    }
    for (const JsonValue& item : one.items) visit(item);
  };
  if (value) visit(*value);
  return result;
}

TEST(JsonStrings, AreThoseOfTheTwinsTree) {
  const std::vector<std::string> pieces = {"{",
                                           "}",
                                           "[",
                                           "]",
                                           ",",
                                           ":",
                                           "\"a\"",
                                           "\"http://x\"",
                                           "\"h\\u0074tp://\"",
                                           "1",
                                           "-0",
                                           ".5",
                                           "e1",
                                           "null",
                                           "true",
                                           " ",
                                           "\"",
                                           "\\",
                                           "\"\\n\"",
                                           "[\"http://y\",",
                                           "{\"k\":",
                                           "\x01",
                                           "0"};
  std::mt19937 random(7);
  for (int count = 0; count < 100000; ++count) {
    std::string json = count % 2 == 0 ? "[\"http://z\"," : "";
    for (std::size_t size = 1 + random() % 7; size > 0; --size) {
      json += pieces[random() % pieces.size()];
    }
    if (count % 2 == 0) json += ']';
    ASSERT_EQ(found(json, JsonForm::linkedData), expectedOf(json)) << json;
  }
}

}  // namespace
}  // namespace pagescan::tests
