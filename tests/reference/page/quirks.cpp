// Which doctypes stand for quirks: 13.2.6.4.1.
#include <algorithm>

#include "reference/page/tree_builder.h"

namespace reference::page {

namespace {

constexpr std::string_view kQuirkyPublicPrefixes[] = {
    "+//Silmaril//dtd html Pro v0r11 19970101//",
    "-//AS//DTD HTML 3.0 asWedit + extensions//",
    "-//AdvaSoft Ltd//DTD HTML 3.0 asWedit + extensions//",
    "-//IETF//DTD HTML 2.0 Level 1//",
    "-//IETF//DTD HTML 2.0 Level 2//",
    "-//IETF//DTD HTML 2.0 Strict Level 1//",
    "-//IETF//DTD HTML 2.0 Strict Level 2//",
    "-//IETF//DTD HTML 2.0 Strict//",
    "-//IETF//DTD HTML 2.0//",
    "-//IETF//DTD HTML 2.1E//",
    "-//IETF//DTD HTML 3.0//",
    "-//IETF//DTD HTML 3.2 Final//",
    "-//IETF//DTD HTML 3.2//",
    "-//IETF//DTD HTML 3//",
    "-//IETF//DTD HTML Level 0//",
    "-//IETF//DTD HTML Level 1//",
    "-//IETF//DTD HTML Level 2//",
    "-//IETF//DTD HTML Level 3//",
    "-//IETF//DTD HTML Strict Level 0//",
    "-//IETF//DTD HTML Strict Level 1//",
    "-//IETF//DTD HTML Strict Level 2//",
    "-//IETF//DTD HTML Strict Level 3//",
    "-//IETF//DTD HTML Strict//",
    "-//IETF//DTD HTML//",
    "-//Metrius//DTD Metrius Presentational//",
    "-//Microsoft//DTD Internet Explorer 2.0 HTML Strict//",
    "-//Microsoft//DTD Internet Explorer 2.0 HTML//",
    "-//Microsoft//DTD Internet Explorer 2.0 Tables//",
    "-//Microsoft//DTD Internet Explorer 3.0 HTML Strict//",
    "-//Microsoft//DTD Internet Explorer 3.0 HTML//",
    "-//Microsoft//DTD Internet Explorer 3.0 Tables//",
    "-//Netscape Comm. Corp.//DTD HTML//",
    "-//Netscape Comm. Corp.//DTD Strict HTML//",
    "-//O'Reilly and Associates//DTD HTML 2.0//",
    "-//O'Reilly and Associates//DTD HTML Extended 1.0//",
    "-//O'Reilly and Associates//DTD HTML Extended Relaxed 1.0//",
    "-//SQ//DTD HTML 2.0 HoTMetaL + extensions//",
    "-//SoftQuad Software//DTD HoTMetaL PRO 6.0::19990601::extensions to HTML 4.0//",
    "-//SoftQuad//DTD HoTMetaL PRO 4.0::19971010::extensions to HTML 4.0//",
    "-//Spyglass//DTD HTML 2.0 Extended//",
    "-//Sun Microsystems Corp.//DTD HotJava HTML//",
    "-//Sun Microsystems Corp.//DTD HotJava Strict HTML//",
    "-//W3C//DTD HTML 3 1995-03-24//",
    "-//W3C//DTD HTML 3.2 Draft//",
    "-//W3C//DTD HTML 3.2 Final//",
    "-//W3C//DTD HTML 3.2//",
    "-//W3C//DTD HTML 3.2S Draft//",
    "-//W3C//DTD HTML 4.0 Frameset//",
    "-//W3C//DTD HTML 4.0 Transitional//",
    "-//W3C//DTD HTML Experimental 19960712//",
    "-//W3C//DTD HTML Experimental 970421//",
    "-//W3C//DTD W3 HTML//",
    "-//W3O//DTD W3 HTML 3.0//",
    "-//WebTechs//DTD Mozilla HTML 2.0//",
    "-//WebTechs//DTD Mozilla HTML//",
};
constexpr std::string_view kFramesetOrTransitional[] = {
    "-//W3C//DTD HTML 4.01 Frameset//",
    "-//W3C//DTD HTML 4.01 Transitional//",
};
constexpr std::string_view kXhtml[] = {
    "-//W3C//DTD XHTML 1.0 Frameset//",
    "-//W3C//DTD XHTML 1.0 Transitional//",
};

template <typename Prefixes>
bool beginsWithOne(std::string_view text, const Prefixes& prefixes) {
  return std::any_of(std::begin(prefixes), std::end(prefixes),
                     [&](std::string_view prefix) { return startsWithIgnoringCase(text, prefix); });
}

bool isOneIgnoringCase(std::string_view text, std::initializer_list<std::string_view> wanted) {
  return std::any_of(wanted.begin(), wanted.end(),
                     [&](std::string_view one) { return equalsIgnoringCase(text, one); });
}

}  // namespace

Quirks quirksOf(const Token& doctype) {
  const std::string publicId = doctype.publicIdentifier.value_or("");
  const std::string systemId = doctype.systemIdentifier.value_or("");
  const bool hasSystem = doctype.systemIdentifier.has_value();
  if (doctype.forceQuirks || doctype.name != "html") return Quirks::yes;
  if (isOneIgnoringCase(publicId, {"-//W3O//DTD W3 HTML Strict 3.0//EN//",
                                   "-/W3C/DTD HTML 4.0 Transitional/EN", "HTML"}) ||
      isOneIgnoringCase(systemId, {"http://www.ibm.com/data/dtd/v11/ibmxhtml1-transitional.dtd"}) ||
      beginsWithOne(publicId, kQuirkyPublicPrefixes) ||
      (!hasSystem && beginsWithOne(publicId, kFramesetOrTransitional))) {
    return Quirks::yes;
  }
  if (beginsWithOne(publicId, kXhtml) ||
      (hasSystem && beginsWithOne(publicId, kFramesetOrTransitional))) {
    return Quirks::limited;
  }
  return Quirks::no;
}

}  // namespace reference::page
