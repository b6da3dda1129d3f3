#include <algorithm>
#include <sstream>

#include "encoding/encoding.h"
#include "pagescan/page.h"
#include "pagescan/style_sheet.h"
#include "reference/page/beside_library.h"
#include "reference/url/url.h"

namespace reference::page {

namespace {

constexpr pagescan::Flag kFlags[] = {
    pagescan::kNoscript,    pagescan::kTemplate,    pagescan::kCandidate, pagescan::kLazy,
    pagescan::kConditional, pagescan::kNonstandard, pagescan::kNested};

std::string lineOf(const Found& found) {
  std::ostringstream line;
  line << '[' << found.begin << ',' << found.end << ") " << found.element << ' ' << found.attribute
       << ' ' << found.kind << ' ' << found.slot << " flags";
  for (const std::string& flag : found.flags) line << ' ' << flag;
  line << " tag " << found.tag;
  if (found.parent) line << " parent " << *found.parent;
  line << " value {" << found.value << "} url {" << found.url.value_or("none") << '}';
  return line.str();
}

template <typename Source>
Found foundOf(const Source& source, const pagescan::Reference& reference) {
  Found found;
  found.begin = reference.span.begin;
  found.end = reference.span.end;
  found.tag = reference.tag;
  if (reference.parent != pagescan::kNoParent) found.parent = reference.parent;
  found.kind = nameOf(reference.kind);
  found.slot = nameOf(reference.slot);
  for (const pagescan::Flag flag : kFlags) {
    if (reference.flags & flag) found.flags.insert(std::string(nameOf(flag)));
  }
  found.value = source.value(reference);
  found.url = source.url(reference);
  return found;
}

std::string differenceOf(const std::vector<Found>& twin, const std::vector<Found>& library) {
  for (std::size_t i = 0; i < std::max(twin.size(), library.size()); ++i) {
    const std::string ours = i < twin.size() ? lineOf(twin[i]) : "nothing";
    const std::string theirs = i < library.size() ? lineOf(library[i]) : "nothing";
    if (ours != theirs) return "the twin:    " + ours + "\nthe library: " + theirs + "\n";
  }
  return "";
}

InventoryOptions withTwinOfUrls(const InventoryOptions& options) {
  InventoryOptions result = options;
  result.resolve = resolveByTwin;
  return result;
}

}  // namespace

std::optional<std::string> resolveByTwin(const std::string& url, const std::string& base,
                                         const std::string& encoding) {
  using pagescan::internal::Encoding;
  const Encoding query = pagescan::internal::encodingForLabel(encoding).value_or(Encoding::utf8);
  std::optional<UrlRecord> baseRecord;
  if (!base.empty()) {
    baseRecord = parseUrl(base, nullptr, Encoding::utf8);
    if (!baseRecord) return std::nullopt;
  }
  const auto record = parseUrl(url, baseRecord ? &*baseRecord : nullptr, query);
  if (!record) return std::nullopt;
  return serialize(*record);
}

std::string inventoryDifference(std::string_view bytes, const InventoryOptions& options) {
  pagescan::PageOptions pageOptions;
  pageOptions.url = options.url;
  pageOptions.charset = options.charset;
  pageOptions.scripting = options.scripting;
  for (const std::string& profile : options.profiles) {
    pageOptions.profiles |= pagescan::profileOf(profile).value_or(0);
  }
  std::optional<pagescan::Places> places;
  if (!options.places.empty()) {
    places = pagescan::Places::parse(options.places);
    if (!places) return "the library takes the places for no table\n";
    pageOptions.places = &*places;
  }
  const pagescan::Page page(bytes, pageOptions);
  std::vector<Found> library;
  for (const pagescan::Reference& reference : page.references()) {
    library.push_back(foundOf(page, reference));
    library.back().element = page.element(reference);
    library.back().attribute = page.attribute(reference);
  }
  return differenceOf(inventory(bytes, withTwinOfUrls(options)), library);
}

std::string sheetDifference(std::string_view bytes, const InventoryOptions& options) {
  pagescan::StyleSheetOptions sheetOptions;
  sheetOptions.url = options.url;
  sheetOptions.charset = options.charset;
  const pagescan::StyleSheet sheet(bytes, sheetOptions);
  std::vector<Found> library;
  for (const pagescan::Reference& reference : sheet.references()) {
    library.push_back(foundOf(sheet, reference));
  }
  return differenceOf(sheetInventory(bytes, withTwinOfUrls(options)), library);
}

}  // namespace reference::page
