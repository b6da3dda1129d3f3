// The table of places: where URLs stand in HTML, SVG and MathML, a row a place.
#ifndef PAGESCAN_PAGE_PLACES_H
#define PAGESCAN_PAGE_PLACES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "pagescan/page.h"

namespace pagescan::internal {

// In which namespaces a row holds.
enum class PlaceSpace : std::uint8_t { html, svg, mathml, any };

// How the text of a place is read. A Slot tells how one URL in it is written.
enum class PlaceSlot : std::uint8_t {
  url,
  urlList,
  commaList,
  srcset,
  refresh,
  nestedPage,
  sheet,  // this and the next two: CSS
  value,
  declarations,
  json,
};

// What decides about a place beyond its names. Each has a function in rules.h, but for those that
// the reading of the slot itself follows.
enum class Rule : std::uint8_t {
  plain,  // nothing: the row's kind holds
  byBase,
  byCandidate,
  byCss,
  byFrame,
  byIframe,
  byImagesrcset,
  byImgSrc,
  byInput,
  byJson,
  byLink,
  byMedia,
  byMeta,
  byNested,
  byNonstandard,
  byPlugin,
  byPoster,
  byRefresh,
  byScript,
  bySource,
  bySvgHref,
  bySvgRef,
  byTrack,
};
inline constexpr std::size_t kRuleCount = static_cast<std::size_t>(Rule::byTrack) + 1;

struct Place {
  Profiles profile;  // 0: always
  PlaceSpace space;
  std::string_view element;    // "*": any; "meta[NAME]": a meta of that name
  std::string_view attribute;  // empty: the element's text
  PlaceSlot slot;
  Kind kind;  // unless the rule says otherwise
  Rule rule;
};

inline constexpr std::size_t kPlaceCount = 159;

}  // namespace pagescan::internal

#endif
