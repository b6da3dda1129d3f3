// Sinks that use the parser while it shows them a record: the pass goes on from wherever they left
// it, and ends when they had it read another text.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/placement.h"
#include "support/record_lines.h"
#include "zkhtmldiettransactiondata.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::tests {
namespace {

// Runs an action at its first record.
class ActingSink : public RecordLines {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    RecordLines::insert(record);
    if (acted_) return true;
    acted_ = true;
    action();
    return true;
  }

  std::function<void()> action;

 private:
  bool acted_ = false;
};

const std::string kPage =
    "<img src=a> <Own src=b> <own src=c> <td background=d>" + std::string(100, ' ');

TEST(ParseHTML, GoesOnWhereASinkSteppedTo) {
  CHTMLOffsetParser parser("http://w1/d/page.html");
  ActingSink sink;
  std::string name;
  sink.action = [&] {
    name = std::string(bytesOf(parser.findTagName()));
    parser.parseHTMLElement("EMBED");
  };
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML(kPage.c_str(), 0);
  EXPECT_EQ(name, "Own");
  EXPECT_EQ(sink.text,
            "IMG src=a@9->http://w1/d/a\n"
            "EMBED src=b@21->http://w1/d/b\n"
            "TD background=d@51->http://w1/d/d\n");
}

