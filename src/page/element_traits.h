// What tree construction asks about an element's name: sets that read like the lists of the HTML
// Standard, section 13.2.4.
#ifndef PAGESCAN_PAGE_ELEMENT_TRAITS_H
#define PAGESCAN_PAGE_ELEMENT_TRAITS_H

#include <array>
#include <initializer_list>

#include "page/names.h"

namespace pagescan::internal {

enum class Namespace : std::uint8_t { html, svg, mathml };

// Bits of what an open element is.
enum ElementTrait : std::uint32_t {
  kSpecial = 1,
  kItemLimit = 2,         // ends the search for an open li, dd or dt: special but address, div, p
  kScopeLimit = 4,        // ends "has an element in scope"
  kImpliedEnd = 8,        // "generate implied end tags" pops it
  kThoroughEnd = 16,      // "... thoroughly" pops it
  kMathTextPoint = 32,    // MathML text integration point
  kHtmlPoint = 64,        // HTML integration point
  kPopHook = 128,         // form, template, svg:style: leaving the stack is noted
  kShadowHostName = 256,  // may have a shadow root, by its name
  kShadowRoot = 512,      // a template that made a shadow root
  kHasShadowRoot = 1024,
  kStyleText = 2048,     // svg:style: its text is a style sheet
  kRun = 4096,           // many formatting elements at once: see FormattingList
  kForeign = 8192,       // SVG or MathML
  kHeading = 16384,      // h1 to h6
  kPassesItems = 32768,  // an li, dd or dt below it need not be its child: not kItemLimit, or one
  kPlainEnd = 65536,     // its end tag, where it is the current node, does no more than close it
};
using ElementTraits = std::uint32_t;

class ElementSet {
 public:
  constexpr ElementSet(std::initializer_list<Element> elements) {
    for (const Element element : elements) member_[id(element)] = true;
  }
  constexpr bool contains(std::size_t element) const {
    return element < member_.size() && member_[element];
  }

