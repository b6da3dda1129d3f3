// The page as a whole: encodings, nested documents, bases, what may be asked.
#include "pagescan/page.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pagescan/style_sheet.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

static_assert(sizeof(Reference) <= 32);

Page pageOf(std::string_view bytes, std::string_view charset = "") {
  PageOptions options;
  options.url = "http://h/d/p?q#f";
  options.charset = charset;
  return Page(bytes, options);
}

struct EncodingCase {
  Here here;
  std::string_view page;
  std::string_view charset;
  std::string_view expected;
};

constexpr EncodingCase kEncodings[] = {
    {HERE, "", "", "windows-1252"},
    {HERE, "\xEF\xBB\xBF<meta charset=koi8-r>", "shift_jis", "UTF-8"},
    {HERE, {"\xFF\xFE<\0", 4}, "", "UTF-16LE"},
    {HERE, "<meta charset=koi8-r>", " Shift_JIS ", "Shift_JIS"},
    {HERE, "<meta charset=koi8-r>", "no such label", "KOI8-R"},
    {HERE, "<meta charset=nonsense><meta charset=koi8-r>", "", "KOI8-R"},
    {HERE, "<meta http-equiv=Content-Type content='text/html;charset=koi8-r'>", "", "KOI8-R"},
    {HERE, "<meta charset=utf-16>", "", "UTF-8"},
    {HERE, "<meta charset=x-user-defined>", "", "windows-1252"},
    // Of the tree, not of the bytes: outside of the head only the prescan sees a meta.
    {HERE, "<p><meta charset=koi8-r>", "", "KOI8-R"},
    {HERE, "<title><meta charset=koi8-r></title><meta charset=big5>", "", "Big5"},
    {HERE, "<template><meta charset=koi8-r></template><meta charset=big5>", "", "Big5"},
    {HERE, "<meta charset=iso-2022-kr><a href=x>", "", "replacement"},
};

TEST(Page, KnowsItsEncoding) {
  for (const EncodingCase& row : kEncodings) {
    const testing::ScopedTrace trace(row.here.file, row.here.line, "this row");
    EXPECT_EQ(pageOf(row.page, row.charset).encoding(), row.expected);
  }
}

TEST(Page, OfAnEncodingThatIsReplacedHoldsNothing) {
  EXPECT_TRUE(pageOf("<a href=x>", "iso-2022-kr").references().empty());
  EXPECT_TRUE(pageOf("<meta charset=hz-gb-2312><a href=x>").references().empty());
}

// A meta after the first 1,024 bytes names another encoding than the start of the page had.
TEST(Page, IsReadAgainWhereALateMetaChangesWhatWasRead) {
  const std::string late = "<style>a{b:url(\x83\\.png)}</style><!--" + std::string(1100, 'x') +
                           "--><meta charset=shift_jis><a href='?\x83\x5C'>";
  const Page page = pageOf(late);
  EXPECT_EQ(page.encoding(), "Shift_JIS");
  ASSERT_EQ(page.references().size(), 2U);
  EXPECT_EQ(page.value(page.references()[0]), "\xE3\x82\xBD.png");
  EXPECT_EQ(page.url(page.references()[1]), "http://h/d/p?%83\\");

  const std::string japanese =
      "<!--" + std::string(1100, 'x') + "--><meta charset=iso-2022-jp><a href='\x1B$B$\"\x1B(B'>";
  const Page converted = pageOf(japanese);
  ASSERT_EQ(converted.references().size(), 1U);
  EXPECT_EQ(converted.value(converted.references()[0]), "\xE3\x81\x82");
}

// The "]" after the byte 83 is the second byte of a character.
TEST(Page, EndsCdataSectionsAtCharacters) {
  struct Row {
    std::string_view charset, page;
    std::size_t references;
  };
  constexpr Row kRows[] = {
      {"shift_jis", "<svg><![CDATA[\x83]]><a href=x></a>]]><a href=y></a>", 1},
      {"windows-1252", "<svg><![CDATA[\x83]]><a href=x></a>]]><a href=y></a>", 2},
      {"shift_jis", "<svg><![CDATA[\x83]]]><a href=x></a>", 1},
      {"gbk", "<svg><![CDATA[\x83]]><a href=x></a>", 0},
      {"utf-8", "<svg><![CDATA[\x83]]><a href=x></a>", 1},
      {"",
       "<template><svg><![CDATA[\x83]]><a href=x></a>]]></svg></template>"
       "<meta charset=shift_jis><a href=y></a>",
       1},
  };
  for (const Row& row : kRows) {
    PageOptions options;
    options.charset = row.charset;
    EXPECT_EQ(Page(row.page, options).references().size(), row.references) << row.page;
  }
  const std::string late = "<!--" + std::string(1100, 'x') +
                           "--><template><svg><![CDATA[\x83]]><a href=x></a>]]></svg></template>"
                           "<meta charset=shift_jis><a href=y></a>";
  EXPECT_EQ(Page(late).references().size(), 1U);
}

