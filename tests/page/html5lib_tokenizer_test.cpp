// The tokenizer against the html5lib suite: start tags, their attributes and decoded values.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "page/tokenizer.h"
#include "support/suite_cases.h"

namespace pagescan::tests {
namespace {

using internal::AllAttributes;
using internal::ContentState;
using nlohmann::json;

using Attributes = std::map<std::string, std::string>;
struct Tag {
  std::string name;
  Attributes attributes;
  bool selfClosing = false;

  bool operator==(const Tag&) const = default;
};
using Tags = std::vector<Tag>;

void PrintTo(const Tag& tag, std::ostream* out) {
  *out << '<' << tag.name;
  for (const auto& [name, value] : tag.attributes) *out << ' ' << name << "=[" << value << ']';
  *out << (tag.selfClosing ? "/>" : ">");
}

class TagRecorder {
 public:
  explicit TagRecorder(std::string_view page) : page_(page) {}

  ContentState startTag(const internal::TagBytes& tag, const AllAttributes& attributes) {
    Tag& own = tags.emplace_back();
    own.name = internal::tokenizedName(tag.nameBytes());
    own.selfClosing = tag.selfClosing;
    for (std::uint32_t i = 0; i < attributes.size(); ++i) {
      const internal::TagAttribute& attribute = attributes.data()[i];
      const std::string name = internal::tokenizedName(
          page_.substr(attribute.nameBegin, attribute.nameEnd - attribute.nameBegin));
      own.attributes[name] = internal::decodedAttribute(
          page_.substr(attribute.valueBegin, attribute.valueEnd - attribute.valueBegin));
    }
    return ContentState::data;
  }
  void endTag(const internal::TagBytes&) {}
  void text(const char*, const char*) {}
  void cdata(const char*, const char*) {}
  void rawText(const char*, const char*) {}
  void comment() {}
  void doctype(const internal::Doctype&) {}
  bool ignoresText() const { return false; }
  bool readsCdata() const { return cdata_; }
  static internal::Encoding encodingFor(const char*, const char*) {
    return internal::Encoding::utf8;
  }

  void readCdata() { cdata_ = true; }
  Tags tags;

 private:
  std::string_view page_;
  bool cdata_ = false;
};

Tags read(const std::string& input, const std::string& state, const std::string& lastStartTag) {
  static const std::map<std::string, ContentState> kStates = {
      {"Data state", ContentState::data},           {"CDATA section state", ContentState::data},
      {"PLAINTEXT state", ContentState::plaintext}, {"RCDATA state", ContentState::rcdata},
      {"RAWTEXT state", ContentState::rawtext},     {"Script data state", ContentState::script},
  };
  const std::string page = state == "CDATA section state" ? "<![CDATA[" + input : input;
  TagRecorder recorder(page);
  if (page.size() != input.size()) recorder.readCdata();
  AllAttributes attributes(page, nullptr);
  internal::Tokenizer<TagRecorder, AllAttributes> tokenizer(page, recorder, attributes);
  tokenizer.run(kStates.at(state), lastStartTag);
  return recorder.tags;
}

// "\u0041" within a string of a case whose texts are escaped twice.
std::string unescaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '"') escaped += '\\';
    escaped += c;
  }
  return json::parse('"' + escaped + '"').get<std::string>();
}

Tags expectedTags(const json& test, bool isDouble) {
  const auto text = [isDouble](const std::string& value) {
    return isDouble ? unescaped(value) : value;
  };
  Tags tags;
  for (const json& token : test.at("output")) {
    if (!token.is_array() || token.at(0) != "StartTag") continue;
    Tag& tag = tags.emplace_back();
    tag.name = text(token.at(1));
    for (const auto& [name, value] : token.at(2).items()) tag.attributes[text(name)] = text(value);
    tag.selfClosing = token.size() > 3 && token.at(3).get<bool>();
  }
  return tags;
}

// A lone surrogate, which no page in UTF-8 can hold.
bool hasLoneSurrogate(const json& test) {
  const std::string input = test.at("input");
  return input.find("\\uD") != std::string::npos || input.find("\\ud") != std::string::npos;
}

std::size_t runFile(const std::string& file) {
  const json cases = suiteCases(PAGESCAN_SHARED_DIR, "html5lib/tokenizer/" + file);
  if (cases.is_null()) return 0;
  std::size_t count = 0;
  for (const json& test : cases.contains("tests") ? cases["tests"] : cases["xmlViolationTests"]) {
    const bool isDouble = test.value("doubleEscaped", false);
    if (isDouble && hasLoneSurrogate(test)) continue;
    std::string input = test.at("input");
    if (isDouble) input = unescaped(input);
    const json states = test.value("initialStates", json::array({"Data state"}));
    for (const std::string state : states) {
      const std::string last = test.value("lastStartTag", std::string());
      EXPECT_EQ(read(input, state, last), expectedTags(test, isDouble))
          << file << ": " << test.at("description") << ' ' << state << ": " << input;
    }
    ++count;
  }
  return count;
}

struct Suite {
  const char* file;
  std::size_t fewest;
};
constexpr Suite kSuites[] = {
    {"contentModelFlags.test", 14},
    {"domjs.test", 43},
    {"entities.test", 80},
    {"escapeFlag.test", 5},
    {"namedEntities.test", 4210},
    {"numericEntities.test", 336},
    {"pendingSpecChanges.test", 1},
    {"test1.test", 60},
    {"test2.test", 40},
    {"test3.test", 1500},
    {"test4.test", 80},
    {"unicodeChars.test", 300},
    {"unicodeCharsProblematic.test", 1},
};

bool hasSuite() {
  return std::filesystem::exists(PAGESCAN_SHARED_DIR "/suites/html5lib/tokenizer");
}

TEST(Html5libTokenizer, FindsTheStartTagsOfEachCase) {
  if (!hasSuite()) GTEST_SKIP() << "the suites are not beside the project";
  for (const Suite& suite : kSuites) {
    EXPECT_GE(runFile(suite.file), suite.fewest) << suite.file;
  }
}

// A case of text, written as the value of an attribute: there, a name without ";" stays as it is
// before "=", a letter or a digit.
TEST(Html5libTokenizer, DecodesReferencesInAttributes) {
  if (!hasSuite()) GTEST_SKIP() << "the suites are not beside the project";
  std::size_t count = 0;
  for (const char* file : {"namedEntities.test", "numericEntities.test"}) {
    const json cases = suiteCases(PAGESCAN_SHARED_DIR, std::string("html5lib/tokenizer/") + file);
    ASSERT_FALSE(cases.is_null()) << file;
    for (const json& test : cases["tests"]) {
      const std::string input = test.at("input");
      std::string expected;
      for (const json& token : test.at("output")) expected += token.at(1).get<std::string>();
      const Tags tags = read("<a href=\"" + input + "\">", "Data state", "");
      ASSERT_EQ(tags.size(), 1U) << input;
      EXPECT_EQ(tags[0].attributes.at("href"), expected) << file << ": " << input;
      ++count;
    }
  }
  EXPECT_GE(count, 4500U);
}

}  // namespace
}  // namespace pagescan::tests
