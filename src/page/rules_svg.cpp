// The href attributes of SVG.
#include "page/rules.h"

namespace pagescan::internal {
namespace {

bool isOutvoted(const Situation& situation, const TagAttribute& attribute) {
  return attribute.name == id(Attribute::xlinkHref) && situation.has(Attribute::href);
}

bool isLocal(const Situation& situation, const TagAttribute& attribute) {
  const std::string_view value = situation.textOf(attribute);
  return !value.empty() && value.front() == '#';
}

}  // namespace

std::optional<Judgement> judgeSvgHref(const Situation& situation, const TagAttribute& attribute,
                                      const Place& place) {
  if (isOutvoted(situation, attribute)) return Judgement{Kind::dead};
  if (situation.isNamed(Element::script)) return judgeScript(situation, attribute, place);
  const bool takesFragments =
      situation.isNamed(Element::use) || situation.isNamed(Element::feImage);
  if (takesFragments && isLocal(situation, attribute)) return Judgement{Kind::fragment};
  return Judgement{place.kind};
}

std::optional<Judgement> judgeSvgRef(const Situation& situation, const TagAttribute& attribute,
                                     const Place&) {
  const bool isUsed = !isOutvoted(situation, attribute) && isLocal(situation, attribute);
  return Judgement{isUsed ? Kind::fragment : Kind::dead};
}

}  // namespace pagescan::internal
