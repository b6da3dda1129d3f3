#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "reference/classic/zkurlencoding.h"
#include "support/placement.h"
#include "zkurlencoding.h"

namespace pagescan::tests {
namespace {

struct TableCase {
  Here here;
  const CharArray* table;
  std::string_view literals;  // besides letters and digits
  std::string_view blank;
  const char* escape;  // as printf writes a byte
};
const TableCase kTables[] = {
    {HERE, &UrlEncoding::cBrowserChars, "@*_-.", "+", "%%%02X"},
    {HERE, &UrlEncoding::cBrowserCharsSign, "*_-.", "+", "%%%02X"},
    {HERE, &UrlEncoding::cEscapeChars, "@*_-.+/", "%20", "%%%02X"},
    {HERE, &UrlEncoding::cEscapeURIComponentChars, "*_-.~!()'`", "%20", "%%%02X"},
    {HERE, &UrlEncoding::cEscapeURIChars, "*_-.~!()'@#$&+=;:?/`", "%20", "%%%02X"},
    {HERE, &UrlEncoding::cChromeChars, "*_-.~!()'<>`", "+", "%%%02X"},
    {HERE, &UrlEncoding::cChromeChars94, "!$%()*+,-./:;@[\\]^_`{|}~", "%20", "%%%02X"},
    {HERE, &UrlEncoding::cSiebelChars, "!$_()+*',-.", "%20", "%%%02x"},
};

constexpr std::string_view kAlphanumeric =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

std::string expectedEntry(const TableCase& row, unsigned byte) {
  const char c = static_cast<char>(byte);
  if (c == ' ') return std::string(row.blank);
  if (kAlphanumeric.find(c) != kAlphanumeric.npos || row.literals.find(c) != row.literals.npos) {
    return std::string(1, c);
  }
  char escape[8];
  std::snprintf(escape, sizeof escape, row.escape, byte);
  return escape;
}

TEST(UrlEncodingTables, HoldWhatTheirFlavourSays) {
  forEachRow(kTables, [](const TableCase& row) {
    for (unsigned byte = 0; byte < 256; ++byte) {
      EXPECT_STREQ((*row.table)[static_cast<unsigned char>(byte)], expectedEntry(row, byte).c_str())
          << "byte " << byte;
    }
  });
}

TEST(UrlEncodingTables, ChromeFlavoursKeepWhatLooksLikeSlips) {
  EXPECT_STREQ(UrlEncoding::cEscapeURIChars['`'], "`");
  EXPECT_STREQ(UrlEncoding::cEscapeURIComponentChars['`'], "`");
  EXPECT_STREQ(UrlEncoding::cChromeChars['`'], "`");
  EXPECT_STREQ(UrlEncoding::cEscapeURIChars[','], "%2C");
  EXPECT_STREQ(UrlEncoding::cChromeChars94['%'], "%");
}

struct EntryCase {
  Here here;
  const CharArray* table;
  unsigned char byte;
  const char* text;
};
const EntryCase kEntries[] = {
    {HERE, &UrlEncoding::cBrowserChars, 0, "%00"},
    {HERE, &UrlEncoding::cSiebelChars, 0, "%00"},
    {HERE, &UrlEncoding::cBrowserChars, 255, "%FF"},
    {HERE, &UrlEncoding::cChromeChars94, 255, "%FF"},
    {HERE, &UrlEncoding::cSiebelChars, 255, "%ff"},
    {HERE, &UrlEncoding::cBrowserChars, ' ', "+"},
    {HERE, &UrlEncoding::cBrowserCharsSign, ' ', "+"},
    {HERE, &UrlEncoding::cChromeChars, ' ', "+"},
    {HERE, &UrlEncoding::cEscapeChars, ' ', "%20"},
    {HERE, &UrlEncoding::cEscapeURIChars, ' ', "%20"},
    {HERE, &UrlEncoding::cEscapeURIComponentChars, ' ', "%20"},
    {HERE, &UrlEncoding::cChromeChars94, ' ', "%20"},
    {HERE, &UrlEncoding::cSiebelChars, ' ', "%20"},
    {HERE, &UrlEncoding::cBrowserChars, '@', "@"},
    {HERE, &UrlEncoding::cEscapeChars, '@', "@"},
    {HERE, &UrlEncoding::cEscapeURIChars, '@', "@"},
    {HERE, &UrlEncoding::cChromeChars94, '@', "@"},
    {HERE, &UrlEncoding::cBrowserCharsSign, '@', "%40"},
    {HERE, &UrlEncoding::cEscapeURIComponentChars, '@', "%40"},
    {HERE, &UrlEncoding::cChromeChars, '@', "%40"},
    {HERE, &UrlEncoding::cSiebelChars, '@', "%40"},
    {HERE, &UrlEncoding::cBrowserChars, '~', "%7E"},
    {HERE, &UrlEncoding::cBrowserCharsSign, '~', "%7E"},
    {HERE, &UrlEncoding::cEscapeChars, '~', "%7E"},
    {HERE, &UrlEncoding::cEscapeURIChars, '~', "~"},
    {HERE, &UrlEncoding::cEscapeURIComponentChars, '~', "~"},
    {HERE, &UrlEncoding::cChromeChars, '~', "~"},
    {HERE, &UrlEncoding::cChromeChars94, '~', "~"},
    {HERE, &UrlEncoding::cSiebelChars, '~', "%7e"},
    {HERE, &UrlEncoding::cEscapeURIChars, ',', "%2C"},
    {HERE, &UrlEncoding::cChromeChars94, ',', ","},
    {HERE, &UrlEncoding::cSiebelChars, ',', ","},
    {HERE, &UrlEncoding::cChromeChars94, '%', "%"},
    {HERE, &UrlEncoding::cBrowserChars, '%', "%25"},
    {HERE, &UrlEncoding::cSiebelChars, '%', "%25"},
    {HERE, &UrlEncoding::cChromeChars94, '=', "%3D"},
};

TEST(UrlEncodingTables, HaveTheEntriesThatHostsRead) {
  forEachRow(kEntries, [](const EntryCase& row) {
    EXPECT_STREQ((*row.table)[row.byte], row.text);
    EXPECT_STREQ(row.table->entries[row.byte], row.text);
  });
}

// A table in which every byte is one that no fill writes.
CharArray dirtyTable() {
  CharArray table;
  std::memset(table.entries, 0x7f, sizeof table.entries);
  return table;
}

using Fill = bool (*)(CharArray&);
struct FillCase {
  Here here;
  Fill fill;
  const CharArray* table;
  reference::CharArray twin;
};
const FillCase kFills[] = {
    {HERE, UrlEncoding::FillBrowserSpecials, &UrlEncoding::cBrowserChars,
     reference::FillBrowserSpecials()},
    {HERE, UrlEncoding::FillEscapeSpecials, &UrlEncoding::cEscapeChars,
     reference::FillEscapeSpecials()},
    {HERE, UrlEncoding::FillEscapeURIComponentSpecials, &UrlEncoding::cEscapeURIComponentChars,
     reference::FillEscapeURIComponentSpecials()},
    {HERE, UrlEncoding::FillEscapeURISpecials, &UrlEncoding::cEscapeURIChars,
     reference::FillEscapeURISpecials()},
    {HERE, UrlEncoding::FillChromeSpecials, &UrlEncoding::cChromeChars,
     reference::FillChromeSpecials()},
    {HERE, UrlEncoding::FillChrome94Specials, &UrlEncoding::cChromeChars94,
     reference::FillChrome94Specials()},
    {HERE, UrlEncoding::FillSiebelSpecials, &UrlEncoding::cSiebelChars,
     reference::FillSiebelSpecials()},
};

TEST(UrlEncodingTables, AreWhatTheirFillFunctionsMake) {
  forEachRow(kFills, [](const FillCase& row) {
    CharArray filled = dirtyTable();
    EXPECT_TRUE(row.fill(filled));
    EXPECT_EQ(std::memcmp(filled.entries, row.table->entries, sizeof filled.entries), 0);
    for (std::size_t byte = 0; byte < 256; ++byte) {
      EXPECT_EQ(filled.entries[byte], row.twin[byte]) << "byte " << byte;
    }
  });
}

TEST(UrlEncodingTables, BaseFillKeepsLettersAndDigitsAlone) {
  for (const bool upper : {false, true}) {
    CharArray filled = dirtyTable();
    EXPECT_TRUE(UrlEncoding::FillASCII_chars(filled, upper));
    const reference::CharArray twin = reference::FillASCII_chars(upper);
    for (std::size_t byte = 0; byte < 256; ++byte) EXPECT_EQ(filled.entries[byte], twin[byte]);
  }
}

// A changed entry shows whether a table was filled again; put back at the end.
TEST(UrlEncodingTables, AreFilledAtMostOnce) {
  UrlEncoding::initAllArrays();
  for (const FillCase& row : kFills) {
    CharArray& table = const_cast<CharArray&>(*row.table);
    const CharArray before = table;
    std::memcpy(table.entries[std::size_t{'a'}], "b", 2);
    UrlEncoding::initAllArrays();
    const UrlEncoding another;
    EXPECT_STREQ(table['a'], "b");
    table = before;
  }
}

TEST(UrlEncodingTables, EveryFillingEscapesTheAtSignOfTheSignFlavour) {
  char(&entry)[4] = UrlEncoding::cBrowserCharsSign.entries[static_cast<unsigned char>('@')];
  std::memcpy(entry, "@", 2);
  UrlEncoding::initAllArrays();
  EXPECT_STREQ(entry, "%40");
  std::memcpy(entry, "@", 2);
  { const UrlEncoding another; }
  EXPECT_STREQ(entry, "%40");
}

// Nothing is written while others read: the tables are what the fills make already.
TEST(UrlEncodingTables, MayBeFilledWhileOthersEncode) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int round = 0; round < 200; ++round) {
        UrlEncoding::initAllArrays();
        EXPECT_STREQ(UrlEncoding::cBrowserCharsSign['@'], "%40");
        RWCString source("@ &#25;/");
        RWCString encoded;
        UrlEncoding::EncodeString(source, encoded, UrlEncoding::eBrowserSign);
        EXPECT_EQ(bytesOf(encoded), "%40+%%2F");
        EXPECT_EQ(UrlEncoding::CheckUrlDecoding(encoded), UrlEncoding::eBrowserSign);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// A host's static constructor, run before the library's own when it is linked in whole.
struct EarlyReader {
  EarlyReader() : sign(UrlEncoding::cBrowserCharsSign['@']), last(UrlEncoding::cSiebelChars[255]) {}
  std::string sign;
  std::string last;
};
[[gnu::init_priority(101)]] const EarlyReader earlyReader;

TEST(UrlEncodingTables, AreCompleteBeforeAnyConstructorRuns) {
  EXPECT_EQ(earlyReader.sign, "%40");
  EXPECT_EQ(earlyReader.last, "%ff");
}

}  // namespace
}  // namespace pagescan::tests
