// Sinks that use the parser while it shows them a record: the pass goes on from wherever they left
// it, and ends when they had it read another text.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "support/placement.h"
#include "support/record_lines.h"
#include "zkhtmloffsetparser.h"

namespace pagescan {
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

}  // namespace
}  // namespace pagescan