struct StepCase {
  Here here;
  const char* element;
  std::string_view page;
  std::string_view records;
};
constexpr StepCase kSteps[] = {
    // A tag that is not of interest is passed, its attributes included.
    {HERE, "OWN", "<img src=a><own alt=<td background=b> <td background=c>",
     "IMG src=a@9->http://w1/d/a\nTD background=c@53->http://w1/d/c\n"},
    // Names of interest are those in upper case alone.
    {HERE, "embed", "<img src=a><own src=<td background=b> <td background=c>",
     "IMG src=a@9->http://w1/d/a\nTD background=c@53->http://w1/d/c\n"},
    // Without its ">" it stays where it is.
    {HERE, "OWN", "<img src=a><own src=b", "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "EMBED", "<img src=a><own src=b", "IMG src=a@9->http://w1/d/a\n"},
    {HERE, "FRAME", "<img src=a><own", "IMG src=a@9->http://w1/d/a\n"},
};

TEST(ParseHTML, GoesOnAfterAnElementOfASink) {
  forEachRow(kSteps, [](const StepCase& row) {
    CHTMLOffsetParser parser("http://w1/d/page.html");
    ActingSink sink;
    sink.action = [&] {
      EXPECT_EQ(bytesOf(parser.findTagName()), "own");
      parser.parseHTMLElement(row.element);
    };
    parser.SetDietVirtualQueue(&sink);
    parser.ParseHTML(row.page.data(), row.page.size());
    EXPECT_EQ(sink.text, row.records);
  });
}

TEST(ParseHTML, EndsWhenASinkParsesStyleText) {
  CHTMLOffsetParser parser("http://w1/d/page.html");
  ActingSink sink;
  sink.action = [&] { parser.ParseCSS("url(s)"); };
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML(kPage.c_str(), 0);
  EXPECT_EQ(sink.text, "IMG src=a@9->http://w1/d/a\nIMG src=s@4->http://w1/d/s\n");
}

TEST(ParseHTML, EndsWhenASinkParsesAnotherPage) {
  CHTMLOffsetParser parser("http://w1/d/page.html");
  ActingSink sink;
  sink.action = [&] { parser.ParseHTML("<td background=z>", 0); };
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML(kPage.c_str(), 0);
  EXPECT_EQ(sink.text, "IMG src=a@9->http://w1/d/a\nTD background=z@15->http://w1/d/z\n");
}

// A sink that stops a pass of its own with an exception, over a page as long as the first: the
// parser's position is then somewhere in that page.
struct SamePlaceCase {
  Here here;
  std::string_view page;
  std::string_view other;
  std::string_view records;
};
constexpr SamePlaceCase kSamePlaces[] = {
    {HERE, "<img src=a><img src=b><td background=c>", "<xml src=x><td background=y><img src=z>",
     "IMG src=a@9->http://w1/d/a\nXML src=x@9->http://w1/d/x\n"},
    {HERE, "<frame><frame>", "<iframe><frame>", "FRAME src=@-1->\nIFRAME src=@-1->\n"},
    {HERE, "<frame><frame>", "<xml src=x>...", "FRAME src=@-1->\nXML src=x@9->http://w1/d/x\n"},
};

TEST(ParseHTML, EndsWhenASinkStopsThePassOverAnotherPage) {
  forEachRow(kSamePlaces, [](const SamePlaceCase& row) {
    CHTMLOffsetParser parser("http://w1/d/page.html");
    class Stopping : public RecordLines {
     public:
      Stopping(CHTMLOffsetParser& parser, std::string_view other)
          : parser_(parser), other_(other) {}
      bool insert(CZKHTMLDietTransactionsObject* record) override {
        RecordLines::insert(record);
        if (++shown_ == 2) throw std::runtime_error("enough");
        if (shown_ > 2) return true;
        EXPECT_THROW(parser_.ParseHTML(other_.c_str(), 0), std::runtime_error);
        return true;
      }

     private:
      CHTMLOffsetParser& parser_;
      const std::string other_;
      int shown_ = 0;
    } sink(parser, row.other);
    parser.SetDietVirtualQueue(&sink);
    parser.ParseHTML(std::string(row.page).c_str(), 0);
    EXPECT_EQ(sink.text, row.records);
  });
}

TEST(ParseHTML, EndsWhenASinkParsesAnotherPageOfTheSameLength) {
  CHTMLOffsetParser parser("http://w1/d/page.html");
  ActingSink sink;
  const std::string other = "<td background=z>" + std::string(kPage.size() - 17, '.');
  sink.action = [&] { parser.ParseHTML(other.c_str(), 0); };
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML(kPage.c_str(), 0);
  EXPECT_EQ(sink.text, "IMG src=a@9->http://w1/d/a\nTD background=z@15->http://w1/d/z\n");
}

TEST(InsertObjectToQueue, LeavesTheRecordToItsCallerWhenTheSinkFails) {
  class Failing : public CZKHtmlDietVirtualQueue {
   public:
    bool insert(CZKHTMLDietTransactionsObject*) override { throw std::runtime_error("no"); }
  } sink;
  CZKHTMLDietTransactionsObject record;  // were it the parser's, it would be deleted
  CHTMLOffsetParser parser("http://w1/");
  parser.SetDietVirtualQueue(&sink);
  EXPECT_THROW(parser.InsertObjectToQueue(&record), std::runtime_error);
}

TEST(InsertObjectToQueue, PutsARecordOfTheSinkBeforeTheOneThatItIsShown) {
  CHTMLOffsetParser parser("http://w1/d/page.html");
  ActingSink sink;
  sink.action = [&] {
    auto own = std::make_unique<CZKHTMLDietTransactionsObject>();
    own->SetTagName("OWN");
    parser.InsertObjectToQueue(own.release());
  };
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML("<img src=a>", 0);
  EXPECT_EQ(sink.text, "IMG src=a@9->http://w1/d/a\nOWN\n");
  testing::internal::CaptureStdout();
  parser.PrintAll();
  const std::string dump = testing::internal::GetCapturedStdout();
  EXPECT_LT(dump.find("TagName: OWN"), dump.find("TagName: IMG"));
}

TEST(ParseCSS, GoesOnWhenASinkParsesAnotherText) {
  CHTMLOffsetParser parser("http://w1/d/page.html");
  ActingSink sink;
  sink.action = [&] {
    parser.ParseHTML("<td background=z>", 0);
    parser.ParseCSS("url(s)");
  };
  parser.SetDietVirtualQueue(&sink);
  parser.ParseCSS("url(a) url(b)");
  EXPECT_EQ(sink.text,
            "IMG src=a@4->http://w1/d/a\n"
            "TD background=z@15->http://w1/d/z\n"
            "IMG src=s@4->http://w1/d/s\n"
            "IMG src=b@11->http://w1/d/b\n");
}

}  // namespace
}  // namespace pagescan::tests
