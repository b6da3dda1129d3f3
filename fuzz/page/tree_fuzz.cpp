// What the start tags of a page or fragment become, beside the twin with its real tree.

#include "reference/page/beside_library.h"
#include "support/input.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view kContexts[] = {"",        "div",      "table",    "tbody", "tr",
                                            "td",      "select",   "template", "body",  "html",
                                            "caption", "colgroup", "frameset", "head"};
  fuzz::Input input(data, size);
  reference::page::ElementOptions options;
  options.scripting = !input.flag();
  options.contextName = kContexts[input.number(std::size(kContexts))];
  options.isSrcdoc = input.flag();
  const fuzz::Block block(input.rest());
  const std::string difference =
      reference::page::elementDifference({block.data(), block.size()}, options);
  fuzz::check(difference.empty(), difference.c_str());
  return 0;
}
