// What a link element is for, by the words of its rel.
#include "page/rules.h"
#include "page/words.h"

namespace pagescan::internal {
namespace {

// A word of rel that makes a browser, or another agent, load the link.
struct LoadingWord {
  std::string_view word;
  Flags always;
  Flags (*further)(const Situation&);
};

// Whether a `media` keeps what it is on from loading: anything but "all" and "screen".
bool hasOtherMedia(const Situation& situation) {
  const std::string_view media = withoutSpaceAround(situation.text(Attribute::media).value_or(""));
  return !media.empty() && !equalsIgnoringCase(media, "all") &&
         !equalsIgnoringCase(media, "screen");
}

// Parameters of the type count for nothing.
bool isCssType(std::string_view type) {
  const std::string_view essence = withoutSpaceAround(type.substr(0, type.find(';')));
  return essence.empty() || equalsIgnoringCase(essence, "text/css");
}

Flags conditionalIf(bool condition) {
  return condition ? Flags{kConditional} : Flags{0};
}

Flags none(const Situation&) {
  return 0;
}

Flags ofStylesheet(const Situation& situation) {
  return conditionalIf(situation.has(Attribute::disabled) ||
                       !isCssType(situation.text(Attribute::type).value_or("")));
}

Flags ofIcon(const Situation& situation) {
  return conditionalIf(!situation.parentIs(Element::head) || hasOtherMedia(situation));
}

bool preloadsNothing(const Situation& situation) {
  constexpr std::string_view kLoaded[] = {"fetch", "font", "image", "style", "track"};
  const std::string_view as = situation.text(Attribute::as).value_or("");
  for (const std::string_view known : kLoaded) {
    if (equalsIgnoringCase(as, known)) return false;
  }
  return !(situation.scripting() && equalsIgnoringCase(as, "script"));
}

Flags ofPreload(const Situation& situation) {
  Flags flags = conditionalIf(situation.isFilled(Attribute::type) || hasOtherMedia(situation) ||
                              preloadsNothing(situation));
  if (situation.is(Attribute::as, "image") && situation.has(Attribute::imagesrcset))
    flags |= kCandidate;
  return flags;
}

Flags ofModulepreload(const Situation& situation) {
  const std::string_view as = situation.text(Attribute::as).value_or("");
  const bool isKnown = as.empty() || equalsIgnoringCase(as, "script") ||
                       equalsIgnoringCase(as, "style") || equalsIgnoringCase(as, "json");
  return conditionalIf(!isKnown || !situation.scripting() || hasOtherMedia(situation));
}

constexpr LoadingWord kLoadingWords[] = {
    {"stylesheet", 0, ofStylesheet},
    {"icon", kCandidate, ofIcon},
    {"apple-touch-icon", kCandidate | kLazy, none},
    {"apple-touch-icon-precomposed", kCandidate | kLazy, none},
    {"mask-icon", kCandidate | kLazy, none},
    {"fluid-icon", kCandidate | kLazy, none},
    {"preload", 0, ofPreload},
    {"modulepreload", 0, ofModulepreload},
    {"prefetch", kLazy, none},
    {"prerender", kLazy | kConditional, none},
    {"manifest", kLazy, none},
    {"compression-dictionary", kLazy, none},
};
static_assert(std::size(kLoadingWords) == 12);
static_assert(std::size(kLoadingWords) <= 32, "a set of them is 32 bits");

// What the words of a rel say.
struct Rel {
  std::uint32_t loading = 0;  // the bits of the loading words
  bool connects = false;
  bool expects = false;
};

Rel readRel(std::string_view text) {
  Rel rel;
  for (std::string_view word = takeWord(text); !word.empty(); word = takeWord(text)) {
    for (std::size_t i = 0; i < std::size(kLoadingWords); ++i) {
      if (equalsIgnoringCase(word, kLoadingWords[i].word)) rel.loading |= 1U << i;
    }
    rel.connects |= equalsIgnoringCase(word, "preconnect");
    rel.connects |= equalsIgnoringCase(word, "dns-prefetch");
    rel.expects |= equalsIgnoringCase(word, "expect");
  }
  return rel;
}

}  // namespace

std::optional<Judgement> judgeLink(const Situation& situation, const TagAttribute&, const Place&) {
  const Rel rel = readRel(situation.text(Attribute::rel).value_or(""));
  if (rel.loading == 0) {
    if (rel.connects) return Judgement{Kind::connection};
    return Judgement{rel.expects ? Kind::fragment : Kind::metadata};
  }
  Flags common = kCandidate | kLazy | kConditional;
  for (std::size_t i = 0; i < std::size(kLoadingWords); ++i) {
    if ((rel.loading >> i & 1) == 0) continue;
    common &= static_cast<Flags>(kLoadingWords[i].always | kLoadingWords[i].further(situation));
  }
  return Judgement{Kind::load, common};
}

std::optional<Judgement> judgeImagesrcset(const Situation& situation, const TagAttribute&,
                                          const Place&) {
  const bool isPreload = hasWord(situation.text(Attribute::rel).value_or(""), "preload");
  if (isPreload && situation.is(Attribute::as, "image")) return Judgement{Kind::load, kCandidate};
  return Judgement{Kind::dead};
}

}  // namespace pagescan::internal
