// What becomes of a page, edit by edit.
#include "pagescan/edits.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace std::string_literals;

struct Row {
  Here here;
  std::string page;
  std::string value;  // for the last reference
  std::string want;   // the page, or the reason for refusal after a "!"
  std::string charset = "utf-8";
};

std::string edited(const Row& row, Placement& placement) {
  PageOptions options;
  options.charset = row.charset;
  options.profiles = kDataProfile;
  const Page page(placement.bytes(row.page), options);
  if (page.references().empty()) return "no reference";
  const EditResult result = applyEdits(page, {{page.references().size() - 1, row.value, {}}});
  if (result.refused.empty()) return result.bytes;
  EXPECT_EQ(result.bytes, row.page);
  return "!" + std::string(nameOf(result.refused[0].reason));
}

void expectRows(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    for (const Placement::Kind kind : Placement::kKinds) {
      Placement placement(kind);
      EXPECT_EQ(edited(row, placement), row.want)
          << row.here.file << ":" << row.here.line << " " << placement.name();
    }
  }
}

TEST(Edits, WriteCharacterReferencesInAttributes) {
  expectRows({
      {HERE, R"(<a href="x">)", "a?b&c", R"(<a href="a?b&amp;c">)"},
      {HERE, R"(<a href="x">)", R"(a"b'c)", R"(<a href="a&quot;b'c">)"},
      {HERE, R"(<a href='x'>)", R"(a"b'c)", R"(<a href='a"b&#39;c'>)"},
      {HERE, R"(<a href=x>)", "a b>c\"d'e=f/", R"(<a href=a&#32;b&gt;c&quot;d&#39;e=f/>)"},
      {HERE, R"(<a href=x class=y>)", "", R"(<a href="" class=y>)"},
      {HERE, R"(<a href class=y>)", "a&b", R"(<a href="a&amp;b" class=y>)"},
      {HERE, R"(<a href=>)", "a", R"(<a href=a>)"},
      {HERE, R"(<a href = >)", "a", R"(<a href =a >)"},
      {HERE, R"(<a href="x">)", "a\r\n\tb", "<a href=\"a&#13;\n\tb\">"},
      {HERE, R"(<a href="x">)", "a<b", R"(<a href="a&lt;b">)"},
      {HERE, R"(<a href="x&amp;y" href="z">)", "w", R"(<a href="w" href="z">)"},
      {HERE, R"(<a href="x">)", "a\0b"s, "!no_escape"},
      {HERE, R"(<a href="x">)", "a\xFF", "!not_utf8"},
      {HERE, R"(<img src=x>)", " ", "!split"},
  });
}

TEST(Edits, KeepTheItemsOfListsApart) {
  expectRows({
      {HERE, "<img srcset='a 1x, b 2x'>", "c,d", "<img srcset='a 1x, c,d 2x'>"},
      {HERE, "<img srcset='a,b, c'>", "d", "<img srcset='a,b, d'>"},
      {HERE, "<img srcset='a 1x, b 2x'>", "c d", "!split"},
      {HERE, "<img srcset='a 1x, b 2x'>", "c,", "!split"},
      {HERE, "<img srcset='a 1x, b 2x'>", ",c", "!split"},
      {HERE, "<img srcset='a 1x, b 2x'>", "", "!split"},
      {HERE, "<a ping='a b'>", "c&d", "<a ping='a c&amp;d'>"},
      {HERE, "<a ping='a b'>", "c d", "!split"},
  });
}

TEST(Edits, LeaveTheTimeOfARefresh) {
  expectRows({
      {HERE, R"(<meta http-equiv=refresh content="5; url=x">)", "a?b&c",
       R"(<meta http-equiv=refresh content="5; url=a?b&amp;c">)"},
      {HERE, R"(<meta http-equiv=refresh content="5; url='x' ">)", "a b",
       R"(<meta http-equiv=refresh content="5; url='a b' ">)"},
      {HERE, R"(<meta http-equiv=refresh content="5; url='x'">)", "a'b", "!split"},
      {HERE, R"(<meta http-equiv=refresh content="5;x">)", "url=y", "!split"},
  });
}

