// The rows of the table of places, in the order in which they are tried, and how they are found.
#include "page/places.h"

#include "page/place_lookup.h"
#include "page/words.h"

namespace pagescan::internal {
namespace {

using enum PlaceSpace;
using enum PlaceSlot;
using enum Kind;
using enum Rule;

// The profiles by the names that users know.
constexpr Profiles standard = 0;
constexpr Profiles lazy = kLazyProfile;
constexpr Profiles meta = kMetaProfile;
constexpr Profiles data = kDataProfile;

}  // namespace

// clang-format off
constexpr std::array<Place, kPlaceCount> kPlaces = {{
  {standard, html,   "a",                "href",           url,          navigation, plain},
  {standard, html,   "area",             "href",           url,          navigation, plain},
  {standard, html,   "a",                "ping",           urlList,      ping,       plain},
  {standard, html,   "area",             "ping",           urlList,      ping,       plain},
  {standard, html,   "a",                "attributionsrc", urlList,      dead,       plain},
  {standard, html,   "img",              "attributionsrc", urlList,      dead,       plain},
  {standard, html,   "script",           "attributionsrc", urlList,      dead,       plain},
  {standard, html,   "base",             "href",           url,          base,       byBase},
  {standard, html,   "link",             "href",           url,          load,       byLink},
  {standard, html,   "link",             "imagesrcset",    srcset,       load,       byImagesrcset},
  {standard, html,   "img",              "src",            url,          load,       byImgSrc},
  {standard, html,   "img",              "srcset",         srcset,       load,       byCandidate},
  {standard, html,   "source",           "src",            url,          load,       bySource},
  {standard, html,   "source",           "srcset",         srcset,       load,       bySource},
  {standard, html,   "iframe",           "src",            url,          load,       byIframe},
  {standard, html,   "iframe",           "srcdoc",         nestedPage,   dead,       byNested},
  {standard, html,   "frame",            "src",            url,          load,       byFrame},
  {standard, html,   "embed",            "src",            url,          load,       byPlugin},
  {standard, html,   "object",           "data",           url,          load,       byPlugin},
  {standard, html,   "script",           "src",            url,          load,       byScript},
  {standard, html,   "video",            "src",            url,          load,       byMedia},
  {standard, html,   "audio",            "src",            url,          load,       byMedia},
  {standard, html,   "video",            "poster",         url,          load,       byPoster},
  {standard, html,   "track",            "src",            url,          load,       byTrack},
  {standard, html,   "input",            "src",            url,          load,       byInput},
  {standard, html,   "form",             "action",         url,          form,       plain},
  {standard, html,   "button",           "formaction",     url,          form,       plain},
  {standard, html,   "input",            "formaction",     url,          form,       plain},
  {standard, html,   "blockquote",       "cite",           url,          metadata,   plain},
  {standard, html,   "q",                "cite",           url,          metadata,   plain},
  {standard, html,   "ins",              "cite",           url,          metadata,   plain},
  {standard, html,   "del",              "cite",           url,          metadata,   plain},
  {standard, html,   "meta",             "content",        refresh,      navigation, byRefresh},
  {standard, html,   "body",             "background",     url,          load,       plain},
  {standard, html,   "table",            "background",     url,          load,       plain},
  {standard, html,   "thead",            "background",     url,          load,       plain},
  {standard, html,   "tbody",            "background",     url,          load,       plain},
  {standard, html,   "tfoot",            "background",     url,          load,       plain},
  {standard, html,   "tr",               "background",     url,          load,       plain},
  {standard, html,   "td",               "background",     url,          load,       plain},
  {standard, html,   "th",               "background",     url,          load,       plain},
  {standard, html,   "col",              "background",     url,          load,       plain},
  {standard, html,   "colgroup",         "background",     url,          load,       plain},
  {standard, html,   "img",              "usemap",         url,          fragment,   plain},
  {standard, html,   "object",           "usemap",         url,          fragment,   plain},
  {standard, html,   "input",            "usemap",         url,          fragment,   plain},
  {standard, html,   "img",              "longdesc",       url,          navigation, plain},
  {standard, html,   "iframe",           "longdesc",       url,          navigation, plain},
  {standard, html,   "frame",            "longdesc",       url,          navigation, plain},
  {standard, html,   "head",             "profile",        urlList,      identifier, plain},
  {standard, html,   "html",             "manifest",       url,          dead,       plain},
  {standard, html,   "img",              "lowsrc",         url,          dead,       plain},
  {standard, html,   "img",              "dynsrc",         url,          dead,       plain},
  {standard, html,   "input",            "lowsrc",         url,          dead,       plain},
  {standard, html,   "input",            "dynsrc",         url,          dead,       plain},
  {standard, html,   "object",           "codebase",       url,          dead,       plain},
  {standard, html,   "object",           "classid",        url,          dead,       plain},
  {standard, html,   "object",           "archive",        urlList,      dead,       plain},
  {standard, html,   "applet",           "code",           url,          dead,       plain},
  {standard, html,   "applet",           "codebase",       url,          dead,       plain},
  {standard, html,   "applet",           "object",         url,          dead,       plain},
  {standard, html,   "applet",           "archive",        commaList,    dead,       plain},
  {standard, html,   "bgsound",          "src",            url,          dead,       plain},
  {standard, html,   "layer",            "src",            url,          dead,       plain},
  {standard, html,   "ilayer",           "src",            url,          dead,       plain},
  {standard, html,   "xml",              "src",            url,          dead,       plain},
  {standard, html,   "command",          "icon",           url,          dead,       plain},
  {standard, html,   "menuitem",         "icon",           url,          dead,       plain},
  {standard, html,   "style",            "",               sheet,        load,       byCss},
  {standard, svg,    "a",                "href",           url,          navigation, bySvgHref},
  {standard, svg,    "a",                "xlink:href",     url,          navigation, bySvgHref},
  {standard, svg,    "image",            "href",           url,          load,       bySvgHref},
  {standard, svg,    "image",            "xlink:href",     url,          load,       bySvgHref},
  {standard, svg,    "feImage",          "href",           url,          load,       bySvgHref},
  {standard, svg,    "feImage",          "xlink:href",     url,          load,       bySvgHref},
  {standard, svg,    "use",              "href",           url,          load,       bySvgHref},
  {standard, svg,    "use",              "xlink:href",     url,          load,       bySvgHref},
  {standard, svg,    "script",           "href",           url,          load,       bySvgHref},
  {standard, svg,    "script",           "xlink:href",     url,          load,       bySvgHref},
  {standard, svg,    "linearGradient",   "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "linearGradient",   "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "radialGradient",   "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "radialGradient",   "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "pattern",          "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "pattern",          "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "filter",           "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "filter",           "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "textPath",         "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "textPath",         "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "mpath",            "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "mpath",            "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "animate",          "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "animate",          "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "animateMotion",    "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "animateMotion",    "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "animateTransform", "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "animateTransform", "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "set",              "href",           url,          fragment,   bySvgRef},
  {standard, svg,    "set",              "xlink:href",     url,          fragment,   bySvgRef},
  {standard, svg,    "*",                "fill",           value,        load,       byCss},
  {standard, svg,    "*",                "stroke",         value,        load,       byCss},
  {standard, svg,    "*",                "filter",         value,        load,       byCss},
  {standard, svg,    "*",                "mask",           value,        load,       byCss},
  {standard, svg,    "*",                "clip-path",      value,        load,       byCss},
  {standard, svg,    "*",                "marker-start",   value,        load,       byCss},
  {standard, svg,    "*",                "marker-mid",     value,        load,       byCss},
  {standard, svg,    "*",                "marker-end",     value,        load,       byCss},
  {standard, svg,    "*",                "cursor",         value,        load,       byCss},
  {standard, svg,    "style",            "",               sheet,        load,       byCss},
  {standard, mathml, "*",                "href",           url,          navigation, plain},
  {standard, mathml, "*",                "xlink:href",     url,          navigation, plain},
  {standard, any,    "*",                "style",          declarations, load,       byCss},
  {standard, html,   "*",                "itemid",         url,          identifier, plain},
  {standard, html,   "*",                "itemtype",       urlList,      identifier, plain},
  {lazy, html, "*", "data-src",              url,    script, byNonstandard},
  {lazy, html, "*", "data-original",         url,    script, byNonstandard},
  {lazy, html, "*", "data-lazy",             url,    script, byNonstandard},
  {lazy, html, "*", "data-lazy-src",         url,    script, byNonstandard},
  {lazy, html, "*", "data-full-src",         url,    script, byNonstandard},
  {lazy, html, "*", "data-bg",               url,    script, byNonstandard},
  {lazy, html, "*", "data-background",       url,    script, byNonstandard},
  {lazy, html, "*", "data-background-image", url,    script, byNonstandard},
  {lazy, html, "*", "data-poster",           url,    script, byNonstandard},
  {lazy, html, "*", "data-thumb",            url,    script, byNonstandard},
  {lazy, html, "*", "data-image",            url,    script, byNonstandard},
  {lazy, html, "*", "data-srcset",           srcset, script, byNonstandard},
  {lazy, html, "*", "data-lazy-srcset",      srcset, script, byNonstandard},
  {lazy, html, "*", "data-original-set",     srcset, script, byNonstandard},
  {data, html, "script", "", json, metadata, byJson},
  {meta, html, "meta[og:url]",                          "content", url, metadata, byMeta},
  {meta, html, "meta[og:image]",                        "content", url, metadata, byMeta},
  {meta, html, "meta[og:image:url]",                    "content", url, metadata, byMeta},
  {meta, html, "meta[og:image:secure_url]",             "content", url, metadata, byMeta},
  {meta, html, "meta[og:video]",                        "content", url, metadata, byMeta},
  {meta, html, "meta[og:video:url]",                    "content", url, metadata, byMeta},
  {meta, html, "meta[og:video:secure_url]",             "content", url, metadata, byMeta},
  {meta, html, "meta[og:audio]",                        "content", url, metadata, byMeta},
  {meta, html, "meta[og:audio:url]",                    "content", url, metadata, byMeta},
  {meta, html, "meta[og:audio:secure_url]",             "content", url, metadata, byMeta},
  {meta, html, "meta[og:see_also]",                     "content", url, metadata, byMeta},
  {meta, html, "meta[twitter:url]",                     "content", url, metadata, byMeta},
  {meta, html, "meta[twitter:image]",                   "content", url, metadata, byMeta},
  {meta, html, "meta[twitter:image:src]",               "content", url, metadata, byMeta},
  {meta, html, "meta[twitter:player]",                  "content", url, metadata, byMeta},
  {meta, html, "meta[twitter:player:stream]",           "content", url, metadata, byMeta},
  {meta, html, "meta[msapplication-tileimage]",         "content", url, metadata, byMeta},
  {meta, html, "meta[msapplication-config]",            "content", url, metadata, byMeta},
  {meta, html, "meta[msapplication-starturl]",          "content", url, metadata, byMeta},
  {meta, html, "meta[msapplication-square70x70logo]",   "content", url, metadata, byMeta},
  {meta, html, "meta[msapplication-square150x150logo]", "content", url, metadata, byMeta},
  {meta, html, "meta[msapplication-square310x310logo]", "content", url, metadata, byMeta},
  {meta, html, "meta[msapplication-wide310x150logo]",   "content", url, metadata, byMeta},
  {meta, html, "meta[article:author]",                  "content", url, metadata, byMeta},
  {meta, html, "meta[article:publisher]",               "content", url, metadata, byMeta},
  {meta, html, "meta[image]",                           "content", url, metadata, byMeta},
  {meta, html, "meta[url]",                             "content", url, metadata, byMeta},
  {meta, html, "meta[thumbnailurl]",                    "content", url, metadata, byMeta},
  {meta, html, "meta[contenturl]",                      "content", url, metadata, byMeta},
  {meta, html, "meta[embedurl]",                        "content", url, metadata, byMeta},
}};
// clang-format on

namespace {

#define PAGESCAN_NAME(id, name) name,
// An empty name stands for those that the tables do not know.
constexpr std::string_view kElementNames[] = {std::string_view(),
                                              PAGESCAN_ELEMENT_NAMES(PAGESCAN_NAME)};
constexpr std::string_view kAttributeNames[] = {std::string_view(),
                                                PAGESCAN_ATTRIBUTE_NAMES(PAGESCAN_NAME)};
#undef PAGESCAN_NAME

// The element that a row names: "meta" of "meta[og:url]".
constexpr std::string_view elementOf(const Place& place) {
  return place.element.substr(0, place.element.find('['));
}

constexpr bool isOfSpace(const Place& place, std::size_t space) {
  return place.space == any || static_cast<std::size_t>(place.space) == space;
}

// The number of a name, compared without regard to case: rows spell SVG as its parser does.
template <std::size_t kCount>
constexpr NameId numberOf(std::string_view name, const std::string_view (&names)[kCount]) {
  for (std::size_t i = 0; i < kCount; ++i) {
    if (names[i].size() == name.size() && equalsIgnoringCase(name, names[i])) {
      return static_cast<NameId>(i);
    }
  }
  throw "a name that names.h lacks";  // stops the compiler
}

constexpr NameId kAnyElement = 0xFFFF;

using RowNames = std::array<NameId, kPlaceCount>;

constexpr RowNames elementsOfRows() {
  RowNames numbers{};
  for (std::size_t row = 0; row < kPlaceCount; ++row) {
    const std::string_view element = elementOf(kPlaces[row]);
    numbers[row] = element == "*" ? kAnyElement : numberOf(element, kElementNames);
  }
  return numbers;
}

constexpr RowNames attributesOfRows() {
  RowNames numbers{};
  for (std::size_t row = 0; row < kPlaceCount; ++row) {
    numbers[row] = numberOf(kPlaces[row].attribute, kAttributeNames);
  }
  return numbers;
}

// Computed apart: compilers bound what one constant may cost.
constexpr RowNames kElementsOfRows = elementsOfRows();
constexpr RowNames kAttributesOfRows = attributesOfRows();

// Numbers the elements that have rows of their own; the others share the class of their namespace.
constexpr PlaceTables numberClasses() {
  PlaceTables tables;
  std::uint8_t classes = kSpaceCount;
  for (std::size_t space = 0; space < kSpaceCount; ++space) {
    tables.classOf[space].fill(static_cast<std::uint8_t>(space));
    for (std::size_t row = 0; row < kPlaceCount; ++row) {
      if (!isOfSpace(kPlaces[row], space) || kElementsOfRows[row] == kAnyElement) continue;
      std::uint8_t& number = tables.classOf[space][kElementsOfRows[row]];
      if (number < kSpaceCount) number = classes++;
    }
  }
  tables.classCount = classes;
  return tables;
}

// The first row of each class and attribute; from the last row to the first, so that it stays.
constexpr void findFirstRows(PlaceTables& tables) {
  for (std::size_t row = kPlaceCount; row-- > 0;) {
    const NameId element = kElementsOfRows[row];
    const NameId attribute = kAttributesOfRows[row];
    const auto number = static_cast<std::uint8_t>(row + 1);
    for (std::size_t space = 0; space < kSpaceCount; ++space) {
      if (!isOfSpace(kPlaces[row], space)) continue;
      if (element != kAnyElement) {
        tables.first[tables.classOf[space][element]][attribute] = number;
        continue;
      }
      for (const std::uint8_t each : tables.classOf[space]) tables.first[each][attribute] = number;
    }
  }
}

constexpr bool mayShareElement(std::size_t a, std::size_t b) {
  const PlaceSpace first = kPlaces[a].space;
  const PlaceSpace second = kPlaces[b].space;
  if (first != second && first != any && second != any) return false;
  return kElementsOfRows[a] == kElementsOfRows[b] || kElementsOfRows[a] == kAnyElement ||
         kElementsOfRows[b] == kAnyElement;
}

// After each row the next one for the same attribute that may be for an element of that row.
constexpr void linkRows(PlaceTables& tables) {
  for (std::size_t row = 0; row < kPlaceCount; ++row) {
    for (std::size_t later = row + 1; later < kPlaceCount && tables.next[row] == 0; ++later) {
      if (kAttributesOfRows[row] == kAttributesOfRows[later] && mayShareElement(row, later)) {
        tables.next[row] = static_cast<std::uint8_t>(later + 1);
      }
    }
  }
}

constexpr void skipRows(PlaceTables& tables) {
  for (std::size_t set = 0; set < kProfileSetCount; ++set) {
    for (std::size_t row = kPlaceCount; row-- > 0;) {
      const bool isWanted = (kPlaces[row].profile & ~set) == 0;
      tables.wanted[set][row + 1] =
          isWanted ? static_cast<std::uint8_t>(row + 1) : tables.wanted[set][tables.next[row]];
    }
  }
}

constexpr PlaceTables makeTables() {
  PlaceTables tables = numberClasses();
  findFirstRows(tables);
  linkRows(tables);
  skipRows(tables);
  return tables;
}

}  // namespace

constexpr PlaceTables kPlaceTables = makeTables();
static_assert(kPlaceTables.classCount == kPlaceClassCount);

bool isFor(const Place& place, Namespace space, NameId element) {
  const NameId named = kElementsOfRows[static_cast<std::size_t>(&place - kPlaces.data())];
  return isOfSpace(place, static_cast<std::size_t>(space)) &&
         (named == kAnyElement || named == element);
}

}  // namespace pagescan::internal
