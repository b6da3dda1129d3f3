// The rules of the table of places, one by one.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "pagescan/page.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

// The references of a page, each as "value kind flags".
std::string read(std::string_view bytes, bool scripting = true, Profiles profiles = 0) {
  PageOptions options;
  options.url = "http://h/";
  options.scripting = scripting;
  options.profiles = profiles;
  const Page page(bytes, options);
  std::string lines;
  for (const Reference& reference : page.references()) {
    if (!lines.empty()) lines += ", ";
    lines += page.value(reference) + " " + std::string(nameOf(reference.kind));
    for (const Flag flag :
         {kNoscript, kTemplate, kCandidate, kLazy, kConditional, kNonstandard, kNested}) {
      if ((reference.flags & flag) != 0) lines += " " + std::string(nameOf(flag));
    }
  }
  return lines;
}

struct RuleCase {
  Here here;
  std::string_view page;
  std::string_view expected;
  std::string_view withoutScripts = "";  // empty: the same
};

void check(const RuleCase& row) {
  for (const Placement::Kind kind : Placement::kKinds) {
    Placement placement(kind);
    const testing::ScopedTrace trace(row.here.file, row.here.line, placement.name());
    const std::string_view page = placement.bytes(row.page);
    EXPECT_EQ(read(page), row.expected);
    EXPECT_EQ(read(page, false), row.withoutScripts.empty() ? row.expected : row.withoutScripts);
  }
}

constexpr RuleCase kLinks[] = {
    {HERE, "<link href=x>", "x metadata"},
    {HERE, "<link rel='' href=x>", "x metadata"},
    {HERE, "<link rel=canonical href=x>", "x metadata"},
    {HERE, "<link rel='NEXT preConnect' href=x>", "x connection"},
    {HERE, "<link rel=dns-prefetch href=x>", "x connection"},
    {HERE, "<link rel=expect href=#x>", "#x fragment"},
    {HERE, "<link rel='expect preconnect' href=#x>", "#x connection"},
    {HERE, "<link rel=style&#115;heet href=x>", "x load"},
    {HERE, "<link rel=stylesheet disabled href=x>", "x load conditional"},
    {HERE, "<link rel=stylesheet type='text/css; charset=x' href=x>", "x load"},
    {HERE, "<link rel=stylesheet type=text/less href=x>", "x load conditional"},
    {HERE, "<link rel=icon href=x>", "x load candidate"},
    {HERE, "<link rel=icon media=print href=x>", "x load candidate conditional"},
    {HERE, "<p><link rel=icon href=x>", "x load candidate conditional"},
    {HERE, "<link rel='icon manifest' href=x>", "x load"},
    {HERE, "<link rel='mask-icon manifest' href=x>", "x load lazy"},
    {HERE, "<link rel='apple-touch-icon fluid-icon' href=x>", "x load candidate lazy"},
    {HERE, "<link rel=prerender href=x>", "x load lazy conditional"},
    {HERE, "<link rel=preload href=x>", "x load conditional"},
    {HERE, "<link rel=preload as=font href=x>", "x load"},
    {HERE, "<link rel=preload as=font type=font/woff href=x>", "x load conditional"},
    {HERE, "<link rel=preload as=script href=x>", "x load", "x load conditional"},
    {HERE, "<link rel=preload as=image imagesrcset='a 1x' href=x>",
     "a load candidate, x load candidate"},
    {HERE, "<link rel=preload as=style imagesrcset='a 1x' href=x>", "a dead, x load"},
    {HERE, "<link rel=modulepreload href=x>", "x load", "x load conditional"},
    {HERE, "<link rel=modulepreload as=style media=' ALL ' href=x>", "x load",
     "x load conditional"},
    {HERE, "<link rel=modulepreload as=image href=x>", "x load conditional"},
};

TEST(Rules, KnowLinksByTheWordsOfTheirRel) {
  for (const RuleCase& row : kLinks) check(row);
}

constexpr RuleCase kMedia[] = {
    {HERE, "<img src=x>", "x load"},
    {HERE, "<img src=x srcset=y>", "x load candidate, y load candidate"},
    {HERE, "<img loading=Lazy src=x>", "x load lazy", "x load"},
    {HERE, "<picture><img src=x></picture>", "x load candidate"},
    {HERE, "<picture><p><img src=x></picture>", "x load"},
    {HERE, "<picture><source src=x srcset=y></picture>", "x dead, y load candidate"},
    {HERE, "<video><source src=x srcset=y></video>", "x load candidate, y dead"},
    {HERE, "<video src=v><source src=x></video>", "v load, x dead"},
    {HERE, "<audio preload=none><source src=x></audio>", "x load candidate lazy"},
    {HERE, "<video loading=lazy poster=p><track src=t>", "p load lazy, t load lazy conditional",
     "p load lazy, t load conditional"},
    {HERE, "<audio><track default src=t>", "t load"},
    {HERE, "<track default src=t>", "t dead"},
    {HERE, "<source src=x srcset=y>", "x dead, y dead"},
};

TEST(Rules, KnowPicturesAndMediaByTheirParents) {
  for (const RuleCase& row : kMedia) check(row);
}

