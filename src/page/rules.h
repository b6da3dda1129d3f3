// The rules of the table of places: what a place is for, by what else its tag says.
//
// A rule decides from the start tag alone; it costs what reading the tag's values costs.
#ifndef PAGESCAN_PAGE_RULES_H
#define PAGESCAN_PAGE_RULES_H

#include <optional>

#include "page/json_strings.h"
#include "page/places.h"
#include "page/situation.h"

namespace pagescan::internal {

// What a reference in a place is, before what its surroundings add.
struct Judgement {
  Kind kind;
  Flags flags = 0;
};

// The judgement about one attribute of a tag; none when the row is not for this tag.
using RuleFunction = std::optional<Judgement>(const Situation&, const TagAttribute&, const Place&);

// What the function of a rule says. Rule::byBase is not among them: the document knows its bases.
RuleFunction judge;

// rules_link.cpp
RuleFunction judgeLink;
RuleFunction judgeImagesrcset;

// rules_media.cpp
RuleFunction judgeCandidate;
RuleFunction judgeImgSrc;
RuleFunction judgeMedia;
RuleFunction judgePoster;
RuleFunction judgeSource;
RuleFunction judgeTrack;

// rules_content.cpp
RuleFunction judgeFrame;
RuleFunction judgeIframe;
RuleFunction judgeInput;
RuleFunction judgePlugin;

// rules_script.cpp
RuleFunction judgeScript;

// rules_text.cpp
RuleFunction judgeCss;
RuleFunction judgeJson;

// The form of the JSON that a script holds by its type; none for other scripts.
std::optional<JsonForm> jsonFormOf(const Situation& script);

// rules_svg.cpp
RuleFunction judgeSvgHref;
RuleFunction judgeSvgRef;

// rules_meta.cpp
RuleFunction judgeMeta;
RuleFunction judgeRefresh;

// What a video or audio tells its children.
std::uint8_t mediaNotes(const Situation& situation);

}  // namespace pagescan::internal

#endif
