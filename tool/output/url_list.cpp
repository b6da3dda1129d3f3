#include "output/url_list.h"

#include "output/utf8_text.h"

namespace pagescan::tool {

void UrlList::write(std::string_view url) {
  if (url.empty() || written_.find(url) != written_.end()) return;
  written_.emplace(url);
  output_.write(isForPeople_ ? printable(url) : std::string(url));
  output_.write("\n");
}

}  // namespace pagescan::tool
