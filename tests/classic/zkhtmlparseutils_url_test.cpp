#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "support/placement.h"
#include "zkhtmlparseutils.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

// --- Cleaning ---------------------------------------------------------------------------------

struct StripCase {
  Here here;
  std::string_view url;
  std::string_view kept;     // with the escapes kept
  std::string_view decoded;  // with the escapes decoded
};

void expectStripped(const StripCase& row, Placement& place) {
  RWCString& kept = place.string(row.url);
  const RWCString keeper(kept);
  stripUrl(kept, false);
  EXPECT_EQ(bytesOf(kept), row.kept);
  RWCString& decoded = place.string(row.url);
  stripUrl(decoded, true);
  EXPECT_EQ(bytesOf(decoded), row.decoded);
  EXPECT_EQ(bytesOf(keeper), row.url);
}

constexpr StripCase kWhiteSpace[] = {
    {HERE, ""sv, ""sv, ""sv},
    {HERE, " "sv, ""sv, ""sv},
    {HERE, " \t\r\n \n"sv, ""sv, ""sv},
    {HERE, "x"sv, "x"sv, "x"sv},
    {HERE, "  http://a/b c\r\n"sv, "http://a/b%20c"sv, "http://a/b%20c"sv},
    {HERE, "x y"sv, "x%20y"sv, "x%20y"sv},
    {HERE, "x  y"sv, "x%20%20y"sv, "x%20%20y"sv},
    {HERE, "a\tb\rc\nd"sv, "abcd"sv, "abcd"sv},
    {HERE, "a \t\r\n b"sv, "a%20%20b"sv, "a%20%20b"sv},
    {HERE, "a?b c\td"sv, "a?b%20cd"sv, "a?b%20cd"sv},
    {HERE, "\f a \v"sv, "\f%20a%20\v"sv, "\f%20a%20\v"sv},  // not of the four kinds
    {HERE, "\0 a\0"sv, "\0%20a\0"sv, "\0%20a\0"sv},
    {HERE, "\xA0 \xE4"sv, "\xA0%20\xE4"sv, "\xA0%20\xE4"sv},
    {HERE, "a b c d e f g h i j k l m"sv, "a%20b%20c%20d%20e%20f%20g%20h%20i%20j%20k%20l%20m"sv,
     "a%20b%20c%20d%20e%20f%20g%20h%20i%20j%20k%20l%20m"sv},
};

TEST(StripUrl, CleansWhiteSpace) {
  forEachPlacement(kWhiteSpace, expectStripped);
}

constexpr StripCase kScriptUrls[] = {
    {HERE, "JavaScript:alert(1) ;"sv, "JavaScript:alert(1) ;"sv, "JavaScript:alert(1) ;"sv},
    {HERE, " javascript: a b "sv, "javascript: a b"sv, "javascript: a b"sv},
    {HERE, "javascript:"sv, "javascript:"sv, "javascript:"sv},
    {HERE, "javascript a"sv, "javascript%20a"sv, "javascript%20a"sv},
    {HERE, "javascript : a"sv, "javascript%20:%20a"sv, "javascript%20:%20a"sv},
    {HERE, "javascript:a\tb\nc"sv, "javascript:abc"sv, "javascript:abc"sv},
    {HERE, "javascript:%41 %20"sv, "javascript:%41 %20"sv, "javascript:A %20"sv},
    // The scheme is looked for before the line breaks inside go.
    {HERE, "java\nscript:a b"sv, "javascript:a%20b"sv, "javascript:a%20b"sv},
    {HERE, "xjavascript:a b"sv, "xjavascript:a%20b"sv, "xjavascript:a%20b"sv},
};

TEST(StripUrl, KeepsTheBlanksOfScripts) {
  forEachPlacement(kScriptUrls, expectStripped);
}

