// Which function each rule is.
#include "page/rules.h"

namespace pagescan::internal {

std::optional<Judgement> judge(const Situation& situation, const TagAttribute& attribute,
                               const Place& place) {
  switch (place.rule) {
    case Rule::plain:
    case Rule::byBase:
    case Rule::byNested:
      return Judgement{place.kind};
    case Rule::byCandidate:
      return judgeCandidate(situation, attribute, place);
    case Rule::byCss:
      return judgeCss(situation, attribute, place);
    case Rule::byFrame:
      return judgeFrame(situation, attribute, place);
    case Rule::byIframe:
      return judgeIframe(situation, attribute, place);
    case Rule::byImagesrcset:
      return judgeImagesrcset(situation, attribute, place);
    case Rule::byImgSrc:
      return judgeImgSrc(situation, attribute, place);
    case Rule::byInput:
      return judgeInput(situation, attribute, place);
    case Rule::byJson:
      return judgeJson(situation, attribute, place);
    case Rule::byLink:
      return judgeLink(situation, attribute, place);
    case Rule::byMedia:
      return judgeMedia(situation, attribute, place);
    case Rule::byMeta:
      return judgeMeta(situation, attribute, place);
    case Rule::byNonstandard:
      return Judgement{place.kind, kNonstandard};
    case Rule::byPlugin:
      return judgePlugin(situation, attribute, place);
    case Rule::byPoster:
      return judgePoster(situation, attribute, place);
    case Rule::byRefresh:
      return judgeRefresh(situation, attribute, place);
    case Rule::byScript:
      return judgeScript(situation, attribute, place);
    case Rule::bySource:
      return judgeSource(situation, attribute, place);
    case Rule::bySvgHref:
      return judgeSvgHref(situation, attribute, place);
    case Rule::bySvgRef:
      return judgeSvgRef(situation, attribute, place);
    case Rule::byTrack:
      return judgeTrack(situation, attribute, place);
  }
  return std::nullopt;
}

}  // namespace pagescan::internal
