#include "page/names.h"

#include <algorithm>

#include "page/name_tables.h"

namespace pagescan::internal {

namespace {

#define PAGESCAN_NAME(id, name) std::string_view(name),
constexpr std::array<std::string_view, kElementCount> kElements = {
    std::string_view(), PAGESCAN_ELEMENT_NAMES(PAGESCAN_NAME)};
constexpr std::array<std::string_view, kAttributeCount> kAttributes = {
    std::string_view(), PAGESCAN_ATTRIBUTE_NAMES(PAGESCAN_NAME)};
#undef PAGESCAN_NAME

// The SVG elements that the parser spells with capitals (HTML Standard, 13.2.6.5).
constexpr std::string_view kSvgSpellings[] = {
    "altGlyph",
    "altGlyphDef",
    "altGlyphItem",
    "animateColor",
    "animateMotion",
    "animateTransform",
    "clipPath",
    "feBlend",
    "feColorMatrix",
    "feComposite",
    "feComponentTransfer",
    "feConvolveMatrix",
    "feDiffuseLighting",
    "feDisplacementMap",
    "feDistantLight",
    "feDropShadow",
    "feFlood",
    "feFuncA",
    "feFuncB",
    "feFuncG",
    "feFuncR",
    "feGaussianBlur",
    "feImage",
    "feMerge",
    "feMergeNode",
    "feMorphology",
    "feOffset",
    "fePointLight",
    "feSpecularLighting",
    "feSpotLight",
    "feTile",
    "feTurbulence",
    "foreignObject",
    "glyphRef",
    "linearGradient",
    "radialGradient",
    "textPath",
};
static_assert(std::size(kSvgSpellings) == 37);

bool equalIgnoringCase(std::string_view lower, std::string_view name) {
  return std::equal(lower.begin(), lower.end(), name.begin(), name.end(),
                    [](char a, char b) { return a == toLower(b); });
}

}  // namespace

std::string_view elementName(NameId element) {
  return kElements[element];
}

std::string_view attributeName(NameId attribute) {
  return kAttributes[attribute];
}

std::string_view svgElementName(NameId element) {
  const std::string_view lowerCase = kElements[element];
  for (const std::string_view spelling : kSvgSpellings) {
    if (equalIgnoringCase(lowerCase, spelling)) return spelling;
  }
  return lowerCase;
}

constinit const NameHash<kElementCount, 16384> kElementHash(kElements);
constinit const NameHash<kAttributeCount, 2048> kAttributeHash(kAttributes);

bool isElementName(NameId element, std::string_view name) {
  return equalIgnoringCase(kElements[element], name);
}

bool isAttributeName(NameId attribute, std::string_view name) {
  return equalIgnoringCase(kAttributes[attribute], name);
}

ScannedName scanNameSlowly(const char* name, const char* end, const ByteClass& stop) {
  const char* at = name + 1;
  while (at != end && !stop.contains(*at)) ++at;
  return {at, keyOfName({name, static_cast<std::size_t>(at - name)})};
}

NameId findElement(std::string_view name) {
  return name.empty() ? kUnknownName : findElement(name.data(), keyOfName(name));
}

NameId findAttribute(std::string_view name) {
  return name.empty() ? kUnknownName : findAttribute(name.data(), keyOfName(name));
}

NameId ExtraNames::add(std::string_view name) {
  if (const NameId found = find(name); found != kUnknownName) return found;
  std::string lower(name);
  for (char& c : lower) c = toLower(c);
  const auto place = static_cast<std::ptrdiff_t>(placeOf(lower));
  const auto number = static_cast<NameId>(firstId_ + names_.size());
  names_.push_back(std::move(lower));
  sorted_.insert(sorted_.begin() + place, number);
  return number;
}

NameId ExtraNames::find(std::string_view name) const {
  const std::size_t place = placeOf(name);
  if (place == sorted_.size()) return kUnknownName;
  const NameId number = sorted_[place];
  return equalIgnoringCase(this->name(number), name) ? number : kUnknownName;
}

std::size_t ExtraNames::placeOf(std::string_view wanted) const {
  const auto isBefore = [this](NameId number, std::string_view other) {
    const std::string_view own = name(number);
    if (own.size() != other.size()) return own.size() < other.size();
    return std::lexicographical_compare(own.begin(), own.end(), other.begin(), other.end(),
                                        [](char a, char b) { return toLower(a) < toLower(b); });
  };
  const auto at = std::lower_bound(sorted_.begin(), sorted_.end(), wanted, isBefore);
  return static_cast<std::size_t>(at - sorted_.begin());
}

}  // namespace pagescan::internal
