#include "zkhtmloffsetparser.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <iostream>
#include <locale>
#include <string>
#include <string_view>
#include <type_traits>

#include "support/placement.h"
#include "support/record_lines.h"
#include "support/texts.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldiettransactiondata.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

constexpr const char* kPageUrl = "http://w1/d/page.html?x";

struct PageCase {
  Here here;
  std::string_view page;
  std::string_view records;
};

// The page stands as a NUL-terminated text: a read after its NUL is caught.
void expectRecords(const PageCase& row, Placement& place) {
  RecordLines sink;
  CHTMLOffsetParser parser(place.cString(kPageUrl));
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML(place.cString(row.page), row.page.size());
  EXPECT_EQ(sink.text, row.records);
}

constexpr PageCase kTable[] = {
    {HERE, "<BASE href=/b/>", "BASE href=/b/@11->http://w1/b/\n"},
    {HERE, "<BODY background=a>", "BODY background=a@17->http://w1/d/a\n"},
    {HERE, "<TABLE background=a>", "TABLE background=a@18->http://w1/d/a\n"},
    {HERE, "<TD background=a>", "TD background=a@15->http://w1/d/a\n"},
    {HERE, "<TH background=a>", "TH background=a@15->http://w1/d/a\n"},
    {HERE, "<EMBED src=a>", "EMBED src=a@11->http://w1/d/a\n"},
    {HERE, "<FRAME src=a>", "FRAME src=a@11->http://w1/d/a\n"},
    {HERE, "<IFRAME src=p.html>", "IFRAME src=p.html@12->http://w1/d/p.html\n"},
    {HERE, "<IMG src=a>", "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "<SCRIPT src=a>", "SCRIPT src=a@12->http://w1/d/a\n"},
    {HERE, "<LINK href=a>", "LINK href=a@11->http://w1/d/a\n"},
    {HERE, "<INPUT src=a>", "INPUT src=a@11->http://w1/d/a\n"},
    {HERE, "<XML src=a>", "XML src=a@9->http://w1/d/a\n"},
    {HERE, "<?IMPORT namespace=x implementation=i.htc>",
     "?IMPORT implementation=i.htc@36->http://w1/d/i.htc\n"},
    // Attributes in the order of the table, and only those of the tag's list.
    {HERE, "<IMG lowsrc=l.gif src=s.gif>",
     "IMG src=s.gif@22->http://w1/d/s.gif lowsrc=l.gif@12->http://w1/d/l.gif\n"},
    {HERE, "<img dynsrc=1 lowsrc=2 href=3 src=4>",
     "IMG src=4@34->http://w1/d/4 lowsrc=2@21->http://w1/d/2 dynsrc=1@12->http://w1/d/1\n"},
    {HERE, "<link rel=stylesheet href=s.css>",
     "LINK href=s.css@26->http://w1/d/s.css rel=stylesheet@10->http://w1/d/stylesheet\n"},
    {HERE, "<object data=d archive=1 classid=\"clsid:2\" codebase=3 code=4>",
     "OBJECT code=4@59->http://w1/d/4 codebase=3@52->http://w1/d/3 "
     "classid=clsid:2@34->http://w1/d/clsid:2 archive=1@23->http://w1/d/1\n"},
    // APPLET's list runs on into OBJECT's: "classid" is recorded, nothing comes twice.
    {HERE, "<applet classid=c code=k.class>",
     "APPLET code=k.class@23->http://w1/d/k.class classid=c@16->http://w1/d/c\n"},
    {HERE, "<applet object=o data=1 archive=2 src=3 codebase=4 code=5 classid=6>",
     "APPLET code=5@56->http://w1/d/5 codebase=4@49->http://w1/d/4 src=3@38->http://w1/d/3 "
     "archive=2@32->http://w1/d/2 data=1@22->http://w1/d/1 classid=6@66->http://w1/d/6\n"},
    // No tag of interest.
    {HERE, "<a href=x.html>", ""},
    {HERE, "<area href=x.html>", ""},
    {HERE, "<TEST x=1>", ""},
    {HERE, "<TEST src=1 href=2 code=3>", ""},
    {HERE, "<video src=a><source src=b><iframes src=c><im src=d>", ""},
    {HERE, "<img alt=a href=b background=c>", ""},
    {HERE, "<body src=a><td src=b><base src=c><link src=d>", ""},
};

TEST(ParseHTML, RecordsTheTagsOfTheTable) {
  forEachPlacement(kTable, expectRecords);
}

constexpr PageCase kTagNames[] = {
    {HERE, "<img SRC=\"a.gif\">", "IMG src=a.gif@10->http://w1/d/a.gif\n"},
    {HERE, "<iMg src=a>", "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "<?import implementation=a>", "?IMPORT implementation=a@24->http://w1/d/a\n"},
    {HERE, "<img\tsrc=a><img\nsrc=b><img\rsrc=c>",
     "IMG src=a@9->http://w1/d/a\nIMG src=b@20->http://w1/d/b\nIMG src=c@31->http://w1/d/c\n"},
    // "~" ends a name, "/" and form feed do not.
    {HERE, "<img~src=a.gif>", "IMG src=a.gif@9->http://w1/d/a.gif\n"},
    {HERE, "<img/ src=a>", ""},
    {HERE, "<IMG/>", ""},
    {HERE, "<img\fsrc=a>", ""},
    {HERE, "</img src=a>", ""},
    {HERE, "<\xE4img src=a>", ""},
    // Delimiters before a name are passed over.
    {HERE, "< <IMG src=a>", "IMG src=a@11->http://w1/d/a\n"},
    {HERE, "< \t\r\n~img src=a>", "IMG src=a@14->http://w1/d/a\n"},
    {HERE, "<>img src=a>", "IMG src=a@10->http://w1/d/a\n"},
    {HERE, "<<<img src=a>", "IMG src=a@11->http://w1/d/a\n"},
    {HERE, "text src=a>img src=b>", ""},
    // The page ends in or after a name.
    {HERE, "", ""},
    {HERE, "<", ""},
    {HERE, "< >~", ""},
    {HERE, "<img", ""},
    {HERE, "<img ", ""},
    {HERE, "<img>", ""},
    {HERE, "<frame", ""},
    {HERE, "text", ""},
};

TEST(ParseHTML, ReadsTagNamesUpToADelimiter) {
  forEachPlacement(kTagNames, expectRecords);
}

constexpr PageCase kValues[] = {
    {HERE, "<img src='a b.gif'>", "IMG src=a b.gif@10->http://w1/d/a%20b.gif\n"},
    {HERE, "<img src = a>", "IMG src=a@11->http://w1/d/a\n"},
    {HERE, "<img alt=x src=a>", "IMG src=a@15->http://w1/d/a\n"},
    {HERE, "<img src=a src=b SRC=c>", "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "<img src=a%41&amp;b>", "IMG src=a%41&amp;b@9->http://w1/d/aA&amp;b\n"},
    {HERE, "<img src=http://h/x><img src=//h/y><img src=/z>",
     "IMG src=http://h/x@9->http://h/x\nIMG src=//h/y@29->http://h/y\nIMG "
     "src=/z@44->http://w1/z\n"},
    // Without a value: offset -1 and nothing resolved; an empty one has its place.
    {HERE, "<img src>", "IMG src=@-1->\n"},
    {HERE, "<img src lowsrc=a>", "IMG src=@-1-> lowsrc=a@16->http://w1/d/a\n"},
    {HERE, "<img src=\"\">", "IMG src=@10->\n"},
    {HERE, "<img src=>", "IMG src=@9->\n"},
    {HERE, "<img src=\" \">", "IMG src= @10->http://w1/d/\n"},
    // A tag without its ">" yields no record.
    {HERE, "<img src=a.gif", ""},
    {HERE, "<img src=a.gif <td background=b", ""},
    {HERE, "<frame src=a", ""},
    // One that borrows the ">" of the next tag swallows that tag.
    {HERE, "<img src=a <td background=b>", "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "<img src=a <td background=b> <td background=c>",
     "IMG src=a@9->http://w1/d/a\nTD background=c@44->http://w1/d/c\n"},
    // The first ">" ends the tag for the pass, also inside a value; the value is read whole.
    {HERE, "<img src=\"a>b.gif\">", "IMG src=a>b.gif@10->http://w1/d/a>b.gif\n"},
    {HERE, "<img alt=\"> <td background=q>\" src=s>",
     "IMG src=s@35->http://w1/d/s\nTD background=q@27->http://w1/d/q\n"},
    {HERE, "<img alt=\"<td background=q>\" src=s>", "IMG src=s@33->http://w1/d/s\n"},
    // A value that does not end.
    {HERE, "<img src=\"a>", ""},
    {HERE, "<img src='a> <td background=b>", "TD background=b@28->http://w1/d/b\n"},
    // Text after a bare tag can be taken for its attributes.
    {HERE, "<IMG>src=a.gif <B>", "IMG src=a.gif@9->http://w1/d/a.gif\n"},
    {HERE, "<td>background=a<p>", "TD background=a<p@15->http://w1/d/a<p\n"},
    {HERE, "<td>x background=a>", "TD background=a@17->http://w1/d/a\n"},
    {HERE, "<td >background=a>", ""},
    {HERE, "<td><td background=a>",
     "TD background=a@19->http://w1/d/a\n"
     "TD background=a@19->http://w1/d/a\n"},
};

TEST(ParseHTML, RecordsValuesWithTheirOffsets) {
  forEachPlacement(kValues, expectRecords);
}

// The ">" of each tag stands in one of its values, and the values of the later tags end inside a
// value of the earlier ones: far after, all of them read the same attributes.
TEST(ParseHTML, ReadsOnWhereEarlierTagsRead) {
  const std::string page = repeated("<img z=\">\"", 3) + "<img a='><img b=\">\"<img c=\">\"" +
                           repeated(" d=e", 100) + " ' " + repeated(" f=g", 100) + " src=x>";
  const std::string record = "IMG src=x@" + std::to_string(page.size() - 2) + "->http://w1/d/x\n";
  const std::string expected = repeated(record, 6);
  forEachPlacement(std::initializer_list<PageCase>{{HERE, page, expected}}, expectRecords);
}

constexpr PageCase kFrames[] = {
    // Every frame is reported, one without a usable "src" by a placeholder.
    {HERE, "<frame name=f>", "FRAME src=@-1->\n"},
    {HERE, "<FRAME>", "FRAME src=@-1->\n"},
    {HERE, "<iframe>", "IFRAME src=@-1->\n"},
    {HERE, "<iFrame href=x>", "IFRAME src=@-1->\n"},
    {HERE, "<frame src>", "FRAME src=@-1->\n"},
    {HERE, "<frame src=\"\">", "FRAME src=@12->\n"},
    {HERE, "<frame src=\"x>", "FRAME src=@-1->\n"},
    {HERE, "<frame =x src=y>", "FRAME src=@-1->\n"},
    {HERE, "<frame name=f><frame src=x>", "FRAME src=@-1->\nFRAME src=x@25->http://w1/d/x\n"},
    {HERE, "<frameset src=x>", ""},
};

TEST(ParseHTML, ReportsEveryFrame) {
  forEachPlacement(kFrames, expectRecords);
}

constexpr PageCase kBlanked[] = {
    {HERE, "<script>document.write('<img src=a.gif>')</script>", ""},
    {HERE, "<script src=s.js><img src=a.gif></script><img src=b>",
     "SCRIPT src=s.js@12->http://w1/d/s.js\nIMG src=b@50->http://w1/d/b\n"},
    {HERE, "<!-- <img src=a.gif> --><img src=b>", "IMG src=b@33->http://w1/d/b\n"},
    {HERE, "<!--><img src=a><!-- -->", "IMG src=a@14->http://w1/d/a\n"},
    {HERE, "<!-- <img src=a.gif>", "IMG src=a.gif@14->http://w1/d/a.gif\n"},
    {HERE, "<script><img src=a>", "SCRIPT src=a@17->http://w1/d/a\nIMG src=a@17->http://w1/d/a\n"},
    // A stray "-->" ends the blanking of comments.
    {HERE, "<!-- a --> --> <!-- <img src=y> -->", "IMG src=y@29->http://w1/d/y\n"},
    // A comment inside a script goes with the script, a script inside a comment first.
    {HERE, "<script><!-- </script> --> <img src=a>", "IMG src=a@36->http://w1/d/a\n"},
    {HERE, "<!-- <script> --> </script> <img src=a>", "IMG src=a@37->http://w1/d/a\n"},
    {HERE, "<img src=<!--x--> lowsrc=b>", "IMG src=<p@9->http://w1/d/<p\n"},
};

TEST(ParseHTML, SeesNoTagsInScriptsAndComments) {
  forEachPlacement(kBlanked, expectRecords);
}

constexpr PageCase kNulBytes[] = {
    {HERE, "<img src=a>\0<img src=b>"sv, "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "\0<img src=b>"sv, ""},
    {HERE, "<img src=a\0>"sv, ""},
};

TEST(ParseHTML, EndsThePageAtANulByte) {
  forEachPlacement(kNulBytes, expectRecords);
}

TEST(ParseHTML, IgnoresTheLengthGiven) {
  for (const unsigned long length : {0UL, 3UL, 12UL, ~0UL}) {
    RecordLines sink;
    CHTMLOffsetParser parser(kPageUrl);
    parser.SetDietVirtualQueue(&sink);
    Placement place(Placement::kBeforeGuardPage);
    parser.ParseHTML(place.cString("<img src=a>"), length);
    EXPECT_EQ(sink.text, "IMG src=a@9->http://w1/d/a\n");
  }
}

TEST(ParseHTML, TakesANullPageForAnEmptyOne) {
  RecordLines sink;
  CHTMLOffsetParser parser(kPageUrl);
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML("<img src=a>", 11);
  parser.ParseHTML(nullptr, 5);
  EXPECT_EQ(sink.text, "IMG src=a@9->http://w1/d/a\n");
  EXPECT_EQ(parser.findTagName().length(), 0U);
}

struct BaseCase {
  Here here;
  const char* pageUrl;
  std::string_view records;
};
constexpr BaseCase kBases[] = {
    {HERE, "http://w1/d/page.html?x",
     "BASE href=http://o/@11->http://o/\nIMG src=a@32->http://w1/d/a\n"},
    {HERE, " HTTPS://H:8/%7eu/#top ",
     "BASE href=http://o/@11->http://o/\nIMG src=a@32->https://H:8/~u/a\n"},
    {HERE, "http://h", "BASE href=http://o/@11->http://o/\nIMG src=a@32->http://h/a\n"},
    {HERE, "", "BASE href=http://o/@11->http://o/\nIMG src=a@32->//a\n"},
    {HERE, nullptr, "BASE href=http://o/@11->http://o/\nIMG src=a@32->//a\n"},
};

// The base element is recorded like any other and changes nothing.
TEST(ParseHTML, ResolvesAgainstThePagesUrl) {
  forEachRow(kBases, [](const BaseCase& row) {
    RecordLines sink;
    CHTMLOffsetParser parser(row.pageUrl);
    parser.SetDietVirtualQueue(&sink);
    parser.ParseHTML("<base href=http://o/ > <img src=a>", 0);
    EXPECT_EQ(sink.text, row.records);
  });
}

// --- Records, sinks, steps --------------------------------------------------------------------

TEST(CHTMLOffsetParser, KeepsTheRecordsOfEveryPass) {
  CHTMLOffsetParser parser(kPageUrl);
  parser.ParseHTML("<img src=a>", 11);
  parser.ParseHTML("<td background=b>", 17);
  testing::internal::CaptureStdout();
  parser.PrintAll();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Queue contains 2 objects\n"
            "===== NUMBER: 0\t ===== TagName: IMG\n=== First Attr Name src\n"
            "Name:\tsrc\nValue:\thttp://w1/d/a\nOValue:\ta\nOffset:\t9\n\n"
            "===== NUMBER: 1\t ===== TagName: TD\n=== First Attr Name background\n"
            "Name:\tbackground\nValue:\thttp://w1/d/b\nOValue:\tb\nOffset:\t15\n\n");
}

TEST(CHTMLOffsetParser, PrintsAnEmptyQueue) {
  CHTMLOffsetParser parser(kPageUrl);
  testing::internal::CaptureStdout();
  parser.PrintAll();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Queue contains 0 objects\n");
}

TEST(CHTMLOffsetParser, PrintsAnEmptyFirstNameForNoAttributes) {
  CHTMLOffsetParser parser(kPageUrl);
  auto* const record = new CZKHTMLDietTransactionsObject;
  record->SetTagName("OWN");
  parser.InsertObjectToQueue(record);
  testing::internal::CaptureStdout();
  parser.PrintAll();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Queue contains 1 objects\n"
            "===== NUMBER: 0\t ===== TagName: OWN\n=== First Attr Name \n\n");
}

// What is printed while standard output has a certain locale.
std::string printed(CHTMLOffsetParser& parser, const std::locale& locale) {
  const std::locale before = std::cout.imbue(locale);
  testing::internal::CaptureStdout();
  parser.PrintAll();
  std::cout.imbue(before);
  return testing::internal::GetCapturedStdout();
}

// Numbers as a host's locale may have them: 1.000.
class GroupedDigits : public std::numpunct<char> {
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(CHTMLOffsetParser, PrintsPlainNumbersWhateverTheLocale) {
  std::string page;
  for (int i = 0; i <= 1000; ++i) page += "<img src=a>";
  CHTMLOffsetParser parser(kPageUrl);
  parser.ParseHTML(page.c_str(), page.size());
  const std::string plain = printed(parser, std::locale::classic());
  EXPECT_NE(plain.find("Queue contains 1001 objects\n"), std::string::npos);
  EXPECT_NE(plain.find("NUMBER: 1000\t"), std::string::npos);
  EXPECT_NE(plain.find("Offset:\t11009\n"), std::string::npos);
  EXPECT_TRUE(printed(parser, std::locale(std::locale::classic(), new GroupedDigits)) == plain);
}

TEST(CHTMLOffsetParser, HasNoSinkUnlessGivenOne) {
  CHTMLOffsetParser parser(kPageUrl);
  EXPECT_EQ(parser.GetDietVirtualQueue(), nullptr);
  RecordLines sink;
  parser.SetDietVirtualQueue(&sink);
  EXPECT_EQ(parser.GetDietVirtualQueue(), &sink);
  parser.ParseHTML("<img src=a>", 11);
  parser.SetDietVirtualQueue(nullptr);
  parser.ParseHTML("<img src=b>", 11);
  EXPECT_EQ(sink.text, "IMG src=a@9->http://w1/d/a\n");
  EXPECT_TRUE(std::has_virtual_destructor_v<CHTMLOffsetParser>);
}

// A record that tells when it is destroyed.
class Watched : public CZKHTMLDietTransactionsObject {
 public:
  explicit Watched(bool& alive) : alive_(alive) { alive_ = true; }
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;
  ~Watched() override { alive_ = false; }

 private:
  bool& alive_;
};

TEST(InsertObjectToQueue, ShowsARecordAndTakesItOver) {
  bool alive = false;
  RecordLines sink;
  {
    CHTMLOffsetParser parser(kPageUrl);
    parser.SetDietVirtualQueue(&sink);
    auto* const record = new Watched(alive);
    record->SetTagName("OWN");
    parser.InsertObjectToQueue(record);
    parser.InsertObjectToQueue(nullptr);
    EXPECT_EQ(sink.text, "OWN\n");
    EXPECT_TRUE(alive);
  }
  EXPECT_FALSE(alive);
}

TEST(IsWhiteSpace, DelimitsTagNames) {
  CHTMLOffsetParser parser(kPageUrl);
  for (int c = 0; c < 256; ++c) {
    char byte = static_cast<char>(c);
    EXPECT_EQ(parser.isWhiteSpace(byte), "\t\n\r <>~"sv.find(byte) != std::string_view::npos) << c;
  }
}

TEST(FindTagName, IsEmptyBeforeAndAfterAPass) {
  CHTMLOffsetParser parser(kPageUrl);
  EXPECT_EQ(parser.findTagName().length(), 0U);
  parser.parseHTMLElement("IMG");
  parser.ParseHTML("<img src=a>", 11);
  EXPECT_EQ(parser.findTagName().length(), 0U);
  RecordLines sink;
  parser.SetDietVirtualQueue(&sink);
  parser.parseHTMLElement("IMG");
  parser.parseHTMLElement("FRAME");
  EXPECT_EQ(sink.text, "");
}

// --- Large pages ------------------------------------------------------------------------------

// Counts records and remembers the last offset.
class CountingSink : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    ++records;
    lastOffset = record->GetFirstAttributeObject()->GetAttributeOffset();
    return true;
  }

  std::size_t records = 0;
  int lastOffset = 0;
};

struct LargeCase {
  Here here;
  std::string_view head;
  std::string_view part;
  std::string_view tail;
  std::size_t recordsPerPart;
  int lastOffsetFromEnd;  // of the last record's first attribute
};
constexpr std::size_t kParts = 200000;
constexpr LargeCase kLarge[] = {
    {HERE, "", "<img src=x ", "", 0, 0},
    {HERE, "", "<img", "", 0, 0},
    {HERE, "", "<", "", 0, 0},
    {HERE, "", "<p>", "", 0, 0},
    {HERE, "", "<img src='x ", "", 0, 0},
    {HERE, "", "<img a=\">\" ", "", 0, 0},
    {HERE, "", "<img a=\">\" ", "src=x>", 1, 2},  // every tag reads the one value at the end
    {HERE, "", "<img a=\">\" _=c ", "src=x>", 1, 2},
    {HERE, "", "<img src=\">\" ", "", 1, 3},
    {HERE, "", "<img src='>", "'>", 1, 3},
    {HERE, "", "<frame a=\">\" ", "", 1, 0},
    {HERE, "", "<frame>", "", 1, 0},
    {HERE, "", "<img src=x>", "", 1, 2},
    {HERE, "<img ", "a=b ", "src=x", 0, 0},
    {HERE, "<!--", "<img src=x>", "", 1, 2},
    {HERE, "", "<!-- ", "", 0, 0},
    {HERE, "", "<script ", "", 0, 0},
};

TEST(ParseHTML, EndsOnLargePages) {
  forEachRow(kLarge, [](const LargeCase& row) {
    const std::string page =
        std::string(row.head) + repeated(row.part, kParts) + std::string(row.tail);
    CountingSink sink;
    CHTMLOffsetParser parser("http://h/");
    parser.SetDietVirtualQueue(&sink);
    parser.ParseHTML(page.c_str(), page.size());
    EXPECT_EQ(sink.records, row.recordsPerPart * kParts);
    if (row.lastOffsetFromEnd != 0) {
      EXPECT_EQ(sink.lastOffset, static_cast<int>(page.size()) - row.lastOffsetFromEnd);
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