constexpr RuleCase kContent[] = {
    {HERE, "<iframe src=x>", "x load"},
    {HERE, "<iframe src=x loading=lazy>", "x load lazy", "x load"},
    {HERE, "<iframe src=x srcdoc>", "x dead"},
    {HERE, "<frameset><frame src=x><frame src=y srcdoc=z>", "x load, y dead"},
    {HERE, "<embed src=x>", "x load"},
    {HERE, "<embed src=x type=a>", "x load conditional"},
    {HERE, "<embed src=x.sWf#y>", "x.sWf#y load conditional"},
    {HERE, "<embed src=x?.swf>", "x?.swf load"},
    {HERE, "<object data=x classid>", "x load"},
    {HERE, "<object data=x classid=y>", "x load conditional, y dead"},
    {HERE, "<object data=x><object data=y></object></object><object data=z>",
     "x load, y load conditional, z load"},
    {HERE, "<object data=x><table><td><embed src=y>", "x load, y load conditional"},
    {HERE, "<audio><embed src=x>", "x load conditional"},
    {HERE, "<input src=x>", "x dead"},
    {HERE, "<input src=x type=IMAGE formaction=y>", "x load, y form"},
};

TEST(Rules, KnowFramesPluginsAndButtons) {
  for (const RuleCase& row : kContent) check(row);
}

constexpr RuleCase kScripts[] = {
    {HERE, "<script src=x></script>", "x load", "x load conditional"},
    {HERE, "<script src=x type></script>", "x load", "x load conditional"},
    {HERE, "<script src=x type=' '></script>", "x dead"},
    {HERE, "<script src=x type=' Text/JScript '></script>", "x load", "x load conditional"},
    {HERE, "<script src=x type=text/javascript;v=1></script>", "x dead"},
    {HERE, "<script src=x type=MODULE nomodule></script>", "x load", "x load conditional"},
    {HERE, "<script src=x type=' module'></script>", "x dead"},
    {HERE, "<script src=x nomodule></script>", "x load conditional"},
    {HERE, "<script src=x language></script>", "x load", "x load conditional"},
    {HERE, "<script src=x language=JavaScript1.5></script>", "x load", "x load conditional"},
    {HERE, "<script src=x language=vbscript></script>", "x dead"},
    {HERE, "<script src=x type=text/javascript language=vbscript></script>", "x load",
     "x load conditional"},
    {HERE, "<svg><script href=x language=vbscript nomodule /></svg>", "x load",
     "x load conditional"},
    {HERE, "<svg><script href=x type=a /></svg>", "x dead"},
};

TEST(Rules, KnowScriptsByTheirType) {
  for (const RuleCase& row : kScripts) check(row);
}

constexpr RuleCase kSvg[] = {
    {HERE, "<svg><use href=#x /><use href=x /><use href=' #x' />", "#x fragment, x load,  #x load"},
    {HERE, "<svg><image href=#x /><feImage href=&#35;x />", "#x load, #x fragment"},
    {HERE, "<svg><a href=x xlink:href=y />", "x navigation, y dead"},
    {HERE, "<svg><a href xlink:href=y />", " navigation, y dead"},
    {HERE, "<svg><a xlink:href=y />", "y navigation"},
    {HERE, "<svg><pattern href=#x /><pattern href=x />", "#x fragment, x dead"},
    {HERE, "<svg><filter href=x xlink:href=#y />", "x dead, #y dead"},
    {HERE, "<math><mi href=x>", "x navigation"},
};

TEST(Rules, KnowReferencesOfSvgByTheirFirstByte) {
  for (const RuleCase& row : kSvg) check(row);
}

constexpr RuleCase kBases[] = {
    {HERE, "<base href=x><base href=y>", "x base, y dead"},
    {HERE, "<base><base href=y>", "y base"},
    {HERE, "<base href><base href=y>", " base, y dead"},
    {HERE, "<template><base href=x></template><base href=y>", "x dead template, y base"},
    {HERE, "<div><template shadowrootmode=open><base href=x></template></div><base href=y>",
     "x dead, y base"},
    {HERE, "<iframe srcdoc='<base href=x>'></iframe><base href=y>", "x base nested, y base"},
    {HERE, "<noscript><base href=x></noscript><base href=y>", "x dead noscript, y base",
     "x base, y dead"},
    {HERE, "<div><base href=x></div><frameset><frame src=y>", "y load"},
};

TEST(Rules, TakeTheFirstBaseOfTheDocument) {
  for (const RuleCase& row : kBases) check(row);
}

constexpr RuleCase kBlank[] = {
    {HERE, "<a href><area href=' '><form action><img longdesc=''>",
     " navigation,   navigation,  form,  navigation"},
    {HERE, "<img src><link rel=icon href=' &#9;'><q cite=''><img srcset=' '>", ""},
    {HERE, "<p style='a:url()' itemid>", ""},
    {HERE, "<meta http-equiv=refresh content>", ""},
};

TEST(Rules, ListBlankValuesOnlyWhereTheyLeadSomewhere) {
  for (const RuleCase& row : kBlank) check(row);
}

TEST(Rules, ReadMetaElementsByAProfile) {
  constexpr std::string_view kPage =
      "<meta name='x og:IMAGE' content=1><meta property=og:title content=2>"
      "<meta http-equiv=refresh itemprop=url content='0;url=3'><meta name=url content=4>";
  EXPECT_EQ(read(kPage), "3 navigation");
  EXPECT_EQ(read(kPage, true, kMetaProfile), "1 metadata, 3 navigation, 4 metadata");
}

TEST(Rules, ReadAttributesOfScriptsByAProfile) {
  constexpr std::string_view kPage = "<p data-src=1 data-srcset='2 1x'><svg data-src=3>";
  EXPECT_EQ(read(kPage), "");
  EXPECT_EQ(read(kPage, true, kLazyProfile), "1 script nonstandard, 2 script nonstandard");
}

}  // namespace
}  // namespace pagescan::tests
