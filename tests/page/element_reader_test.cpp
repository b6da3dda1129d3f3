// What the element reader reports besides the elements themselves.
#include "page/element_reader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace pagescan::internal;  // NOLINT(google-build-using-namespace)

// A line for each call: the name, its parent's name and what else is true of it.
class Journal {
 public:
  explicit Journal(std::string_view page) : page_(page) {}

  static constexpr bool kTakesBareTags = true;
  std::uint8_t startTag(const StartTag& tag) {
    const char* const spaces[] = {"", "svg:", "math:"};
    line(std::string(spaces[static_cast<int>(tag.space)]) + std::string(elementName(tag.name)));
    if (tag.merged) text_ += "+merged";
    if (tag.inTemplate) text_ += "+template";
    if (tag.inShadow) text_ += "+shadow";
    if (tag.parent.name != kUnknownName) {
      text_ += "<" + std::string(elementName(tag.parent.name));
      if (tag.parent.note != 0) text_ += std::to_string(tag.parent.note);
    }
    for (std::uint32_t i = 0; i < tag.attributeCount; ++i) {
      const TagAttribute& attribute = tag.attributes[i];
      text_ += " " + std::string(attributeName(attribute.name)) + "=" +
               bytes({attribute.valueBegin, attribute.valueEnd});
    }
    return static_cast<std::uint8_t>(tag.begin);
  }
  void rawText(const StartTag& tag, Span text) {
    line(std::string(elementName(tag.name)) + ":" + bytes(text));
  }
  void svgStyleText(std::uint32_t owner, Span text, bool isCdata) {
    line(std::to_string(owner) + (isCdata ? ":cdata:" : ":") + bytes(text));
  }
  void svgStyleEnds(std::uint32_t owner) { line(std::to_string(owner) + " ends"); }
  void bodyLeaves(std::uint32_t bodyBegin) { line("body leaves " + std::to_string(bodyBegin)); }

  const std::string& text() const { return text_; }

 private:
  void line(const std::string& text) { text_ += (text_.empty() ? "" : "; ") + text; }
  std::string bytes(Span span) const {
    return std::string(page_.substr(span.begin, span.end - span.begin));
  }

  std::string_view page_;
  std::string text_;
};

std::string journalOf(std::string_view page, const ReaderOptions& options = {}) {
  Journal journal(page);
  ElementReader<Journal> reader(page, options, journal);
  reader.read();
  return journal.text();
}

struct PageCase {
  Here here;
  const char* page;
  const char* expected;
};

constexpr PageCase kPages[] = {
    // attributes: spans, the first of duplicates, known names alone
    {HERE, "<a class=x HREF=y href=z>", "a<body href=y"},
    {HERE, "<a href>", "a<body href="},
    {HERE, "<a href= >", "a<body href="},
    {HERE, "<a href='>'", ""},
    {HERE, "<a href=x/>", "a<body href=x/"},
    {HERE, "<a =href=x>", "a<body"},
    {HERE, "<image src=x>", "img<body src=x"},
    // merged tags list what the element lacks
    {HERE, "<html manifest=a><html manifest=b style=c>", "html manifest=a; html+merged style=c"},
    {HERE, "<body style=a><body background=b style=c>",
     "body<html style=a; body+merged background=b"},
    // the parent and its note, which is the offset of its tag here
    {HERE, "<p><video><source src=x>", "p<body; video<p; source<video3 src=x"},
    {HERE, "<head></head><meta charset=x>", "head<html; meta<head charset=x"},
    {HERE, "x<b>y<p>z</b>q<i>", "b<body; p<b1; i<p5"},
    // the current node ends by its name in either case, cut off, or with more than the name
    {HERE, "<div><DIV></Div><br></dIV><br>", "div<body; div<div; br<div; br<body"},
    {HERE, "<blockquote></BLOCKQUOTE><br>", "blockquote<body; br<body"},
    {HERE, "<x-y></X-Y><br>", "<body; br<body"},
    {HERE, "<div></div ><br>", "div<body; br<body"},
    {HERE, "<div></div/><br>", "div<body; br<body"},
    {HERE, "<div></div\n id='>'><br>", "div<body; br<body"},
    {HERE, "<div></di><br></divs><br>", "div<body; br<div; br<div"},
    {HERE, "<s></s><br>", "s<body; br<body"},
    {HERE, "<section></section><br>", "section<body; br<body"},
    // what keeps a tag from just opening its element
    {HERE, "<p><div>", "p<body; div<body"},
    {HERE, "<p><object><div>", "p<body; object<p; div<object3"},
    {HERE, "<li><li><p><li>", "li<body; li<body; p<li4; li<body"},
    {HERE, "<ul><li><div><li><ul><li>", "ul<body; li<ul; div<li4; li<ul; ul<li13; li<ul17"},
    {HERE, "<h1><h2><span><h3>", "h1<body; h2<body; span<h24; h3<span8"},
    {HERE, "<p><i></p><div><br></div><u>", "p<body; i<p; div<body; br<i3; u<i3"},
    {HERE, "<a><a>", "a<body; a<body"},
    {HERE, "<table><td><a><div></div><td><br>",
     "table<body; td<tr; a<td7; div<a11; td<tr; br<td25"},
    // templates; one that makes a shadow root is no element of the tree
    {HERE, "<div><template><img>", "div<body; template<div; img+template<template5"},
    {HERE, "<div><template shadowrootmode=OPEN><img>", "div<body; img+shadow<template"},
    {HERE, "<div><template shadowrootmode=open></template><template shadowrootmode=open><img>",
     "div<body; template<div shadowrootmode=open; "
     "img+template<template46"},
    {HERE, "<body><ul><template shadowrootmode=open><img>",
     "body<html; ul<body; template<ul6 shadowrootmode=open; img+template<template10"},
    {HERE, "<x-y><template shadowrootmode=open><img>", "<body; img+shadow<template"},
    // texts
    {HERE, "<style>a</style >b", "style<head; style:a"},
    {HERE, "<script><!--<script></script>--></script>",
     "script<head; script:<!--<script></script>-->"},
    {HERE, "<title><a></title><noscript><a></noscript>", "title<head; noscript<head; noscript:<a>"},
    {HERE, "<script>a", "script<head; script:a"},
    {HERE, "<svg><style>a<!---->b<![CDATA[c]]><g>d</g>e</style>f",
     "svg:svg<body; svg:style<svg; 5:a; 5:b; 5:cdata:c; svg:g<style5; 5:e; 5 ends"},
    {HERE, "<svg><style>a<p>", "svg:svg<body; svg:style<svg; 5:a; 5 ends; p<body"},
    // frames
    {HERE, "<b><frameset><frame src=x>",
     "b<body; body leaves 0; frameset<html; frame<frameset3 src=x"},
    {HERE, "<b>x<frameset><frame src=x>", "b<body"},
    // a table in a paragraph
    {HERE, "<p><table>", "p<body; table<p"},
    {HERE, "<!doctype html><p><table>", "p<body; table<body"},
    // line feeds after pre are dropped, and reopen nothing
    {HERE, "<div><b></div><pre>\n<p>", "div<body; b<div; pre<body; p<pre14"},
    {HERE, "<div><b></div><pre>\n\n<i>", "div<body; b<div; pre<body; i<b5"},
    {HERE, "<div><b></div><pre>&#10;<p>", "div<body; b<div; pre<body; p<pre14"},
};

