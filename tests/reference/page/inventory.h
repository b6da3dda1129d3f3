// A plain reading of the inventory: the tree is built, each element asked for its places, each
// place decoded code point by code point.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_INVENTORY_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_INVENTORY_H

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace reference::page {

// url, base (empty: none), encoding of the query → absolute URL.
using Resolver = std::function<std::optional<std::string>(const std::string&, const std::string&,
                                                          const std::string&)>;

struct InventoryOptions {
  std::string url;      // empty: unknown
  std::string charset;  // a label; empty: none
  bool scripting = true;
  std::set<std::string> profiles;  // beside "standard"
  std::string places;              // a user's own rows
  Resolver resolve;
};

struct Found {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  std::uint32_t tag = 0;
  std::optional<std::uint32_t> parent;
  std::string element;
  std::string attribute;
  std::string kind;
  std::string slot;
  std::set<std::string> flags;
  std::string value;
  std::optional<std::string> url;
};

// Nested documents deeper than this are left out.
inline constexpr int kMaxNesting = 32;

std::vector<Found> inventory(std::string_view bytes, const InventoryOptions& options);
std::vector<Found> sheetInventory(std::string_view bytes, const InventoryOptions& options);

}  // namespace reference::page

#endif