 private:
  std::array<bool, kElementCount> member_{};
};

inline constexpr ElementSet kSpecialHtml = {
    Element::address,    Element::applet,   Element::area,     Element::article,
    Element::aside,      Element::base,     Element::basefont, Element::bgsound,
    Element::blockquote, Element::body,     Element::br,       Element::button,
    Element::caption,    Element::center,   Element::col,      Element::colgroup,
    Element::dd,         Element::details,  Element::dir,      Element::div,
    Element::dl,         Element::dt,       Element::embed,    Element::fieldset,
    Element::figcaption, Element::figure,   Element::footer,   Element::form,
    Element::frame,      Element::frameset, Element::h1,       Element::h2,
    Element::h3,         Element::h4,       Element::h5,       Element::h6,
    Element::head,       Element::header,   Element::hgroup,   Element::hr,
    Element::html,       Element::iframe,   Element::img,      Element::input,
    Element::keygen,     Element::li,       Element::link,     Element::listing,
    Element::main,       Element::marquee,  Element::menu,     Element::meta,
    Element::nav,        Element::noembed,  Element::noframes, Element::noscript,
    Element::object,     Element::ol,       Element::p,        Element::param,
    Element::plaintext,  Element::pre,      Element::script,   Element::search,
    Element::section,    Element::select,   Element::source,   Element::style,
    Element::summary,    Element::table,    Element::tbody,    Element::td,
    Element::template_,  Element::textarea, Element::tfoot,    Element::th,
    Element::thead,      Element::title,    Element::tr,       Element::track,
    Element::ul,         Element::wbr,      Element::xmp};

// Those of the namespaces that end a scope are the special ones there.
inline constexpr ElementSet kSpecialMathml = {Element::mi, Element::mo,    Element::mn,
                                              Element::ms, Element::mtext, Element::annotationXml};
inline constexpr ElementSet kSpecialSvg = {Element::foreignObject, Element::desc, Element::title};

inline constexpr ElementSet kScopeLimits = {
    Element::applet, Element::caption, Element::html,   Element::table,  Element::td,
    Element::th,     Element::marquee, Element::object, Element::select, Element::template_};

inline constexpr ElementSet kImpliedEnds = {
    Element::dd, Element::dt, Element::li, Element::optgroup, Element::option,
    Element::p,  Element::rb, Element::rp, Element::rt,       Element::rtc};

inline constexpr ElementSet kThoroughEnds = {
    Element::caption,  Element::colgroup, Element::dd,    Element::dt, Element::li,
    Element::optgroup, Element::option,   Element::p,     Element::rb, Element::rp,
    Element::rt,       Element::rtc,      Element::tbody, Element::td, Element::tfoot,
    Element::th,       Element::thead,    Element::tr};

// Besides all names with a hyphen (DOM Standard, "attach a shadow root").
inline constexpr ElementSet kShadowHosts = {
    Element::article, Element::aside,   Element::blockquote, Element::body, Element::div,
    Element::footer,  Element::h1,      Element::h2,         Element::h3,   Element::h4,
    Element::h5,      Element::h6,      Element::header,     Element::main, Element::nav,
    Element::p,       Element::section, Element::span};

inline constexpr ElementSet kListItems = {Element::li, Element::dd, Element::dt};

inline constexpr ElementSet kHeadings = {Element::h1, Element::h2, Element::h3,
                                         Element::h4, Element::h5, Element::h6};

// Those whose end tags do more than to close them, or less.
inline constexpr ElementSet kOwnEnds = {
    Element::applet, Element::body,   Element::br,       Element::caption,   Element::col,
    Element::form,   Element::frame,  Element::frameset, Element::colgroup,  Element::head,
    Element::html,   Element::object, Element::marquee,  Element::noscript,  Element::table,
    Element::tbody,  Element::td,     Element::tfoot,    Element::template_, Element::th,
    Element::thead,  Element::tr};

constexpr ElementTraits traitIf(bool has, ElementTrait trait) {
  return has ? trait : ElementTraits{0};
}

constexpr ElementTraits htmlTraits(Element element) {
  const NameId name = id(element);
  const bool isSpecial = kSpecialHtml.contains(name);
  const bool isPassed =
      element == Element::address || element == Element::div || element == Element::p;
  const bool isItemLimit = isSpecial && !isPassed;
  return traitIf(isSpecial, kSpecial) | traitIf(isItemLimit, kItemLimit) |
         traitIf(!isItemLimit || kListItems.contains(name), kPassesItems) |
         traitIf(kHeadings.contains(name), kHeading) |
         traitIf(!kOwnEnds.contains(name), kPlainEnd) |
         traitIf(kScopeLimits.contains(name), kScopeLimit) |
         traitIf(kImpliedEnds.contains(name), kImpliedEnd) |
         traitIf(kThoroughEnds.contains(name), kThoroughEnd) |
         traitIf(element == Element::form || element == Element::template_, kPopHook) |
         traitIf(kShadowHosts.contains(name), kShadowHostName);
}

// The row of kUnknownName holds for all names that are not in it.
constexpr std::array<ElementTraits, kElementCount> htmlTraitTable() {
  std::array<ElementTraits, kElementCount> table{};
  for (NameId name = 0; name < kElementCount; ++name) {
    table[name] = htmlTraits(static_cast<Element>(name));
  }
  return table;
}
inline constexpr auto kHtmlTraits = htmlTraitTable();

constexpr ElementTraits foreignTraits(std::uint32_t name) {
  const bool leaves = name == id(Element::br) || name == id(Element::p);
  return kForeign | traitIf(!leaves, kPlainEnd);
}

constexpr ElementTraits svgTraits(std::uint32_t name) {
  constexpr ElementTraits kLimits = kSpecial | kItemLimit | kScopeLimit;
  if (kSpecialSvg.contains(name)) return foreignTraits(name) | kLimits | kHtmlPoint;
  if (name == id(Element::style)) return kForeign | kPopHook | kStyleText;
  return foreignTraits(name);
}

// isHtmlPoint  whether an annotation-xml is one, by its attribute `encoding`
constexpr ElementTraits mathmlTraits(std::uint32_t name, bool isHtmlPoint) {
  if (!kSpecialMathml.contains(name)) return foreignTraits(name);
  const ElementTraits kLimits = foreignTraits(name) | kSpecial | kItemLimit | kScopeLimit;
  if (name != id(Element::annotationXml)) return kLimits | kMathTextPoint;
  return isHtmlPoint ? kLimits | kHtmlPoint : kLimits;
}

}  // namespace pagescan::internal

#endif
