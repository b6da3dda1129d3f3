// Writes a page whose web resources go through a gateway: rewrite_urls PAGE URL GATEWAY
//
// Each URL is replaced where it stands, by its offset; every other byte of the page stays. A BASE
// stays as well: for a page that has one the gateway's address must be absolute.
#include <pagescan.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "pages.h"

namespace {

struct Edit {
  std::size_t offset;
  std::size_t length;
  std::string text;
};

// The gateway's address for a resolved value.
std::string throughGateway(std::string_view gateway, RWCString url) {
  // Values are resolved as they are written, with their entities.
  CTQCharSet::fsGetSingleton()->convert(url);
  RWCString address(gateway.data(), gateway.size());
  // This flavour leaves no quote, blank or ">" that would end an attribute.
  UrlEncoding::EncodeString(url, address, UrlEncoding::eBrowser);
  return {address.data(), address.length()};
}

class EditMaker : public CZKHtmlDietVirtualQueue {
 public:
  EditMaker(std::string_view page, std::string_view gateway) : page_(page), gateway_(gateway) {}

  bool insert(CZKHTMLDietTransactionsObject* record) override {
    forEachLoaded(*record, [this](CZKHTMLDietAttributeObject& attribute) { add(attribute); });
    return true;
  }

  // In the order of the page; a record lists its attributes in an order of its own.
  std::vector<Edit> edits() {
    std::sort(edits_.begin(), edits_.end(),
              [](const Edit& a, const Edit& b) { return a.offset < b.offset; });
    return edits_;
  }

 private:
  void add(CZKHTMLDietAttributeObject& attribute) {
    const std::string_view original = attribute.GetOriginalAttributeValue();
    const auto offset = static_cast<std::size_t>(attribute.GetAttributeOffset());
    // A comment inside a value was blanked before the value was read.
    if (page_.substr(offset, original.size()) != original) return;
    const RWCString url = attribute.GetAttributeValue();
    if (isWebUrl(url)) edits_.push_back({offset, original.size(), throughGateway(gateway_, url)});
  }

  std::string_view page_;
  std::string_view gateway_;
  std::vector<Edit> edits_;
};

std::string edited(std::string_view page, const std::vector<Edit>& edits) {
  std::string result;
  std::size_t copied = 0;
  for (const Edit& edit : edits) {
    if (edit.offset < copied) continue;  // two tags can lay claim to one value
    result += page.substr(copied, edit.offset - copied);
    result += edit.text;
    copied = edit.offset + edit.length;
  }
  result += page.substr(copied);
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "Usage: rewrite_urls PAGE URL GATEWAY\n";
    return 2;
  }
  const auto page = readPage(argv[1]);
  if (!page) return 1;

  EditMaker maker(*page, argv[3]);
  CHTMLOffsetParser parser(baseOf(*page, argv[2]).c_str());
  parser.SetDietVirtualQueue(&maker);
  parser.ParseHTML(page->c_str(), page->size());
  std::cout << edited(*page, maker.edits());
}