TEST(Page, ResolvesAgainstWhatIsInForce) {
  const Page page = pageOf("<img src=1><a href=2></a><base href=/b/><img src=3>");
  EXPECT_EQ(page.base(), "http://h/b/");
  ASSERT_EQ(page.references().size(), 4U);
  EXPECT_EQ(page.url(page.references()[0]), "http://h/d/1");
  EXPECT_EQ(page.url(page.references()[1]), "http://h/b/2");
  EXPECT_EQ(page.url(page.references()[2]), "http://h/b/");
  EXPECT_EQ(page.url(page.references()[3]), "http://h/b/3");
  EXPECT_EQ(pageOf("<base href=javascript:x>").base(), "http://h/d/p?q#f");
}

TEST(Page, WithoutAUrlHasAbsoluteUrlsAlone) {
  const Page page("<a href=x><a href=http://y><form action>");
  EXPECT_EQ(page.base(), "");
  ASSERT_EQ(page.references().size(), 3U);
  EXPECT_EQ(page.url(page.references()[0]), std::nullopt);
  EXPECT_EQ(page.url(page.references()[1]), "http://y/");
  EXPECT_EQ(page.url(page.references()[2]), std::nullopt);
  std::string url = "before";
  EXPECT_FALSE(page.urlInto(page.references()[0], url));
  EXPECT_EQ(url, "");
}

TEST(Page, GivesValuesIntoATextThatIsThere) {
  const Page page("<a href=x><a href='a&amp;b'>");
  std::string value = "before";
  page.valueInto(page.references()[0], value);
  EXPECT_EQ(value, "x");
  page.valueInto(page.references()[1], value);
  EXPECT_EQ(value, "a&b");
  const StyleSheet sheet("a{b:url(\\78)}");
  sheet.valueInto(sheet.references()[0], value);
  EXPECT_EQ(value, "x");
}

// A srcdoc in a srcdoc in a srcdoc: each level escapes the one inside once more.
std::string nestedPages(int depth) {
  std::string page = "<img src=1>";
  for (int i = 0; i < depth; ++i) {
    std::string escaped;
    for (const char c : page) {
      escaped += c == '&' ? "&amp;" : c == '"' ? "&quot;" : std::string(1, c);
    }
    page = "<iframe srcdoc=\"" + escaped + "\">";
  }
  return page;
}

TEST(Page, ReadsNestedPagesToADepthOf32) {
  for (const int depth : {1, 2, 31, 32}) {
    const std::string bytes = nestedPages(depth);
    const Page page = pageOf(bytes);
    ASSERT_EQ(page.references().size(), 1U) << depth;
    EXPECT_EQ(page.raw(page.references()[0]), "1");
    EXPECT_EQ(page.url(page.references()[0]), "http://h/d/1");
  }
  const std::string tooDeep = nestedPages(33);
  EXPECT_TRUE(pageOf(tooDeep).references().empty());
}

// The bases of these documents are together longer than the page, and not all of them are kept.
TEST(Page, ResolvesAgainstManyBasesBelowALongOne) {
  const std::string directory = "http://h/" + std::string(3000, 'x') + "/";
  std::string bytes = "<base href='" + directory + "'>";
  std::string expected;
  for (int i = 0; i < 30; ++i) {
    const std::string inner = std::to_string(i) + "/";
    bytes += "<iframe srcdoc='<base href=" + inner + "><img src=a>" +
             "<iframe srcdoc=\"<img src=b><base href=c/><img src=d>\"></iframe>" +
             "<iframe srcdoc=\"<base href=data:,><img src=e>\"></iframe>" +
             "<iframe srcdoc=\"<base href=http://[><img src=f>\"></iframe>" +
             "<iframe srcdoc=\"<base href=//i/><img src=g>\"></iframe>'></iframe>";
    for (const char* const path : {"a", "b", "c/d", "e", "f"}) {
      expected += directory + inner + path + "\n";
    }
    expected += "http://i/g\n";
  }
  const Page page = pageOf(bytes);
  std::string found;
  for (const Reference& reference : page.references()) {
    if (reference.kind == Kind::load) found += page.url(reference).value_or("none") + "\n";
  }
  EXPECT_EQ(found, expected);
}

TEST(Page, StaysWhatItIsWhenItMoves) {
  Page page = pageOf("<a href=1>");
  Page other = std::move(page);
  page = pageOf("<a href=2>");
  EXPECT_EQ(other.value(other.references()[0]), "1");
  EXPECT_EQ(page.value(page.references()[0]), "2");
}

TEST(Page, OfMoreThanFourGigabytesIsRefused) {
  // Never looked at, so nothing need stand there.
  const char byte = '<';
  const Page page({&byte, std::size_t{1} << 32});
  EXPECT_EQ(page.error(), "the page has more than 4294967295 bytes");
  EXPECT_TRUE(page.references().empty());
  EXPECT_EQ(pageOf("").error(), "");
}

struct SheetCase {
  Here here;
  std::string_view sheet;
  std::string_view charset;
  std::string_view encoding;
  std::string_view value;  // of the only reference
  std::string_view url;
};

