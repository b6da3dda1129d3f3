// The fast path beside the parser: whatever it decides, the parser gives the same.
#include "url/plain_links.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/url.h"
#include "support/generated_texts.h"
#include "url/parser.h"

namespace pagescan::tests {
namespace {

using std::string_view;

constexpr Encoding kEncodings[] = {Encoding::utf8, Encoding::windows1252, Encoding::iso2022Jp,
                                   Encoding::gb18030};

std::vector<Base> bases() {
  std::vector<Base> result(1);
  for (const string_view url :
       {"http://h/a/b/c.html?q=1#f", "https://www.example.com", "https://u:p@h:8080/x/",
        "ftp://h/a", "file:///C:/d/e", "ws://h/", "s://h/a/b", "s:/.//p/q", "mailto:x@y?z#f"}) {
    result.push_back(Base::parse(url).value());
  }
  return result;
}

// Whether the fast path decides; the parser must then agree. The text stands in a block of its
// exact size.
bool decides(string_view url, const Base& base) {
  const auto block = std::make_unique<char[]>(url.size());
  std::copy(url.begin(), url.end(), block.get());
  const string_view exact(block.get(), url.size());
  std::string out = "left over";
  const bool isPlain = PlainLinks(base).resolve(out, exact);
  std::string written = "left over";
  const bool isPlainAsWritten = PlainLinks(base).resolveWritten(written, exact);
  EXPECT_EQ(isPlainAsWritten, isPlain && url.find('&') == string_view::npos);
  EXPECT_EQ(written, isPlainAsWritten ? out : "left over");
  if (!isPlain) return false;
  for (const Encoding encoding : kEncodings) {
    std::string wanted;
    UrlOffsets at;
    const UrlView view{base.url() ? string_view(base.url()->href()) : string_view(),
                       base.url() ? base.url()->offsets() : at};
    UrlOffsets offsets;
    EXPECT_TRUE(parseUrl(wanted, offsets, exact, base.url() ? &view : nullptr, encoding))
        << testing::PrintToString(url);
    EXPECT_EQ(out, wanted) << testing::PrintToString(url);
    if (out != wanted) break;
  }
  return true;
}

const std::vector<string_view> kPieces = {
    "a", "C", ":", "/",     "\\", "?", "#", "@",  ".",  "%2e", " ",  "\t",       "|",
    "[", "0", "'", "http:", "//", "^", "~", "\"", "\n", "-",   "s:", "\xC3\xA9", "&"};

TEST(PlainLinks, AgreeWithTheParserOnEveryShortText) {
  const std::vector<Base> all = bases();
  std::size_t decided = 0;
  forEachText(kPieces, inShortOrDeepRun(3, 4), [&](const std::string& text) {
    for (const Base& base : all) decided += decides(text, base) ? 1 : 0;
  });
  EXPECT_GE(decided, 5000U);
}

// Hosts and segments that end where the bytes that are looked at together do.
TEST(PlainLinks, AgreeWithTheParserOnLongHosts) {
  const Base base = Base::parse("http://h/a/b?q").value();
  for (std::size_t length = 1; length < 140; ++length) {
    const std::string filler(length, 'a');
    for (const string_view end :
         {"", "/", "/b", ".", "./", ".1", ".b/.", "/..", "/%2e", "?", "#"}) {
      decides("//" + filler + std::string(end), base);
      decides("http://" + filler + std::string(end), base);
      decides("https://" + filler + std::string(end), base);
      decides("https://" + filler.substr(1) + ".b" + std::string(end), base);
      decides("/" + filler + std::string(end), base);
      decides(filler + std::string(end) + filler, base);
    }
  }
}

TEST(PlainLinks, DecideLinksThatAreAHostAlone) {
  const Base base = Base::parse("http://h/a/b?q").value();
  for (const string_view link : {"http://example.com", "https://example.com", "//example.com"}) {
    EXPECT_TRUE(decides(link, base)) << link;
  }
}

// The same after and before what fills a vector.
TEST(PlainLinks, AgreeWithTheParserOnLongTexts) {
  const Base base = Base::parse("http://h/a/b?q").value();
  const std::string longest(40, 'a');
  for (const std::size_t length : {5U, 13U, 16U, 20U, 33U}) {
    const std::string filler = longest.substr(0, length);
    forEachText(kPieces, inShortOrDeepRun(2, 3), [&](const std::string& text) {
      decides(text + filler, base);
      decides(filler + text, base);
      decides("https://example.com/" + filler + text + filler, base);
      decides("//" + text + "/" + filler, base);
    });
  }
}

// Each byte at each place of links that else are plain.
TEST(PlainLinks, AgreeWithTheParserOnEveryByte) {
  const Base base = Base::parse("http://h/a/b?q").value();
  for (const std::string link :
       {"abcdefgh/ijkl", "/abcd/efghijk?lmno=pqrs#tuvwxyz01234567890",
        "https://example.com/abcdefg", "//example.com/a/b/c/d/e", "name:abcdefghijklmnopqrs"}) {
    EXPECT_TRUE(decides(link, base));
    for (std::size_t at = 0; at < link.size(); ++at) {
      std::string changed = link;
      for (int byte = 0; byte < 256; ++byte) {
        changed[at] = static_cast<char>(byte);
        decides(changed, base);
      }
    }
  }
}

TEST(PlainLinks, AgreeWithTheParserOnRandomTexts) {
  RandomTexts random;
  const std::vector<Base> all = bases();
  const std::vector<string_view> pieces = {
      "http://", "https://", "//",        "/",       "h.example/", "a.b",   "1.2",
      "0x1",     "path/",    "file.html", "?a=b&c",  "#frag",      "..",    ".",
      "%2E",     "'",        "index",     "mailto:", "data:,",     "Name:", "~user/"};
  for (std::size_t i = randomRuns(100000, 10000000); i > 0; --i) {
    decides(random.mutated(random.text(pieces, 7), 1), all[random.number(all.size())]);
  }
}

std::vector<std::string> fieldsOf(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

TEST(PlainLinks, DecideMostLinksOfRealPages) {
  const std::string folder = PAGESCAN_SHARED_DIR "/corpus/";
  std::ifstream basesFile(folder + "page-bases.tsv"), links(folder + "links.tsv");
  if (!basesFile || !links) GTEST_SKIP() << "no real pages";
  std::map<std::string, Base> baseOf;
  for (std::string line; std::getline(basesFile, line);) {
    const std::vector<std::string> fields = fieldsOf(line);
    if (fields.size() > 1) baseOf[fields[0]] = Base::parse(fields[1]).value_or(Base());
  }
  RandomTexts random;
  std::size_t count = 0, decided = 0;
  for (std::string line; std::getline(links, line); ++count) {
    const std::vector<std::string> fields = fieldsOf(line);
    ASSERT_GE(fields.size(), 4U) << line;
    const Base& base = baseOf[fields[0]];
    decided += decides(fields[3], base) ? 1 : 0;
    for (int i = 0; i < 3; ++i) decides(random.mutated(fields[3], 3), base);
  }
  EXPECT_GE(count, 6000U);
  EXPECT_GE(decided * 100, count * 95) << decided << " of " << count;
}

}  // namespace
}  // namespace pagescan::tests
