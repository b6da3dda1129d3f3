// Reads a user's own table of places.
#include "page/places_table.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "page/words.h"

namespace pagescan {
namespace internal {
namespace {

template <typename Id>
struct Word {
  std::string_view word;
  Id id;
};

constexpr Word<PlaceSpace> kSpaces[] = {
    {"html", PlaceSpace::html},
    {"svg", PlaceSpace::svg},
    {"mathml", PlaceSpace::mathml},
    {"any", PlaceSpace::any},
};

constexpr Word<PlaceSlot> kSlots[] = {
    {"url", PlaceSlot::url},
    {"url_list", PlaceSlot::urlList},
    {"comma_list", PlaceSlot::commaList},
    {"srcset", PlaceSlot::srcset},
    {"refresh", PlaceSlot::refresh},
    {"html", PlaceSlot::nestedPage},
    {"css_sheet", PlaceSlot::sheet},
    {"css_value", PlaceSlot::value},
    {"css_declarations", PlaceSlot::declarations},
    {"json", PlaceSlot::json},
};

constexpr Word<Rule> kRules[] = {
    {"", Rule::plain},
    {"base", Rule::byBase},
    {"candidate", Rule::byCandidate},
    {"css", Rule::byCss},
    {"frame", Rule::byFrame},
    {"iframe", Rule::byIframe},
    {"imagesrcset", Rule::byImagesrcset},
    {"img-src", Rule::byImgSrc},
    {"input", Rule::byInput},
    {"json", Rule::byJson},
    {"link", Rule::byLink},
    {"media", Rule::byMedia},
    {"meta", Rule::byMeta},
    {"nested", Rule::byNested},
    {"nonstandard", Rule::byNonstandard},
    {"plugin", Rule::byPlugin},
    {"poster", Rule::byPoster},
    {"refresh", Rule::byRefresh},
    {"script", Rule::byScript},
    {"source", Rule::bySource},
    {"svg-href", Rule::bySvgHref},
    {"svg-ref", Rule::bySvgRef},
    {"track", Rule::byTrack},
};
static_assert(std::size(kRules) == kRuleCount);

template <typename Id, std::size_t kCount>
bool readWord(std::string_view text, const Word<Id> (&words)[kCount], Id& id) {
  for (const auto& [word, known] : words) {
    if (word != text) continue;
    id = known;
    return true;
  }
  return false;
}

// The columns of a line.
enum Column { kProfile, kSpace, kElement, kAttribute, kSlot, kKind, kRule, kColumnCount };
constexpr std::string_view kColumnNames[] = {"profile", "namespace", "element", "attribute",
                                             "slot",    "kind",      "rule"};
using Columns = std::array<std::string_view, kColumnCount>;

// False where a line has too many columns, or too few: the rule alone may be left out.
bool splitLine(std::string_view line, Columns& columns) {
  std::size_t count = 0;
  for (;;) {
    if (count == kColumnCount) return false;
    const std::size_t tab = line.find('\t');
    columns[count++] = line.substr(0, tab);
    if (tab == std::string_view::npos) break;
    line.remove_prefix(tab + 1);
  }
  return count >= kColumnCount - 1;
}

bool isCss(PlaceSlot slot) {
  return slot == PlaceSlot::sheet || slot == PlaceSlot::value || slot == PlaceSlot::declarations;
}

// Which slots a rule goes with. A slot with a reader of its own goes with its rule alone.
bool fitsSlot(const Place& place) {
  switch (place.rule) {
    case Rule::byCss:
      return isCss(place.slot);
    case Rule::byNested:
      return place.slot == PlaceSlot::nestedPage;
    case Rule::byJson:
      return place.slot == PlaceSlot::json;
    default:
      return !isCss(place.slot) && place.slot != PlaceSlot::nestedPage &&
             place.slot != PlaceSlot::json;
  }
}

// Whether the text of an element can be a place: the text of sheets and of scripts.
bool fitsText(const Place& place) {
  const bool isText = place.attribute.empty();
  if (place.slot == PlaceSlot::sheet) return isText && place.element == "style";
  if (place.slot == PlaceSlot::json) return isText && place.element == "script";
  return !isText;
}

bool fitsMeta(const Place& place) {
  const std::size_t open = place.element.find('[');
  if (place.rule != Rule::byMeta) return open == std::string_view::npos;
  return open == 4 && place.element.substr(0, 4) == "meta" && place.element.size() > 6 &&
         place.element.back() == ']';
}

std::string unknown(Column column, const Columns& columns) {
  return "unknown " + std::string(kColumnNames[column]) + " \"" + std::string(columns[column]) +
         "\"";
}

// Reads a row. Returns what is wrong with it, or nothing.
std::string readRow(std::string_view line, Place& place) {
  Columns columns;
  if (!splitLine(line, columns)) return "6 or 7 columns between tabs expected";
  const auto profile = profileOf(columns[kProfile]);
  if (!profile) return unknown(kProfile, columns);
  place.profile = *profile;
  if (!readWord(columns[kSpace], kSpaces, place.space)) return unknown(kSpace, columns);
  place.element = columns[kElement];
  if (place.element.empty()) return "the element is missing";
  place.attribute = columns[kAttribute];
  if (!readWord(columns[kSlot], kSlots, place.slot)) return unknown(kSlot, columns);
  const auto kind = kindOf(columns[kKind]);
  const bool needsKind = place.slot != PlaceSlot::nestedPage;
  if (!kind && (needsKind || !columns[kKind].empty())) return unknown(kKind, columns);
  place.kind = kind.value_or(Kind::dead);
  if (!readWord(columns[kRule], kRules, place.rule)) return unknown(kRule, columns);
  if (!fitsSlot(place)) return "this rule does not go with this slot";
  if (!fitsText(place)) return "only the text of style and script can be a place";
  if (!fitsMeta(place)) return "\"meta[NAME]\" and the rule meta go together";
  return {};
}

bool isHeading(std::string_view line) {
  Columns columns;
  return splitLine(line, columns) &&
         std::equal(columns.begin(), columns.end(), std::begin(kColumnNames));
}

std::uint64_t keyOf(Namespace space, NameId element, NameId attribute) {
  return std::uint64_t{static_cast<std::uint8_t>(space)} << 32 | std::uint64_t{element} << 16 |
         attribute;
}

constexpr NameId kAnyElement = 0xFFFF;

NameId numberOf(std::string_view name, NameId known, ExtraNames& extra) {
  return known != kUnknownName ? known : extra.add(name);
}

}  // namespace
}  // namespace internal

using internal::Place;

void Places::Table::add(const Place& place) {
  using internal::Namespace;
  using internal::PlaceSpace;
  const auto number = static_cast<std::uint32_t>(rows.size());
  rows.push_back(place);

  std::string lower(place.element.substr(0, place.element.find('[')));
  std::transform(lower.begin(), lower.end(), lower.begin(), internal::toLower);
  const internal::NameId element =
      lower == "*" ? internal::kAnyElement
                   : internal::numberOf(lower, internal::findElement(lower), elements);
  lower = place.attribute;
  std::transform(lower.begin(), lower.end(), lower.begin(), internal::toLower);
  const internal::NameId attribute =
      lower.empty() ? internal::kUnknownName
                    : internal::numberOf(lower, internal::findAttribute(lower), attributes);
  for (const Namespace space : {Namespace::html, Namespace::svg, Namespace::mathml}) {
    const bool holds = place.space == PlaceSpace::any ||
                       static_cast<std::uint8_t>(place.space) == static_cast<std::uint8_t>(space);
    if (holds) rowsByPlace[internal::keyOf(space, element, attribute)].push_back(number);
  }
}

Places::Table::Matches Places::Table::find(internal::Namespace space, internal::NameId element,
                                           internal::NameId attribute) const {
  const auto rowsOf = [&](internal::NameId name) -> std::span<const std::uint32_t> {
    const auto found = rowsByPlace.find(internal::keyOf(space, name, attribute));
    return found == rowsByPlace.end() ? std::span<const std::uint32_t>() : found->second;
  };
  return {rowsOf(element), rowsOf(internal::kAnyElement)};
}

Places::Places() : table_(std::make_shared<Table>()) {}

std::optional<Places> Places::parse(std::string_view text, std::string* error) {
  auto table = std::make_shared<Table>();
  table->text = text;
  std::string_view rest = table->text;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.empty() || line.front() == '#' || internal::isHeading(line)) continue;
    Place place{};
    std::string fault = internal::readRow(line, place);
    if (fault.empty()) {
      table->add(place);
      if (!table->hasTooManyNames()) continue;
      fault = "too many names";
    }
    if (error != nullptr) *error = "line " + std::to_string(number) + ": " + fault;
    return std::nullopt;
  }
  Places places;
  places.table_ = std::move(table);
  return places;
}

}  // namespace pagescan
