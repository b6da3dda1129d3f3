// Sinks that use the parser while it shows them a record: the pass goes on from wherever they left
// it, and ends when they had it read another text.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "support/placement.h"
#include "support/record_lines.h"
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

TEST(ParseHTML, GoesOnBehindAnElementOfASink) {
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
