// meta elements: refreshes, and the names of the profile meta.
#include "page/rules.h"
#include "page/words.h"

namespace pagescan::internal {

std::optional<Judgement> judgeRefresh(const Situation& situation, const TagAttribute&,
                                      const Place& place) {
  if (!situation.is(Attribute::httpEquiv, "refresh")) return std::nullopt;
  return Judgement{place.kind};
}

// The row's element is "meta[NAME]".
std::optional<Judgement> judgeMeta(const Situation& situation, const TagAttribute&,
                                   const Place& place) {
  const std::size_t open = place.element.find('[') + 1;
  const std::string_view name = place.element.substr(open, place.element.size() - open - 1);
  for (const Attribute attribute : {Attribute::property, Attribute::name, Attribute::itemprop}) {
    if (hasWord(situation.text(attribute).value_or(""), name)) return Judgement{place.kind};
  }
  return std::nullopt;
}

}  // namespace pagescan::internal
