// The references of a page: the promises of the header, and the plain twin.

#include "support/input.h"
#include "support/page_promises.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view kCharsets[] = {"",        "utf-8",       "shift_jis",
                                            "gb18030", "iso-2022-jp", "utf-16le"};
  fuzz::Input input(data, size);
  pagescan::PageOptions options;
  options.url = "http://h.test/d/p.html?q#f";
  options.charset = kCharsets[input.number(std::size(kCharsets))];
  options.scripting = !input.flag();
  options.profiles = static_cast<pagescan::Profiles>(input.number(8));
  const fuzz::Block block(input.rest());
  const pagescan::Page page({block.data(), block.size()}, options);
  const std::string broken = fuzz::brokenPromise(page);
  fuzz::check(broken.empty(), broken.c_str());
  const std::string difference = fuzz::differenceFromTwin(page, options);
  fuzz::check(difference.empty(), difference.c_str());
  return 0;
}