TEST(Edits, WriteEscapesInStyle) {
  expectRows({
      {HERE, "<style>a{b:url(x)}</style>", "c d(e)'f'\"\\",
       R"_(<style>a{b:url(c\20 d\(e\)\'f\'\"\\)}</style>)_"},
      {HERE, "<style>@import 'x';</style>", "a'b\nc", "<style>@import 'a\\'b\\a c';</style>"},
      {HERE, "<style>@import 'x'</style>", "a</style>",
       R"_(<style>@import 'a\3c /style>'</style>)_"},
      {HERE, "<style>a{b:url( x )}</style>", "a?b&c", "<style>a{b:url( a?b&c )}</style>"},
      {HERE, R"_(<p style="a:url('x')">)_", R"(a'b"c&d)",
       R"_(<p style="a:url('a\'b\&quot;c&amp;d')">)_"},
      {HERE, R"_(<p style='a:url(x)'>)_", R"(a'b)", R"_(<p style='a:url(a\&#39;b)'>)_"},
      {HERE, R"_(<p style=a:url(x)>)_", "a b>", R"_(<p style=a:url(a\20&#32;b&gt;)>)_"},
      {HERE, "<svg><style>@import 'x';</style></svg>", "a&b<c>",
       R"_(<svg><style>@import 'a\26 b\3c c\3e ';</style></svg>)_"},
      {HERE, "<svg><style><![CDATA[@import 'x';]]></style></svg>", "a]]>",
       R"_(<svg><style><![CDATA[@import 'a]]\3e ';]]></style></svg>)_"},
      {HERE, "<svg><style>@import 'x<g/>y';</style></svg>", "a", "!divided_by_markup"},
      {HERE, "<style>@import 'x';</style>", "a\0b"s, "!no_escape"},
      {HERE, "<style>@import 'x';</style>", "", "!split"},
  });
}

TEST(Edits, WriteEscapesInJson) {
  const std::string begin = R"(<script type=application/ld+json>{"a":")";
  expectRows({
      {HERE, begin + R"(http://x/"}</script>)", "http://y/\"\\\n</script>\0é😀"s,
       begin + R"(http://y/\"\\\u000a\u003c/script>\u0000é😀"}</script>)"},
      {HERE, begin + R"(http://x/"}</script>)", "http://y/é😀",
       begin + R"(http://y/\u00e9\ud83d\ude00"}</script>)", "windows-1251"},
      {HERE, begin + R"(http://x/"}</script>)", "y", "!split"},
  });
}

TEST(Edits, EscapeForEachLayer) {
  expectRows({
      {HERE, R"(<iframe srcdoc="<a href='x'>">)", R"(a&"'b)",
       R"(<iframe srcdoc="<a href='a&amp;amp;&quot;&amp;#39;b'>">)"},
      {HERE, R"(<iframe srcdoc="<a href=&quot;x&quot;>">)", R"(a")",
       R"(<iframe srcdoc="<a href=&quot;a&amp;quot;&quot;>">)"},
      {HERE, R"(<iframe srcdoc="<a href>">)", "a b", R"(<iframe srcdoc="<a href='a b'>">)"},
      {HERE, R"(<iframe srcdoc=<a&#32;href&gt;>)", "a",
       R"(<iframe srcdoc=<a&#32;href=&quot;a&quot;&gt;>)"},
      {HERE, R"_(<iframe srcdoc="<iframe srcdoc='<p style=a:url(x)>'>">)_", "b'c",
       R"_(<iframe srcdoc="<iframe srcdoc='<p style=a:url(b\&amp;amp;#39;c)>'>">)_"},
      {HERE, R"(<noscript><img src="x"></noscript>)", "</noscript>",
       R"(<noscript><img src="&lt;/noscript>"></noscript>)"},
      {HERE, R"(<a href=1><noscript><iframe srcdoc="&lt;img src=x>"></iframe></noscript>)", "a b",
       R"(<a href=1><noscript><iframe srcdoc="&lt;img src=a&amp;#32;b>"></iframe></noscript>)"},
  });
}

TEST(Edits, WriteInTheEncodingOfThePage) {
  expectRows({
      {HERE, "<a href=x>", "é€", "<a href=\xE9\x80>", "windows-1252"},
      {HERE, "<a href=x>", "я日", "<a href=&#1103;&#26085;>", "windows-1252"},
      {HERE, "<a href=x>", "\xC2\x80", "!not_in_encoding", "windows-1252"},
      {HERE, "<style>@import 'x'</style>", "я", "<style>@import '\\44f '</style>", "windows-1252"},
      {HERE, "<a href=x>", "日", "<a href=\x93\xFA>", "shift_jis"},
      {HERE, "<a href=x>", "\xC2\xA5", "<a href=&#165;>", "shift_jis"},
      {HERE, "<a href=x>", "é", "<a href=&#233;>", "iso-2022-jp"},
      {HERE, "<a href='\x1B$BF|\x1B(B'>", "a", "<a href='a\x1B(B'>", "iso-2022-jp"},
      {HERE, "<\0a\0 \0h\0r\0e\0f\0=\0x\0>\0"s, "é😀",
       "<\0a\0 \0h\0r\0e\0f\0=\0\xE9\0\x3D\xD8\x00\xDE>\0"s, "utf-16le"},
  });
}

