#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "rw/rwbounds.h"
#include "support/placement.h"
#include "support/record_lines.h"
#include "support/texts.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

constexpr const char* kPageUrl = "http://w1/d/page.html?x";

struct StyleCase {
  Here here;
  std::string_view css;
  std::string_view records;
};

void parseStyle(const StyleCase& row, Placement& place, bool raises) {
  RecordLines sink;
  const RWCString& css = place.constString(row.css);
  CHTMLOffsetParser parser(kPageUrl);
  parser.SetDietVirtualQueue(&sink);
  if (raises) {
    EXPECT_THROW(parser.ParseCSS(css), RWBoundsErr);
  } else {
    EXPECT_NO_THROW(parser.ParseCSS(css));
  }
  EXPECT_EQ(sink.text, row.records);
  EXPECT_EQ(bytesOf(css), row.css);
}

void expectStyleRecords(const StyleCase& row, Placement& place) {
  parseStyle(row, place, false);
}
void expectBoundsError(const StyleCase& row, Placement& place) {
  parseStyle(row, place, true);
}

constexpr StyleCase kUrls[] = {
    {HERE, ""sv, ""},
    {HERE, "p { color: red }"sv, ""},
    {HERE, "body { background: url(img/bg.gif) }"sv,
     "IMG src=img/bg.gif@23->http://w1/d/img/bg.gif\n"},
    {HERE, "p{a:url(A.gif)} q{b:URL(\"B.gif\")}"sv,
     "IMG src=A.gif@8->http://w1/d/A.gif\nIMG src=B.gif@25->http://w1/d/B.gif\n"},
    {HERE, "p{a:uRl('a')}"sv, "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "url(a)"sv, "IMG src=a@4->http://w1/d/a\n"},
    {HERE, "url(a)url(b)"sv, "IMG src=a@4->http://w1/d/a\nIMG src=b@10->http://w1/d/b\n"},
    {HERE, "p{a:url(/x),url(http://h/y)}"sv,
     "IMG src=/x@8->http://w1/x\nIMG src=http://h/y@16->http://h/y\n"},
    {HERE, "p{a:url(data:b)}"sv, "IMG src=data:b@8->data:b\n"},
    {HERE, "p{a:url(%41?%41)}"sv, "IMG src=%41?%41@8->http://w1/d/A?%41\n"},
    // Text and offsets count NUL bytes.
    {HERE, "p{}\0q{b:url(y)}"sv, "IMG src=y@12->http://w1/d/y\n"},
    // Nothing to take.
    {HERE, "p{x:url(x.gif}"sv, ""},
    {HERE, "p{x:url("sv, ""},
    {HERE, "p{x:url()}"sv, ""},
    {HERE, "p{x:url (a)}"sv, ""},
    {HERE, "p{x:url()y:url(a)}"sv, "IMG src=a@15->http://w1/d/a\n"},
    {HERE, "url("sv, ""},
    {HERE, "url"sv, ""},
    // A place in the page alone is dropped.
    {HERE, "url(#a)"sv, ""},
    {HERE, "url('#a')"sv, ""},
    {HERE, "a{x:\"#a\"}"sv, ""},
    {HERE, "url(a#b)"sv, "IMG src=a#b@4->http://w1/d/a#b\n"},
    {HERE, "url(#a)url(b)"sv, "IMG src=b@11->http://w1/d/b\n"},
};

TEST(ParseCSS, RecordsEveryUrl) {
  forEachPlacement(kUrls, expectStyleRecords);
}

constexpr StyleCase kQuotes[] = {
    // Every leading and trailing quote of the first one's kind goes, the offset moves by one.
    {HERE, "url(\"a\")"sv, "IMG src=a@5->http://w1/d/a\n"},
    {HERE, "url(''a''')"sv, "IMG src=a@5->http://w1/d/a\n"},
    {HERE, "url(\"a'b\")"sv, "IMG src=a'b@5->http://w1/d/a'b\n"},
    {HERE, "url(\"a)"sv, "IMG src=a@5->http://w1/d/a\n"},
    {HERE, "url(\"a')"sv, "IMG src=a'@5->http://w1/d/a'\n"},
    {HERE, "url(a\")"sv, "IMG src=a\"@4->http://w1/d/a\"\n"},
    {HERE, "url(\"\")"sv, ""},
    {HERE, "url(')"sv, ""},
    // Nothing else is trimmed.
    {HERE, "url( \"a.gif\" )"sv, "IMG src= \"a.gif\" @4->http://w1/d/\"a.gif\"\n"},
    {HERE, "url( a )"sv, "IMG src= a @4->http://w1/d/a\n"},
    {HERE, "url(\" a \")"sv, "IMG src= a @5->http://w1/d/a\n"},
    {HERE, "url( )"sv, "IMG src= @4->http://w1/d/\n"},
    {HERE, "url(a(b)c)"sv, "IMG src=a(b@4->http://w1/d/a(b\n"},
    // A quoted text is taken for a URL only where no "url(" follows it.
    {HERE, "a { font-family: \"Arial\" }"sv, "IMG src=Arial@18->http://w1/d/Arial\n"},
    {HERE, "\"x\""sv, "IMG src=x@1->http://w1/d/x\n"},
    {HERE, "\"q\" p{a:url(x)}"sv, "IMG src=x@12->http://w1/d/x\n"},
    {HERE, "p{a:url(x)} \"q\""sv, "IMG src=x@8->http://w1/d/x\nIMG src=q@13->http://w1/d/q\n"},
    {HERE, "'x'"sv, ""},
    {HERE, "\"x"sv, ""},
    {HERE, "\""sv, ""},
    {HERE, "\"\""sv, ""},
    {HERE, "\"\"\"x\""sv, "IMG src=x@3->http://w1/d/x\n"},
    {HERE, "\"'x'\""sv, "IMG src=x@2->http://w1/d/x\n"},
};

TEST(ParseCSS, TakesQuotesOff) {
  forEachPlacement(kQuotes, expectStyleRecords);
}

constexpr StyleCase kImports[] = {
    {HERE, "@import \"a.css\";"sv, "IMG src=a.css@9->http://w1/d/a.css\n"},
    {HERE, "@import url('a.css');"sv, "IMG src=a.css@13->http://w1/d/a.css\n"},
    {HERE, "@import url(a.css);"sv, "IMG src=a.css@12->http://w1/d/a.css\n"},
    {HERE, "@IMPORT URL(a);"sv, "IMG src=a@12->http://w1/d/a\n"},
    {HERE, "@import \"a\" \"b\";"sv, "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "@import url(a) url(b);"sv, "IMG src=a@12->http://w1/d/a\n"},
    {HERE, "@import \"a\";@import \"b\";"sv,
     "IMG src=a@9->http://w1/d/a\nIMG src=b@21->http://w1/d/b\n"},
    {HERE, "p{a:url(x)} @import \"y\";"sv,
     "IMG src=x@8->http://w1/d/x\nIMG src=y@21->http://w1/d/y\n"},
    // A place in the page alone is kept here.
    {HERE, "@import url(#a);"sv, "IMG src=#a@12->http://w1/d/page.html#a\n"},
    {HERE, "@import \"#a\";"sv, "IMG src=#a@9->http://w1/d/page.html#a\n"},
    {HERE, "@import url();"sv, ""},
    {HERE, "@import \"\";"sv, ""},
    {HERE, "@import url('');"sv, ""},
    // The target does not end before the ";": no record, and the scan goes on after the ";".
    {HERE, "@import \"a;b\";"sv, ""},
    {HERE, "@import;url(b)"sv, "IMG src=b@12->http://w1/d/b\n"},
    {HERE, "@import url(a;b) ;c\"d\""sv, "IMG src=d@20->http://w1/d/d\n"},
    {HERE, "@import x; p{a:url(y)}"sv, "IMG src=y@19->http://w1/d/y\n"},
    {HERE, "@import \"a\"; url(b)"sv, "IMG src=b@17->http://w1/d/b\n"},
    // Something is missing: the pass ends.
    {HERE, "@import \"a\""sv, ""},
    {HERE, "@import a;"sv, ""},
    {HERE, "@import"sv, ""},
    {HERE, "@import \""sv, ""},
    {HERE, "@import \"a;"sv, ""},
    {HERE, "@import url("sv, ""},
    {HERE, "@import url(a;"sv, ""},
    {HERE, "@impor \"a\";"sv, "IMG src=a@8->http://w1/d/a\n"},
    // Bounds are not looked at in this form: the name may stand at the start.
    {HERE, "a:@import \"b\";"sv, "IMG src=b@11->http://w1/d/b\n"},
};

TEST(ParseCSS, RecordsImports) {
  forEachPlacement(kImports, expectStyleRecords);
}

constexpr StyleCase kStyleComments[] = {
    {HERE, "/* url(x.gif) */ p { }"sv, ""},
    {HERE, "/* a */url(b)"sv, "IMG src=b@11->http://w1/d/b\n"},
    {HERE, "/* \"a\" @import */ \"b\""sv, "IMG src=b@19->http://w1/d/b\n"},
    {HERE, "/* @import \"a\"; */@import \"b\";"sv, "IMG src=b@27->http://w1/d/b\n"},
    {HERE, "url(a)/* url(b) */url(c)"sv,
     "IMG src=a@4->http://w1/d/a\nIMG src=c@22->http://w1/d/c\n"},
    // A stray "*/" makes the opener merely skipped.
    {HERE, "*/ /* url(a.gif) */"sv, "IMG src=a.gif@10->http://w1/d/a.gif\n"},
    {HERE, "/*/ url(a)"sv, "IMG src=a@8->http://w1/d/a\n"},
    {HERE, "/* a */ */ /* url(b) */"sv, "IMG src=b@18->http://w1/d/b\n"},
    // Without its end the pass ends.
    {HERE, "/* url(a)"sv, ""},
    {HERE, "url(a)/* url(b)"sv, "IMG src=a@4->http://w1/d/a\n"},
    {HERE, "/*"sv, ""},
    // A comment after the token, or after the "@import", is none.
    {HERE, "url(/*)*/"sv, "IMG src=/*@4->http://w1/*\n"},
    {HERE, "@import /* c */ \"a\";"sv, "IMG src=a@17->http://w1/d/a\n"},
    {HERE, "@import /* \"c\" */ \"a\";"sv, "IMG src=c@12->http://w1/d/c\n"},
    {HERE, "\"a/*b\""sv, "IMG src=a/*b@1->http://w1/d/a/*b\n"},
    {HERE, "\"a /* b\" /* url(c) */"sv, ""},
};

TEST(ParseCSS, PassesComments) {
  forEachPlacement(kStyleComments, expectStyleRecords);
}

constexpr StyleCase kBoundsErrors[] = {
    {HERE, "background:url(a.gif)"sv, ""},
    {HERE, "background:url(x.gif)"sv, ""},
    {HERE, "a:url(x)"sv, ""},
    {HERE, ":url(x)"sv, ""},
    {HERE, "a:\"x\""sv, ""},
    {HERE, "a\f:url(x)"sv, ""},
    {HERE, "\0:url(x)"sv, ""},
    {HERE, "a:url()"sv, ""},
    {HERE, "a:url(#x)"sv, ""},
    {HERE, "/**/a:url(x)"sv, ""},
    {HERE, "a:b:url(x)"sv, ""},
    // Records made before stay.
    {HERE, "url(a)b:url(c)"sv, "IMG src=a@4->http://w1/d/a\n"},
    {HERE, "url(a:b)url(c)"sv, "IMG src=a:b@4->a:b\n"},  // a ":" inside an earlier URL
    {HERE, "\"a\"b:\"c\""sv, "IMG src=a@1->http://w1/d/a\n"},
};

TEST(ParseCSS, RaisesTheBoundsErrorAfterAPropertyAtTheStart) {
  forEachPlacement(kBoundsErrors, expectBoundsError);
}

constexpr StyleCase kDelimited[] = {
    {HERE, " a:url(x)"sv, "IMG src=x@7->http://w1/d/x\n"},
    {HERE, "\ta:url(x)"sv, "IMG src=x@7->http://w1/d/x\n"},
    {HERE, "\ra:url(x)"sv, "IMG src=x@7->http://w1/d/x\n"},
    {HERE, "\na:url(x)"sv, "IMG src=x@7->http://w1/d/x\n"},
    {HERE, ";a:url(x)"sv, "IMG src=x@7->http://w1/d/x\n"},
    {HERE, "{a:url(x)"sv, "IMG src=x@7->http://w1/d/x\n"},
    {HERE, "a{:url(x)"sv, "IMG src=x@7->http://w1/d/x\n"},
    {HERE, "a: b:url(x)"sv, "IMG src=x@9->http://w1/d/x\n"},
    {HERE, "/* c */b:url(x)"sv, "IMG src=x@13->http://w1/d/x\n"},
    // Only the last ":" before the URL counts, one inside it does not.
    {HERE, "url(a:b)"sv, "IMG src=a:b@4->a:b\n"},
    // Without its ")" the URL ends the pass before its property is looked for.
    {HERE, "a:url(x"sv, ""},
    {HERE, "a:url("sv, ""},
};

TEST(ParseCSS, AcceptsADelimiterBeforeTheProperty) {
  forEachPlacement(kDelimited, expectStyleRecords);
}

TEST(ParseCSS, ForgetsThePageOfTheLastPass) {
  CHTMLOffsetParser parser(kPageUrl);
  RecordLines sink;
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML("<img src=a>", 11);
  parser.ParseCSS("url(b)");
  EXPECT_EQ(sink.text, "IMG src=a@9->http://w1/d/a\nIMG src=b@4->http://w1/d/b\n");
  EXPECT_EQ(parser.findTagName().length(), 0U);
  testing::internal::CaptureStdout();
  parser.PrintAll();
  EXPECT_EQ(testing::internal::GetCapturedStdout().substr(0, 25), "Queue contains 2 objects\n");
}

// --- Large texts ------------------------------------------------------------------------------

class CountingSink : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject*) override {
    ++records;
    return true;
  }

  std::size_t records = 0;
};

