// What holds for every page: the promises of <pagescan/page.h>, and the answers of the plain twin.
#ifndef PAGESCAN_FUZZ_SUPPORT_PAGE_PROMISES_H
#define PAGESCAN_FUZZ_SUPPORT_PAGE_PROMISES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pagescan/page.h"
#include "pagescan/url.h"
#include "reference/page/inventory.h"

namespace fuzz {

using pagescan::Page;
using pagescan::PageOptions;
using pagescan::Reference;

// One reference as a line of text, to compare and to print.
inline std::string lineOf(std::uint32_t begin, std::uint32_t end, std::uint32_t tag,
                          std::optional<std::uint32_t> parent, std::string_view element,
                          std::string_view attribute, std::string_view kind, std::string_view slot,
                          const std::string& flags, const std::string& value,
                          const std::optional<std::string>& url) {
  std::string line = std::to_string(begin) + "-" + std::to_string(end) + " <" +
                     std::to_string(tag) + " in " + (parent ? std::to_string(*parent) : "page");
  for (const std::string_view part : {element, attribute, kind, slot}) {
    line += ' ';
    line += part;
  }
  return line + " [" + flags + "] \"" + value + "\" " + url.value_or("(none)");
}

inline std::string lineOf(const Page& page, const Reference& reference) {
  std::string flags;
  for (const pagescan::Flag flag :
       {pagescan::kCandidate, pagescan::kConditional, pagescan::kLazy, pagescan::kNested,
        pagescan::kNonstandard, pagescan::kNoscript, pagescan::kTemplate}) {
    if ((reference.flags & flag) != 0) flags += std::string(nameOf(flag)) + " ";
  }
  std::optional<std::uint32_t> parent;
  if (reference.parent != pagescan::kNoParent) parent = reference.parent;
  return lineOf(reference.span.begin, reference.span.end, reference.tag, parent,
                page.element(reference), page.attribute(reference), nameOf(reference.kind),
                nameOf(reference.slot), flags, page.value(reference), page.url(reference));
}

inline std::string lineOf(const reference::page::Found& found) {
  std::string flags;
  for (const std::string& flag : found.flags) flags += flag + " ";
  return lineOf(found.begin, found.end, found.tag, found.parent, found.element, found.attribute,
                found.kind, found.slot, flags, found.value, found.url);
}

// The first promise of the header that a page breaks; empty for none.
inline std::string brokenPromise(const Page& page) {
  const std::string_view bytes = page.bytes();
  std::uint32_t end = 0;
  std::pair<std::uint32_t, std::uint32_t> last;
  std::string again;
  for (const Reference& reference : page.references()) {
    const auto [begin, stop] = reference.span;
    if (begin > stop || stop > bytes.size()) return "a span lies in the page";
    if (std::pair(begin, stop) < last) return "spans are in order";
    last = {begin, stop};
    const bool mayOverlap = reference.parent != pagescan::kNoParent || reference.attribute == 0;
    if (!mayOverlap) {
      if (begin < end) return "spans do not overlap";
      end = stop;
    }
    if (reference.tag > begin) return "a tag begins before what it holds";
    const std::optional<std::string> url = page.url(reference);
    if (page.urlInto(reference, again) != url.has_value()) return "both ways to resolve agree";
    if (again != url.value_or("")) return "both ways to resolve give the same URL";
    const std::string_view raw = page.raw(reference);
    const bool isPlain = std::all_of(raw.begin(), raw.end(), [](char c) {
      return c > ' ' && c != '&' && c != '\\' && c != '\x7F';
    });
    const bool isConverted =
        page.encoding().substr(0, 6) == "UTF-16" || page.encoding() == "ISO-2022-JP";
    const bool isSplit = reference.attribute == 0 && page.element(reference) == "svg:style";
    if (isPlain && !isConverted && !isSplit && page.value(reference) != raw) {
      return "plain bytes are the value";
    }
  }
  return {};
}

// How the references of a page differ from those that the twin finds; empty: not at all.
inline std::string differenceFromTwin(const Page& page, const PageOptions& options) {
  reference::page::InventoryOptions plain;
  plain.url = options.url;
  plain.charset = options.charset;
  plain.scripting = options.scripting;
  for (const char* const name : {"lazy", "meta", "data"}) {
    if ((options.profiles & *pagescan::profileOf(name)) != 0) plain.profiles.insert(name);
  }
  plain.resolve = [](const std::string& url, const std::string& base, const std::string& encoding) {
    return pagescan::resolve(url, base, encoding);
  };
  const std::vector<reference::page::Found> want = reference::page::inventory(page.bytes(), plain);
  const std::vector<Reference>& found = page.references();
  for (std::size_t i = 0; i < std::max(found.size(), want.size()); ++i) {
    const std::string mine = i < found.size() ? lineOf(page, found[i]) : "nothing";
    const std::string twins = i < want.size() ? lineOf(want[i]) : "nothing";
    if (mine != twins) return "found    " + mine + "\nexpected " + twins;
  }
  return {};
}

}  // namespace fuzz

#endif