TEST(Edits, ChangeManyReferencesAtOnce) {
  const Page page("<base href=/a/><img src=b srcset='c, d 2x'><a href=e>");
  const EditResult result = applyEdits(
      page,
      {{4, "E&E", "e"}, {1, "BBB", {}}, {3, "", {}}, {2, "c", {}}, {9, "", {}}, {0, "/", "x"}});
  EXPECT_EQ(result.bytes, "<base href=/a/><img src=BBB srcset='c, d 2x'><a href=E&amp;E>");
  ASSERT_EQ(result.spans.size(), 6U);
  EXPECT_EQ(result.spans[0].begin, 53U);
  EXPECT_EQ(result.spans[0].end, 60U);
  EXPECT_EQ(result.spans[1].begin, 24U);
  EXPECT_EQ(result.spans[1].end, 27U);
  EXPECT_EQ(result.spans[2].end, 0U);
  ASSERT_EQ(result.refused.size(), 3U);
  EXPECT_EQ(result.refused[0].edit, 2U);
  EXPECT_EQ(result.refused[0].reason, EditRefusal::split);
  EXPECT_EQ(result.refused[1].edit, 4U);
  EXPECT_EQ(result.refused[1].reason, EditRefusal::noReference);
  EXPECT_EQ(result.refused[2].edit, 5U);
  EXPECT_EQ(result.refused[2].reason, EditRefusal::notExpected);
}

TEST(Edits, RefuseTheLaterOfTwoOfOneReference) {
  const Page page("<a href=x>");
  const EditResult result = applyEdits(page, {{0, "a", {}}, {0, "b", {}}});
  EXPECT_EQ(result.bytes, "<a href=a>");
  ASSERT_EQ(result.refused.size(), 1U);
  EXPECT_EQ(result.refused[0].edit, 1U);
  EXPECT_EQ(result.refused[0].reason, EditRefusal::overlaps);
}

TEST(Edits, LetABaseChangeWhatOthersResolveTo) {
  PageOptions options;
  options.url = "http://h.test/";
  const Page page("<base href=/a/><a href=b>", options);
  const EditResult result = applyEdits(page, {{0, "/c/", {}}});
  EXPECT_EQ(result.bytes, "<base href=/c/><a href=b>");
  EXPECT_TRUE(result.refused.empty());
}

TEST(Edits, TakeBytesAwayBesideReferences) {
  const std::string text = "<script integrity=abc src=x></script><img src=y>";
  const Page page(text);
  const EditResult result = applyEdits(page, {{0, "local.js", {}}},
                                       {{{7, 21}, "", " integrity=abc"}, {{49, 50}, "", {}}});
  EXPECT_EQ(result.bytes, "<script src=local.js></script><img src=y>");
  ASSERT_EQ(result.refused.size(), 1U);
  EXPECT_EQ(result.refused[0].edit, 2U);
  EXPECT_EQ(result.refused[0].reason, EditRefusal::noReference);
}

struct ByteRow {
  Here here;
  std::string page;
  ByteEdit edit;
  std::string want;
};

TEST(Edits, LetByteEditsChangeWhatTheyHold) {
  const std::vector<ByteRow> rows = {
      {HERE, "<a href=x><a href=y>", {{0, 10}, "", {}}, "<a href=y>"},
      {HERE, "<a href=y>", {{0, 0}, "<a href=x>", {}}, "<a href=x><a href=y>"},
      {HERE, "<a href=x><a href=y>", {{8, 8}, "z", {}}, "!changes_others"},
      {HERE, "<a href=x><a href=y>", {{0, 0}, "<!--", {}}, "!changes_others"},
      {HERE, "<meta charset=utf-8><a href=\xC3\xA9>", {{6, 19}, "", {}}, "!changes_encoding"},
      {HERE, "<p><a href=x>", {{0, 3}, "", "<b>"}, "!not_expected"},
      {HERE, "<p><a href=x>", {{2, 1}, "", {}}, "!no_reference"},
  };
  for (const ByteRow& row : rows) {
    const Page page(row.page);
    const EditResult result = applyEdits(page, {}, {row.edit});
    const std::string found =
        result.refused.empty() ? result.bytes : "!" + std::string(nameOf(result.refused[0].reason));
    EXPECT_EQ(found, row.want) << row.here.file << ":" << row.here.line;
  }
}

TEST(Edits, ChangeStyleSheets) {
  const StyleSheet sheet("@charset \"windows-1252\";@import 'a';b{c:url(d)}");
  const EditResult result = applyEdits(sheet, {{0, "é</style", {}}, {1, "я(", {}}});
  EXPECT_TRUE(result.refused.empty());
  EXPECT_EQ(result.bytes, "@charset \"windows-1252\";@import '\xE9</style';b{c:url(\\44f \\()}");
}

TEST(Edits, HaveANameAndASentenceForEachRefusal) {
  for (int i = 0; i <= static_cast<int>(EditRefusal::tooLarge); ++i) {
    EXPECT_FALSE(nameOf(static_cast<EditRefusal>(i)).empty());
    EXPECT_FALSE(sentenceOf(static_cast<EditRefusal>(i)).empty());
  }
}

}  // namespace
}  // namespace pagescan::tests
