// A host of the installed library: reads a page and expects its links, resolved.
#include <pagescan.h>

#include <iostream>
#include <string>

namespace {

constexpr char kPage[] = "<body background=bg.gif><p><img src='../a.png'></body>";
constexpr char kExpected[] = "http://h/x/bg.gif http://h/a.png ";

class ResolvedLinks : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    found += record->GetFirstAttributeObject()->GetAttributeValue();
    found += ' ';
    return true;
  }

  std::string found;
};

}  // namespace

int main() {
  ResolvedLinks links;
  CHTMLOffsetParser parser("http://h/x/page.html");
  parser.SetDietVirtualQueue(&links);
  parser.ParseHTML(kPage, sizeof kPage - 1);
  std::cout << links.found << '\n';
  return links.found == kExpected ? 0 : 1;
}
