// Pictures, video and audio.
#include "page/rules.h"

namespace pagescan::internal {
namespace {

Flags lazyIf(bool condition) {
  return condition ? Flags{kLazy} : Flags{0};
}

bool parentIsMedia(const Situation& situation) {
  return situation.parentIs(Element::video) || situation.parentIs(Element::audio);
}

}  // namespace

std::uint8_t mediaNotes(const Situation& situation) {
  std::uint8_t notes = 0;
  if (situation.has(Attribute::src)) notes |= kHasSource;
  if (situation.is(Attribute::preload, "none")) notes |= kPreloadNone;
  if (situation.loadsLazily()) notes |= kLoadsLazily;
  return notes;
}

std::optional<Judgement> judgeCandidate(const Situation& situation, const TagAttribute&,
                                        const Place&) {
  return Judgement{Kind::load, static_cast<Flags>(kCandidate | lazyIf(situation.loadsLazily()))};
}

std::optional<Judgement> judgeImgSrc(const Situation& situation, const TagAttribute&,
                                     const Place&) {
  Judgement judgement{Kind::load, lazyIf(situation.loadsLazily())};
  if (situation.has(Attribute::srcset) || situation.parentIs(Element::picture)) {
    judgement.flags |= kCandidate;
  }
  return judgement;
}

std::optional<Judgement> judgeMedia(const Situation& situation, const TagAttribute&, const Place&) {
  return Judgement{Kind::load,
                   lazyIf(situation.is(Attribute::preload, "none") || situation.loadsLazily())};
}

// Puts off with scripting off, too, unlike everywhere else.
std::optional<Judgement> judgePoster(const Situation& situation, const TagAttribute&,
                                     const Place&) {
  return Judgement{Kind::load, lazyIf(situation.is(Attribute::loading, "lazy"))};
}

std::optional<Judgement> judgeSource(const Situation& situation, const TagAttribute& attribute,
                                     const Place&) {
  if (situation.parentIs(Element::picture)) {
    if (attribute.name == id(Attribute::srcset)) return Judgement{Kind::load, kCandidate};
  } else if (parentIsMedia(situation) && !situation.parentNoted(kHasSource)) {
    const bool isLazy = situation.parentNoted(kPreloadNone) || situation.parentNoted(kLoadsLazily);
    if (attribute.name == id(Attribute::src)) {
      return Judgement{Kind::load, static_cast<Flags>(kCandidate | lazyIf(isLazy))};
    }
  }
  return Judgement{Kind::dead};
}

std::optional<Judgement> judgeTrack(const Situation& situation, const TagAttribute&, const Place&) {
  if (!parentIsMedia(situation)) return Judgement{Kind::dead};
  Judgement judgement{Kind::load, lazyIf(situation.parentNoted(kLoadsLazily))};
  if (!situation.has(Attribute::default_)) judgement.flags |= kConditional;
  return judgement;
}

}  // namespace pagescan::internal
