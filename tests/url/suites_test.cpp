// The URL suites of web-platform-tests, where the folder with them is at hand.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>

#include "pagescan/url.h"

namespace pagescan::tests {
namespace {

using nlohmann::json;

// Whether the text spells "\\uXXXX" of a surrogate at `at`: a high one, or a low one.
bool isSurrogateAt(const std::string& text, std::size_t at, std::string_view thirdDigits) {
  return at + 6 <= text.size() && text[at] == '\\' && text[at + 1] == 'u' &&
         (text[at + 2] == 'd' || text[at + 2] == 'D') &&
         thirdDigits.find(text[at + 3]) != std::string_view::npos;
}

// A surrogate alone is no text; where a script has one, a URL has U+FFFD.
std::string withoutLoneSurrogates(std::string text) {
  for (std::size_t at = text.find("\\"); at != std::string::npos; at = text.find("\\", at)) {
    const bool isHigh = isSurrogateAt(text, at, "89abAB");
    if (isHigh && isSurrogateAt(text, at + 6, "cdefCDEF")) {
      at += 12;
    } else if (isHigh || isSurrogateAt(text, at, "cdefCDEF")) {
      text.replace(at, 6, "\\ufffd");
      at += 6;
    } else {
      at += 2;
    }
  }
  return text;
}

// The cases of a suite: its objects; strings between them are comments.
std::vector<json> casesOf(const std::string& name) {
  std::ifstream file(std::string(PAGESCAN_SHARED_DIR) + "/suites/wpt-url/" + name);
  std::vector<json> cases;
  if (!file) return cases;
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  for (const json& item : json::parse(withoutLoneSurrogates(text))) {
    if (item.is_object()) cases.push_back(item);
  }
  return cases;
}

std::string textOf(const json& value) {
  return value.is_null() ? std::string() : value.get<std::string>();
}

std::optional<std::string> optionalTextOf(const json& value) {
  if (value.is_null()) return std::nullopt;
  return value.get<std::string>();
}

// A component with its delimiter, as the suite spells it: nothing where it is empty, too.
std::string delimited(char delimiter, std::optional<std::string_view> part) {
  return part && !part->empty() ? delimiter + std::string(*part) : std::string();
}

void expectComponents(const json& row, const Url& url) {
  EXPECT_EQ(std::string(url.scheme()) + ":", row["protocol"]);
  EXPECT_EQ(url.username(), row["username"]);
  EXPECT_EQ(url.password(), row["password"]);
  EXPECT_EQ(url.host().value_or(""), row["hostname"]);
  EXPECT_EQ(url.port().value_or(""), row["port"]);
  EXPECT_EQ(url.path(), row["pathname"]);
  EXPECT_EQ(delimited('?', url.query()), row["search"]);
  EXPECT_EQ(delimited('#', url.fragment()), row["hash"]);
}

TEST(UrlSuites, UrlTestDataGivesHrefAndComponents) {
  const std::vector<json> cases = casesOf("urltestdata.json");
  if (cases.empty()) GTEST_SKIP() << "no suites";
  EXPECT_GE(cases.size(), 891U);
  for (const json& row : cases) {
    const testing::ScopedTrace trace("", 0, row.dump());
    const std::optional<std::string> expected =
        row.contains("href") ? optionalTextOf(row["href"]) : std::nullopt;
    EXPECT_EQ(resolve(textOf(row["input"]), textOf(row["base"])), expected);
    if (!expected) continue;
    const std::optional<Url> base = Url::parse(textOf(row["base"]));
    const std::optional<Url> url =
        base ? Url::parse(textOf(row["input"]), *base) : Url::parse(textOf(row["input"]));
    ASSERT_TRUE(url);
    expectComponents(row, *url);
    EXPECT_EQ(resolve(*expected, ""), expected) << "parsed again";
  }
}

// A domain in a URL; what in it would end the domain is percent-encoded.
std::optional<std::string> hostOf(const std::string& domain) {
  std::string url = "https://";
  for (const char c : domain) {
    static constexpr std::string_view kEnds = "/?#\\@:[]%\t\n\r";
    if (kEnds.find(c) == std::string_view::npos) {
      url += c;
    } else {
      constexpr char kHex[] = "0123456789ABCDEF";
      url += {'%', kHex[c >> 4], kHex[c & 15]};
    }
  }
  const std::optional<Url> parsed = Url::parse(url + "/x");
  if (!parsed) return std::nullopt;
  return std::string(*parsed->host());
}

void expectHosts(const std::string& name, std::size_t count) {
  const std::vector<json> cases = casesOf(name);
  if (cases.empty()) GTEST_SKIP() << "no suites";
  EXPECT_GE(cases.size(), count);
  for (const json& row : cases) {
    if (!row["input"].get<std::string>().empty()) {
      EXPECT_EQ(hostOf(row["input"]), optionalTextOf(row["output"])) << row.dump();
    }
  }
}

TEST(UrlSuites, ToAsciiGivesHosts) {
  expectHosts("toascii.json", 87);
}

TEST(UrlSuites, IdnaTestV2GivesHosts) {
  expectHosts("IdnaTestV2.json", 2671);
}

TEST(UrlSuites, IdnaTestV2RemovedGivesHosts) {
  expectHosts("IdnaTestV2-removed.json", 20);
}

TEST(UrlSuites, PercentEncodingFollowsTheEncodingOfThePage) {
  const std::vector<json> cases = casesOf("percent-encoding.json");
  if (cases.empty()) GTEST_SKIP() << "no suites";
  EXPECT_GE(cases.size(), 7U);
  for (const json& row : cases) {
    for (const auto& [label, expected] : row["output"].items()) {
      const std::string input =
          "http://h/?" + row["input"].get<std::string>() + "#" + row["input"].get<std::string>();
      const std::optional<std::string> url = resolve(input, "", label);
      ASSERT_TRUE(url);
      EXPECT_EQ(url->substr(0, url->find('#')), "http://h/?" + expected.get<std::string>())
          << label;
      EXPECT_EQ(url->substr(url->find('#') + 1), row["output"]["utf-8"]) << label;
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
