// The names of kinds, slots, flags and profiles.
#include <algorithm>
#include <cstddef>
#include <iterator>

#include "pagescan/page.h"

namespace pagescan {
namespace {

// In the order of the enumerators.
constexpr std::string_view kKindNames[] = {
    "load",     "navigation", "form",     "ping",   "connection", "base",
    "metadata", "identifier", "fragment", "script", "dead",
};
static_assert(std::size(kKindNames) == static_cast<std::size_t>(Kind::dead) + 1);

constexpr std::string_view kSlotNames[] = {
    "url", "url_list", "comma_list", "srcset", "refresh", "css_url", "css_string", "json",
};
static_assert(std::size(kSlotNames) == static_cast<std::size_t>(Slot::json) + 1);

template <typename Id>
struct Named {
  Id id;
  std::string_view name;
};

constexpr Named<Flag> kFlagNames[] = {
    {kNoscript, "noscript"}, {kTemplate, "template"},       {kCandidate, "candidate"},
    {kLazy, "lazy"},         {kConditional, "conditional"}, {kNonstandard, "nonstandard"},
    {kNested, "nested"},
};

constexpr Named<Profiles> kProfileNames[] = {
    {0, "standard"},
    {kLazyProfile, "lazy"},
    {kMetaProfile, "meta"},
    {kDataProfile, "data"},
};

// Empty for a number that no enumerator has.
template <std::size_t kCount>
std::string_view nameAt(const std::string_view (&names)[kCount], std::size_t number) {
  return number < kCount ? names[number] : std::string_view();
}

}  // namespace

std::string_view nameOf(Kind kind) {
  return nameAt(kKindNames, static_cast<std::size_t>(kind));
}

std::string_view nameOf(Slot slot) {
  return nameAt(kSlotNames, static_cast<std::size_t>(slot));
}

std::string_view nameOf(Flag flag) {
  for (const auto& [id, name] : kFlagNames) {
    if (id == flag) return name;
  }
  return "";
}

std::optional<Kind> kindOf(std::string_view name) {
  const auto* const found = std::find(std::begin(kKindNames), std::end(kKindNames), name);
  if (found == std::end(kKindNames)) return std::nullopt;
  return static_cast<Kind>(found - std::begin(kKindNames));
}

std::optional<Profiles> profileOf(std::string_view name) {
  for (const auto& [id, known] : kProfileNames) {
    if (known == name) return id;
  }
  return std::nullopt;
}

}  // namespace pagescan
