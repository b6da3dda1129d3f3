#include "classic/url_folding.h"

#include <algorithm>

namespace pagescan::internal {
namespace {

constexpr std::string_view kParent = "../";
constexpr std::string_view kHere = "./";

// Takes back the text built so far to after its last "/", the very last byte not looked at.
void dropLastSegment(ScratchText& built) {
  const std::string_view before = built.text().substr(0, built.empty() ? 0 : built.size() - 1);
  const std::size_t slash = before.rfind('/');
  built.shorten(slash == std::string_view::npos ? 0 : slash + 1);
}

}  // namespace

void appendLink(std::string_view link, ScratchText& result) {
  const bool isPlain =
      link.find('\\') == std::string_view::npos && link.find("/./") == std::string_view::npos;
  if (isPlain) {
    result.append(link);
    return;
  }
  while (!link.empty()) {
    const char byte = link.front();
    link.remove_prefix(1);
    result.append(byte == '\\' ? '/' : byte);
    while (byte == '/' && link.substr(0, kHere.size()) == kHere) link.remove_prefix(kHere.size());
  }
}

void foldParents(std::string_view url, std::size_t from, ScratchText& result) {
  result.start(url.size());
  for (;;) {
    const std::size_t skipped = from > result.size() ? from - result.size() : 0;
    const std::size_t parent =
        skipped <= url.size() ? url.find(kParent, skipped) : std::string_view::npos;
    const std::string_view before = url.substr(0, std::min(parent, url.size()));
    result.append(before);
    if (parent == std::string_view::npos) return;
    url.remove_prefix(parent);
    if (before.find('?') != std::string_view::npos) break;
    if (result.size() == from + 1) {
      result.shorten(from);
      url.remove_prefix(kParent.size() - 1);
    } else {
      dropLastSegment(result);
      url.remove_prefix(kParent.size());
    }
  }
  result.append(url);
}

}  // namespace pagescan::internal
