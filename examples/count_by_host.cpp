// Counts what a page loads by the host that it is loaded from: count_by_host PAGE URL
//
// A sink takes each record while the parser reads, and keeps nothing of it.
#include <pagescan.h>

#include <iomanip>
#include <iostream>
#include <map>
#include <string>

#include "pages.h"

namespace {

std::string hostOf(const RWCString& url) {
  if (!isWebUrl(url)) return "(no host)";
  urlBase parts(url);
  parts.shortParse();
  return {parts.host.data(), parts.host.length()};
}

class HostCounter : public CZKHtmlDietVirtualQueue {
 public:
  // The record is the parser's; the parser ignores the result.
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    forEachLoaded(*record, [this](CZKHTMLDietAttributeObject& attribute) {
      ++counts_[hostOf(attribute.GetAttributeValue())];
    });
    return true;
  }

  const std::map<std::string, int>& counts() const { return counts_; }

 private:
  std::map<std::string, int> counts_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "Usage: count_by_host PAGE URL\n";
    return 2;
  }
  const auto page = readPage(argv[1]);
  if (!page) return 1;

  HostCounter counter;
  CHTMLOffsetParser parser(baseOf(*page, argv[2]).c_str());
  parser.SetDietVirtualQueue(&counter);
  parser.ParseHTML(page->c_str(), page->size());

  for (const auto& [host, count] : counter.counts()) {
    std::cout << std::setw(4) << count << "  " << host << '\n';
  }
}
