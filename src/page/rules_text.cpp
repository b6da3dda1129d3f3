// The text of style and script elements.
#include "page/rules.h"
#include "page/words.h"

namespace pagescan::internal {

// Source   HTML Standard, 4.2.6 "update a style block"
std::optional<Judgement> judgeCss(const Situation& situation, const TagAttribute& attribute,
                                  const Place& place) {
  if (attribute.name != kUnknownName) return Judgement{place.kind};
  const bool isCss =
      !situation.isFilled(Attribute::type) || situation.is(Attribute::type, "text/css");
  return Judgement{place.kind, isCss ? Flags{0} : Flags{kConditional}};
}

std::optional<JsonForm> jsonFormOf(const Situation& script) {
  const std::string_view type = script.text(Attribute::type).value_or("");
  if (equalsIgnoringCase(type, "importmap")) return JsonForm::importMap;
  if (equalsIgnoringCase(type, "speculationrules")) return JsonForm::speculationRules;
  const std::string_view essence = withoutSpaceAround(type.substr(0, type.find(';')));
  if (equalsIgnoringCase(essence, "application/ld+json")) return JsonForm::linkedData;
  return std::nullopt;
}

std::optional<Judgement> judgeJson(const Situation& situation, const TagAttribute&,
                                   const Place& place) {
  if (!jsonFormOf(situation)) return std::nullopt;
  return Judgement{place.kind};
}

}  // namespace pagescan::internal
