// gumbo: makes a page's tree.
#include <gumbo.h>

#include "peers.h"

namespace pagescan::bench {
namespace {

std::size_t parsePage(std::string_view page) {
  GumboOutput* const output =
      gumbo_parse_with_options(&kGumboDefaultOptions, page.data(), page.size());
  gumbo_destroy_output(&kGumboDefaultOptions, output);
  return 1;
}

const PeerRegistration kGumbo({.name = "gumbo", .parsePage = parsePage});

}  // namespace
}  // namespace pagescan::bench