// Notes of elements at offset 0 and of implied ones are 0, which the journal leaves out.
TEST(ElementReader, ReportsWhatStartTagsBecame) {
  forEachPlacement(kPages, [](const PageCase& row, Placement& placement) {
    EXPECT_EQ(journalOf(placement.bytes(row.page)), row.expected);
  });
}

TEST(ElementReader, ReadsNoscriptAsMarkupWithScriptingOff) {
  ReaderOptions options;
  options.scripting = false;
  EXPECT_EQ(journalOf("<p><noscript><img></noscript>", options),
            "p<body; noscript<p; img<noscript3");
}

TEST(ElementReader, ReadsAFragmentAsTheContentOfADiv) {
  ReaderOptions options;
  options.context = kDivContext;
  EXPECT_EQ(journalOf("<html manifest=x><td><p><table>", options), "p<html; table<html");
  options.quirks = true;
  EXPECT_EQ(journalOf("<p><table>", options), "p<html; table<p");
}

struct NamesHandler {
  static constexpr bool kTakesBareTags = true;
  std::uint8_t startTag(const StartTag& tag) {
    seen.push_back(tag.name);
    for (std::uint32_t i = 0; i < tag.attributeCount; ++i) seen.push_back(tag.attributes[i].name);
    return 0;
  }
  void rawText(const StartTag&, Span) {}
  void svgStyleText(std::uint32_t, Span, bool) {}
  void svgStyleEnds(std::uint32_t) {}
  void bodyLeaves(std::uint32_t) {}
  std::vector<NameId> seen;
};

TEST(ElementReader, KnowsACallersNames) {
  ExtraNames elements(kElementCount);
  ExtraNames attributes(kAttributeCount);
  const NameId card = elements.add("X-Card");
  const NameId image = attributes.add("image");
  NamesHandler handler;
  ReaderOptions options;
  options.elements = &elements;
  options.attributes = &attributes;
  const std::string_view page = "<x-card IMAGE=a other image=b src=c></x-card><x-other>";
  ElementReader<NamesHandler> reader(page, options, handler);
  reader.read();
  EXPECT_EQ(handler.seen, (std::vector<NameId>{card, image, id(Attribute::src), kUnknownName}));
}

// A run of reopened formatting elements answers as its elements would one by one.
TEST(ElementReader, ReopensManyAsItReopensOne) {
  constexpr const char* kParts[] = {
      "<b>",        "<b>",         "<b a=1>",   "<b a=2>",    "<b a=3>",
      "<i>",        "<i a=1>",     "<u>",       "</b>",       "</i>",
      "</u>",       "<p>",         "</p>",      "<div>",      "</div>",
      "x",          "x",           " ",         "<a href=1>", "</a>",
      "<nobr>",     "<nobr a=1>",  "</nobr>",   "<table>",    "</table>",
      "<td>",       "</td>",       "<li>",      "<ul>",       "</ul>",
      "<form>",     "</form>",     "<object>",  "</object>",  "<select>",
      "</select>",  "<option>",    "<svg>",     "</svg>",     "<foreignObject>",
      "<template>", "</template>", "<caption>", "<h1>",       "</h1>",
      "<button>",   "</button>",   "<xx>",      "</xx>",      "<frameset>",
      "<span>",     "</span>"};
  constexpr std::uint32_t kSeed = 20260401;
  std::mt19937 random(kSeed);
  for (int round = 0; round < 20000; ++round) {
    std::string page;
    const std::size_t kinds = round % 2 == 0 ? std::size(kParts) : std::size_t{24};
    for (std::size_t i = random() % 50; i > 0; --i) page += kParts[random() % kinds];
    ReaderOptions options;
    options.fewestInRun = 0xFFFFFFFF;
    const std::string expected = journalOf(page, options);
    for (const std::uint32_t fewest : {1U, 3U}) {
      options.fewestInRun = fewest;
      ASSERT_EQ(journalOf(page, options), expected) << page << " seed " << kSeed;
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