constexpr SheetCase kSheets[] = {
    {HERE, "a{b:url( x\\20 y )}", "", "UTF-8", "x y", "http://h/s/x%20y"},
    {HERE, "@import '\xE9'", "windows-1252", "windows-1252", "\xC3\xA9", "http://h/s/%C3%A9"},
    {HERE, "@charset \"koi8-r\";a{b:url(?\xC1)}", "", "KOI8-R", "?\xD0\xB0", "http://h/s/t?%D0%B0"},
    {HERE, "\xEF\xBB\xBF@import 'x'", "koi8-r", "UTF-8", "x", "http://h/s/x"},
    {HERE, "a{b:url('\x83\\')}", "shift_jis", "Shift_JIS", "\xE3\x82\xBD", "http://h/s/%E3%82%BD"},
    {HERE, {"\xFE\xFF\0@\0i\0m\0p\0o\0r\0t\0'\0x\0'", 22}, "", "UTF-16BE", "x", "http://h/s/x"},
};

TEST(StyleSheet, ReadsTextOfAnyEncoding) {
  for (const SheetCase& row : kSheets) {
    for (const Placement::Kind kind : Placement::kKinds) {
      Placement placement(kind);
      const testing::ScopedTrace trace(row.here.file, row.here.line, placement.name());
      StyleSheetOptions options;
      options.url = "http://h/s/t";
      options.charset = row.charset;
      const StyleSheet sheet(placement.bytes(row.sheet), options);
      EXPECT_EQ(sheet.encoding(), row.encoding);
      ASSERT_EQ(sheet.references().size(), 1U);
      const Reference& reference = sheet.references().front();
      EXPECT_EQ(sheet.value(reference), row.value);
      EXPECT_EQ(sheet.url(reference), row.url);
      EXPECT_EQ(reference.tag, 0U);
      EXPECT_EQ(reference.parent, kNoParent);
    }
  }
}

TEST(LineCounter, CountsAsTheIndexDoes) {
  const std::string filler(100, 'x');
  const std::vector<std::string> texts = {
      "", "a\nb\rc\r\nd\n\re", filler + "\r\n" + filler + "\r" + filler + "\n\n" + filler,
      std::string("\xFF\xFE"
                  "a\0\r\0\n\0b\0",
                  10)};
  for (const std::string& text : texts) {
    const Page page(text);
    const LineIndex index(page);
    for (const std::uint32_t step : {1U, 2U, 7U, 64U, 150U}) {
      LineCounter counter(page);
      for (std::uint32_t offset = 0; offset <= text.size(); offset += step) {
        ASSERT_EQ(counter.at(offset).line, index.at(offset).line) << offset;
        ASSERT_EQ(counter.at(offset).column, index.at(offset).column) << offset;
      }
      EXPECT_EQ(counter.at(0).line, 1U);
    }
  }
  const StyleSheet sheet("\n\n{");
  EXPECT_EQ(LineCounter(sheet).at(2).line, 3U);
}

TEST(LineIndex, CountsLinesAsPagesEndThem) {
  constexpr std::string_view kPage = "a\r\nb\rc\n<a href=x>";
  const Page page(kPage);
  const LineIndex lines(page);
  const auto at = [&](std::uint32_t offset) {
    const Position position = lines.at(offset);
    return std::pair(position.line, position.column);
  };
  EXPECT_EQ(at(0), std::pair(1U, 1U));
  EXPECT_EQ(at(3), std::pair(2U, 1U));
  EXPECT_EQ(at(5), std::pair(3U, 1U));
  EXPECT_EQ(at(7), std::pair(4U, 1U));
  EXPECT_EQ(at(static_cast<std::uint32_t>(kPage.size())), std::pair(4U, 11U));
  const StyleSheet sheet("\n\nx");
  EXPECT_EQ(LineIndex(sheet).at(2).line, 3U);
}

TEST(StyleSheet, StaysWhatItIsWhenItMoves) {
  StyleSheet sheet("a{b:url(1)}");
  StyleSheet other = std::move(sheet);
  sheet = StyleSheet("a{b:url(22)}");
  EXPECT_EQ(other.raw(other.references()[0]), "1");
  EXPECT_EQ(sheet.raw(sheet.references()[0]), "22");
}

TEST(Page, TellsWhatAReferenceResolvesAgainst) {
  PageOptions options;
  options.url = "http://h/a/b";
  const Page page(
      "<img src=1><a href=2><base href=/c/><img src=3><iframe srcdoc=\"<base href=d/><a href=4>\">",
      options);
  const std::vector<std::string_view> want = {"http://h/a/b", "http://h/c/", "http://h/a/b",
                                              "http://h/c/",  "http://h/c/", "http://h/c/d/"};
  ASSERT_EQ(page.references().size(), want.size());
  for (std::size_t i = 0; i < want.size(); ++i) {
    EXPECT_EQ(page.base(page.references()[i]), want[i]) << i;
  }
  EXPECT_EQ(Page("<a href=x>").base(Page("<a href=x>").references()[0]), "");
}

}  // namespace
}  // namespace pagescan::tests
