// A host of the installed page reader: reads a page and expects its URLs, resolved.
#include <pagescan/page.h>

#include <iostream>
#include <string>

namespace {

constexpr char kPage[] = "<base href=../><img srcset='a.png?x&amp;y 2x, b.png'>";
constexpr char kExpected[] = "http://h/ http://h/a.png?x&y http://h/b.png ";

}  // namespace

int main() {
  pagescan::PageOptions options;
  options.url = "http://h/x/page.html";
  const pagescan::Page page(kPage, options);
  std::string found;
  for (const pagescan::Reference& reference : page.references()) {
    found += page.url(reference).value_or("none") + ' ';
  }
  std::cout << found << '\n';
  return found == kExpected ? 0 : 1;
}