struct LargeCase {
  Here here;
  std::string_view head;
  std::string_view part;
  std::string_view tail;
  std::size_t recordsPerPart;
  std::size_t moreRecords;
};
constexpr std::size_t kParts = 200000;
constexpr LargeCase kLarge[] = {
    {HERE, "", "url(a)", "", 1, 0},
    {HERE, "", "\"a\"", "", 1, 0},
    {HERE, "", "url(", "", 0, 0},
    {HERE, "", "url(", ")", 0, 1},
    {HERE, "", "/**/", "url(a)", 0, 1},
    {HERE, "", "*/ /* ", "url(a)", 0, 1},
    {HERE, "", "/*", "", 0, 0},
    {HERE, "", "@import;", "url(a)", 0, 1},
    {HERE, "", "@import;", "", 0, 0},
    {HERE, "", "@import \"a\";", "", 1, 0},
    {HERE, "", "@import url(a)", "", 0, 0},
    {HERE, "", "@import ", ";\"a\"", 0, 1},
    {HERE, "{", "url(a:b)", "", 1, 0},
    {HERE, "{", "a:b;", "url(a)", 0, 1},
    {HERE, "", "p{a:url(b)}", "", 1, 0},
};

TEST(ParseCSS, EndsOnLargeTexts) {
  forEachRow(kLarge, [](const LargeCase& row) {
    const std::string css =
        std::string(row.head) + repeated(row.part, kParts) + std::string(row.tail);
    CountingSink sink;
    CHTMLOffsetParser parser("http://h/");
    parser.SetDietVirtualQueue(&sink);
    parser.ParseCSS(stringOf(css));
    EXPECT_EQ(sink.records, row.recordsPerPart * kParts + row.moreRecords);
  });
}

TEST(ParseCSS, LooksForTheSamePropertyOnlyOnce) {
  const std::string css = ";" + std::string(500000, 'x') + ":" + repeated("url(a)", kParts);
  CountingSink sink;
  CHTMLOffsetParser parser("http://h/");
  parser.SetDietVirtualQueue(&sink);
  parser.ParseCSS(stringOf(css));
  EXPECT_EQ(sink.records, kParts);
}

}  // namespace
}  // namespace pagescan::tests
