// The parser beside its slow twin: the same URL, or failure, for every text.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/url.h"
#include "reference/url/percent.h"
#include "reference/url/url.h"
#include "support/generated_texts.h"
#include "url/parser.h"
#include "url/resolver.h"

namespace pagescan::tests {
namespace {

using std::string_view;

// A base of both.
struct Bases {
  std::string text;
  Base base;
  std::optional<reference::UrlRecord> record;

  explicit Bases(string_view url) : text(url) {
    if (url.empty()) return;
    base = Base::parse(url).value_or(Base());
    record = reference::parseUrl(url, nullptr, Encoding::utf8);
  }
};

std::optional<std::string> byLibrary(string_view url, const Bases& bases, Encoding encoding) {
  std::string out = "left over";
  if (!resolveInto(out, url, bases.base, encoding)) return std::nullopt;
  return out;
}

std::optional<std::string> byTwin(string_view url, const Bases& bases, Encoding encoding) {
  const auto record = reference::parseUrl(url, bases.record ? &*bases.record : nullptr, encoding);
  if (!record) return std::nullopt;
  return reference::serialize(*record);
}

// The parts of a parsed URL as the twin has them.
void expectSameComponents(const Url& url, const reference::UrlRecord& record) {
  using reference::encodeUtf8;
  const auto textOf = [](const std::optional<reference::CodePoints>& part) {
    return part ? std::optional(encodeUtf8(*part)) : std::nullopt;
  };
  EXPECT_EQ(url.scheme(), encodeUtf8(record.scheme));
  EXPECT_EQ(url.username(), encodeUtf8(record.username));
  EXPECT_EQ(url.password(), encodeUtf8(record.password));
  EXPECT_EQ(url.host(), textOf(record.host));
  EXPECT_EQ(url.port(), record.port ? std::optional(std::to_string(*record.port)) : std::nullopt);
  EXPECT_EQ(url.query(), textOf(record.query));
  EXPECT_EQ(url.fragment(), textOf(record.fragment));
  EXPECT_EQ(url.hasOpaquePath(), record.hasOpaquePath);
  std::string path = encodeUtf8(record.opaquePath);
  for (const reference::CodePoints& segment : record.path) path += "/" + encodeUtf8(segment);
  EXPECT_EQ(url.path(), path);
}

void expectSame(string_view url, const Bases& bases, Encoding encoding = Encoding::utf8) {
  const std::optional<std::string> wanted = byTwin(url, bases, encoding);
  ASSERT_EQ(byLibrary(url, bases, encoding), wanted)
      << testing::PrintToString(url) << " against " << bases.text;
}

void expectSameWithComponents(string_view url, const Bases& bases) {
  expectSame(url, bases);
  const auto record =
      reference::parseUrl(url, bases.record ? &*bases.record : nullptr, Encoding::utf8);
  const std::optional<Url> parsed =
      bases.base.url() ? Url::parse(url, *bases.base.url()) : Url::parse(url);
  ASSERT_EQ(parsed.has_value(), record.has_value());
  if (!parsed) return;
  const testing::ScopedTrace trace("", 0, parsed->href());
  expectSameComponents(*parsed, *record);
}

std::vector<Bases> everyKindOfBase() {
  std::vector<Bases> bases;
  for (const string_view url : {"", "http://h/a/b/c?q#f", "https://u:p@example.com:8080/x",
                                "file:///C:/d/e", "file://host/p", "file:///", "s://h/a/b", "s://h",
                                "s:/.//p/q", "s:/a/b", "mailto:x@y?z#f", "data:,", "ws://h/?a'b"}) {
    bases.emplace_back(url);
  }
  return bases;
}

const std::vector<string_view> kPieces = {"a", "C", ":",   "/", "\\",       "?",   "#",
                                          "@", ".", "%2e", " ", "\t",       "|",   "[",
                                          "]", "0", "\'",  "^", "\xC3\xA9", "\x80"};
const std::vector<string_view> kLongPieces = {"http:",
                                              "HTTPS://",
                                              "file:",
                                              "ws:",
                                              "s:",
                                              "//",
                                              "/",
                                              "..",
                                              ".",
                                              "%2E",
                                              "%2e%2E",
                                              "C:",
                                              "c|",
                                              "example.com",
                                              "h",
                                              "localhost",
                                              "%41",
                                              "%",
                                              "1.2.3.4",
                                              "0x7f.1",
                                              "256",
                                              "[::1]",
                                              "[1:2::3]",
                                              "[::1.2.3.4]",
                                              ":80",
                                              ":443",
                                              ":8080",
                                              ":65536",
                                              "user:pass@",
                                              "@",
                                              "?q=1",
                                              "?",
                                              "#f",
                                              "#",
                                              "&",
                                              "'",
                                              "\"",
                                              "<>",
                                              "{}",
                                              "`",
                                              "^",
                                              "|",
                                              "\\",
                                              " ",
                                              "\t",
                                              "\n",
                                              "\x00\x1F",
                                              "\x7F",
                                              "xn--",
                                              "xn--zca",
                                              "\xC3\x9F",
                                              "\xD7\x90",
                                              "\xE2\x80\x8C",
                                              "\xE2\x80\x8D",
                                              "\xCC\x88",
                                              "\xE3\x80\x82",
                                              "\xC2\xAD",
                                              "\xEF\xBC\xA1",
                                              "\xF0\x9F\x98\x80",
                                              "\xED\xA0\x80",
                                              "\xFF",
                                              "\xE2\x82",
                                              "\xC2\xA5"};

TEST(UrlTwin, AgreesOnEveryShortText) {
  const std::vector<Bases> bases = everyKindOfBase();
  forEachText(kPieces, inShortOrDeepRun(3, 4), [&bases](const std::string& text) {
    for (const Bases& base : bases) expectSameWithComponents(text, base);
  });
}

TEST(UrlTwin, AgreesAfterEveryKindOfScheme) {
  const Bases none("");
  for (const std::string scheme : {"http://", "file:", "file://", "s:", "s://", "s:/", "http:"}) {
    forEachText(kPieces, inShortOrDeepRun(3, 4),
                [&](const std::string& text) { expectSameWithComponents(scheme + text, none); });
  }
}

TEST(UrlTwin, AgreesOnRandomTexts) {
  RandomTexts random;
  const std::vector<Bases> bases = everyKindOfBase();
  constexpr Encoding kEncodings[] = {Encoding::utf8,     Encoding::windows1252, Encoding::iso2022Jp,
                                     Encoding::shiftJis, Encoding::gb18030,     Encoding::utf16Le};
  for (std::size_t i = randomRuns(30000, 3000000); i > 0; --i) {
    const std::string text = random.text(kLongPieces, 8);
    const Bases& base = bases[random.number(bases.size())];
    expectSameWithComponents(text, base);
    expectSame(text, base, kEncodings[random.number(std::size(kEncodings))]);
  }
}

// Against bases that are random themselves.
TEST(UrlTwin, AgreesOnRandomBases) {
  RandomTexts random;
  constexpr string_view kSchemes[] = {"http://h/", "https://", "file:", "file:///", "s:", "s://h"};
  for (std::size_t i = randomRuns(10000, 1000000); i > 0; --i) {
    const std::string_view scheme = kSchemes[random.number(std::size(kSchemes))];
    const Bases base(std::string(scheme) + random.text(kLongPieces, 6));
    ASSERT_EQ(base.base.url() != nullptr, base.record.has_value()) << base.text;
    if (!base.record) continue;
    for (int link = 0; link < 3; ++link)
      expectSameWithComponents(random.text(kLongPieces, 5), base);
  }
}

TEST(UrlTwin, AgreesOnHosts) {
  RandomTexts random;
  const Bases none("");
  const std::vector<string_view> pieces = {
      "0", "1", "255", "256", "0x",   "0X", "f",   "08",         ".",          "..", "[",
      "]", ":", "::",  "1:",  "ffff", "g",  "%30", "4294967295", "4294967296", "a",  "-"};
  for (std::size_t i = randomRuns(30000, 3000000); i > 0; --i) {
    const std::string host = random.text(pieces, 10);
    expectSame("http://" + host + "/", none);
    expectSame("http://[" + host + "]/", none);
    expectSame("s://" + host + "/", none);
  }
}

}  // namespace
}  // namespace pagescan::tests
