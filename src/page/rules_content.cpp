// Frames, plugins and buttons: content of other documents.
#include "page/rules.h"
#include "page/words.h"

namespace pagescan::internal {
namespace {

// Whether the path of a URL ends like that of a Flash film, which no browser plays any more.
bool isFlash(std::string_view url) {
  constexpr std::string_view kEnding = ".swf";
  const std::string_view path = withoutSpaceAround(url.substr(0, url.find_first_of("?#")));
  return path.size() >= kEnding.size() &&
         equalsIgnoringCase(path.substr(path.size() - kEnding.size()), kEnding);
}

}  // namespace

std::optional<Judgement> judgeIframe(const Situation& situation, const TagAttribute&,
                                     const Place&) {
  if (situation.has(Attribute::srcdoc)) return Judgement{Kind::dead};
  return Judgement{Kind::load, situation.loadsLazily() ? Flags{kLazy} : Flags{0}};
}

std::optional<Judgement> judgeFrame(const Situation& situation, const TagAttribute&, const Place&) {
  return Judgement{situation.has(Attribute::srcdoc) ? Kind::dead : Kind::load};
}

std::optional<Judgement> judgePlugin(const Situation& situation, const TagAttribute& attribute,
                                     const Place&) {
  const bool isInsideOthers = situation.isInside(Element::object) ||
                              situation.isInside(Element::video) ||
                              situation.isInside(Element::audio);
  const bool isConditional =
      isInsideOthers || situation.isFilled(Attribute::type) ||
      (situation.isNamed(Element::object) && situation.isFilled(Attribute::classid)) ||
      isFlash(situation.textOf(attribute));
  return Judgement{Kind::load, isConditional ? Flags{kConditional} : Flags{0}};
}

std::optional<Judgement> judgeInput(const Situation& situation, const TagAttribute&, const Place&) {
  return Judgement{situation.is(Attribute::type, "image") ? Kind::load : Kind::dead};
}

}  // namespace pagescan::internal