constexpr StripCase kEscapes[] = {
    {HERE, "a%41b"sv, "a%41b"sv, "aAb"sv},
    {HERE, "a%20b"sv, "a%20b"sv, "a%20b"sv},
    {HERE, "a?b%41"sv, "a?b%41"sv, "a?b%41"sv},
    {HERE, "a%"sv, "a%"sv, "a\0"sv},
    {HERE, "%3F%41"sv, "%3F%41"sv, "?A"sv},
    {HERE, "%7euser%7E"sv, "%7euser%7E"sv, "~user~"sv},
    {HERE, "%e4%FF%00"sv, "%e4%FF%00"sv, "\xE4\xFF\0"sv},
    // The decoded byte is never looked at again.
    {HERE, "%2541"sv, "%2541"sv, "%41"sv},
    {HERE, "a%09b%0Ac"sv, "a%09b%0Ac"sv, "a\tb\nc"sv},
    {HERE, "%3f%41?%41"sv, "%3f%41?%41"sv, "?A?%41"sv},
    // Unreadable escapes become a NUL byte and take three bytes all the same.
    {HERE, "%zz"sv, "%zz"sv, "\0"sv},
    {HERE, "a%zzb"sv, "a%zzb"sv, "a\0b"sv},
    {HERE, "%z4x"sv, "%z4x"sv, "\0x"sv},
    {HERE, "%%41"sv, "%%41"sv,
     "\0"
     "1"sv},
    {HERE, "%?%41"sv, "%?%41"sv,
     "\0"
     "41"sv},
    // One digit takes three bytes too.
    {HERE, "%4x"sv, "%4x"sv, "\x04"sv},
    {HERE, "%4xy"sv, "%4xy"sv, "\x04y"sv},
    {HERE, "%4"sv, "%4"sv, "\x04"sv},
    {HERE, "a%F"sv, "a%F"sv, "a\x0F"sv},
    {HERE, "%4%41"sv, "%4%41"sv,
     "\x04"
     "41"sv},
    // Signs, white space and "0x" are read as the C library reads them.
    {HERE, "%-1"sv, "%-1"sv, "\xFF"sv},
    {HERE, "%-f"sv, "%-f"sv, "\xF1"sv},
    {HERE, "%+7"sv, "%+7"sv, "\x07"sv},
    {HERE, "%+"sv, "%+"sv, "\0"sv},
    {HERE, "%0x"sv, "%0x"sv, "\0"sv},
    {HERE, "%0x41"sv, "%0x41"sv,
     "\0"
     "41"sv},
    {HERE, "% 4x"sv, "%%204x"sv, "\x04x"sv},
    {HERE, "%\t4x"sv, "%4x"sv, "\x04x"sv},
    {HERE, "%\v4x"sv, "%\v4x"sv, "\x04x"sv},
    {HERE, "%4\n1"sv, "%41"sv,
     "\x04"
     "1"sv},
    {HERE, "%  x"sv, "%%20%20x"sv, "\0x"sv},
    {HERE, "%\0A!"sv, "%\0A!"sv, "\0!"sv},
    {HERE, "%a\0!"sv, "%a\0!"sv, "\n!"sv},
    {HERE, "%\xE4\xE4!"sv, "%\xE4\xE4!"sv, "\0!"sv},
    // Only "%20" stays.
    {HERE, "%20%20"sv, "%20%20"sv, "%20%20"sv},
    {HERE, "%2"sv, "%2"sv, "\x02"sv},
    {HERE, "%020"sv, "%020"sv,
     "\x02"
     "0"sv},
};

TEST(StripUrl, DecodesEscapesBeforeTheQuery) {
  forEachPlacement(kEscapes, expectStripped);
}

// Every two bytes after a "%", against the C library.
TEST(StripUrl, ReadsEveryEscapeAsTheCLibraryDoes) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const char digits[] = {static_cast<char>(first), static_cast<char>(second), '\0'};
      unsigned number = 0;
      std::sscanf(digits, "%x", &number);
      const std::string expected =
          number == 32 ? "%20!" : std::string(1, static_cast<char>(number & 0xFFU)) + "!";
      RWCString url = stringOf("%" + std::string(digits, 2) + "!");
      stripUrl(url, true);
      ASSERT_EQ(bytesOf(url), expected) << first << " " << second;
    }
  }
}

TEST(StripUrl, EndsOnLargeUrls) {
  constexpr std::size_t kLength = 3U << 20;
  const auto stripped = [](const std::string& bytes) {
    RWCString url = stringOf(bytes);
    stripUrl(url, true);
    return std::string(bytesOf(url));
  };
  std::string tabs;
  std::string blanks;
  std::string blanksCleaned;
  std::string escapes;
  while (tabs.size() < kLength) tabs += "a\t";
  while (blanks.size() < kLength) {
    blanks += " b";
    blanksCleaned += "%20b";
  }
  while (escapes.size() < kLength) escapes += "%41";
  EXPECT_EQ(stripped(tabs), std::string(tabs.size() / 2, 'a'));
  EXPECT_EQ(stripped("x" + blanks), "x" + blanksCleaned);
  EXPECT_EQ(stripped(escapes), std::string(escapes.size() / 3, 'A'));
  EXPECT_EQ(stripped(std::string(kLength, ' ')), "");
  EXPECT_EQ(stripped(std::string(kLength, '%')), std::string(kLength / 3, '\0'));
}

// --- Schemes ----------------------------------------------------------------------------------

struct SchemeCase {
  Here here;
  std::string_view url;
  int code;
  int schemeLength;
};
constexpr SchemeCase kSchemes[] = {
    {HERE, "HTTP://x"sv, 3, 5},
    {HERE, "http:"sv, 3, 5},
    {HERE, "https:"sv, 4, 6},
    {HERE, "mailto:a"sv, 5, 7},
    {HERE, "JavaScript:void(0)"sv, 6, 11},
    {HERE, "ftp://h"sv, 1, 4},
    {HERE, "File:c"sv, 2, 5},
    {HERE, "clsid:1234"sv, 8, 6},
    {HERE, "news:x"sv, 7, 5},
    // Not one of the texts exactly.
    {HERE, "httpx:y"sv, 7, 6},
    {HERE, "htt:y"sv, 7, 4},
    {HERE, "ftps:y"sv, 7, 5},
    {HERE, "files:y"sv, 7, 6},
    {HERE, "c:x"sv, 7, 2},
    {HERE, "clsids:x"sv, 7, 7},
    {HERE, "mail:x"sv, 7, 5},
    {HERE, "javascripts:x"sv, 7, 12},
    {HERE, "Z:"sv, 7, 2},
    {HERE, ":x"sv, 7, 1},
    {HERE, ":"sv, 7, 1},
    {HERE, "::"sv, 7, 1},
    // The first ":" counts.
    {HERE, "http:ftp:x"sv, 3, 5},
    {HERE, "x:http:"sv, 7, 2},
    // No scheme.
    {HERE, ""sv, 0, -1},
    {HERE, "no-colon"sv, 0, -1},
    {HERE, "http"sv, 0, -1},
    {HERE, "svn+ssh://h"sv, 0, -1},
    {HERE, "1http://h"sv, 0, -1},
    {HERE, "http2:x"sv, 0, -1},
    {HERE, " http:x"sv, 0, -1},
    {HERE, "http :x"sv, 0, -1},
    {HERE, "/a:b"sv, 0, -1},
    {HERE, "?a:b"sv, 0, -1},
    {HERE, "#:"sv, 0, -1},
    {HERE, "\xE4:x"sv, 0, -1},
    {HERE, "h\0:x"sv, 0, -1},
    {HERE, "@:"sv, 0, -1},
    {HERE, "[:"sv, 0, -1},
    {HERE, "`:"sv, 0, -1},
    {HERE, "{:"sv, 0, -1},
    {HERE, "aschemethatistoolongtostandinthestringobject:x"sv, 7, 45},
};

TEST(GetProtocol, ClassifiesByTheScheme) {
  forEachPlacement(kSchemes, [](const SchemeCase& row, Placement& place) {
    const RWCString& url = place.constString(row.url);
    int schemeLength = 4711;
    EXPECT_EQ(getProtocol(url, schemeLength), row.code);
    EXPECT_EQ(schemeLength, row.schemeLength);
    EXPECT_EQ(bytesOf(url), row.url);
  });
}

TEST(GetProtocol, EndsOnLargeUrls) {
  const std::string letters(4U << 20, 'a');
  int schemeLength = 0;
  EXPECT_EQ(getProtocol(stringOf(letters), schemeLength), 0);
  EXPECT_EQ(getProtocol(stringOf(letters + ":"), schemeLength), 7);
  EXPECT_EQ(schemeLength, (4 << 20) + 1);
}

}  // namespace
}  // namespace pagescan::tests
