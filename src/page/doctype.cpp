#include "page/doctype.h"

#include <algorithm>
#include <cstring>

#include "page/tag_scanner.h"

namespace pagescan::internal {

namespace {

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return toLower(x) == toLower(y); });
}

bool startsIgnoringCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && equalIgnoringCase(text.substr(0, prefix.size()), prefix);
}

// Public identifiers that mean quirks mode: as a whole, and by their start.
constexpr std::string_view kQuirksIds[] = {
    "-//W3O//DTD W3 HTML Strict 3.0//EN//",
    "-/W3C/DTD HTML 4.0 Transitional/EN",
    "HTML",
};
constexpr std::string_view kQuirksPrefixes[] = {
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
// With a system identifier these mean limited quirks mode, without one quirks mode.
constexpr std::string_view kFramesetPrefixes[] = {
    "-//W3C//DTD HTML 4.01 Frameset//",
    "-//W3C//DTD HTML 4.01 Transitional//",
};
constexpr std::string_view kLimitedPrefixes[] = {
    "-//W3C//DTD XHTML 1.0 Frameset//",
    "-//W3C//DTD XHTML 1.0 Transitional//",
};
constexpr std::string_view kQuirksSystemId =
    "http://www.ibm.com/data/dtd/v11/ibmxhtml1-transitional.dtd";

template <class Prefixes>
bool startsWithAny(std::string_view text, const Prefixes& prefixes) {
  return std::any_of(std::begin(prefixes), std::end(prefixes),
                     [text](std::string_view prefix) { return startsIgnoringCase(text, prefix); });
}

// Reads the parts of one DOCTYPE. The first ">" outside of the name's or keywords' place ends it,
// also inside an identifier.
class DoctypeReader {
 public:
  DoctypeReader(const char* at, const char* end) : at_(at), end_(end) {}

  Doctype read() {
    skipSpace();
    if (atEnd()) return forcing();
    const char* name = at_;
    at_ = skipTo(at_, end_, kBareValueEnd);
    doctype_.name = {name, static_cast<std::size_t>(at_ - name)};
    skipSpace();
    if (at_ == end_) return forcing();
    if (*at_ == '>') return doctype_;
    const std::string_view left(at_, static_cast<std::size_t>(end_ - at_));
    if (startsIgnoringCase(left, "public")) return readIds(doctype_.publicId);
    if (startsIgnoringCase(left, "system")) return readIds(doctype_.systemId);
    return forcing();
  }

  // After the ">" that ends it.
  const char* end() const {
    const auto room = static_cast<std::size_t>(end_ - at_);
    const auto* close = static_cast<const char*>(std::memchr(at_, '>', room));
    return close == nullptr ? end_ : close + 1;
  }

 private:
  void skipSpace() { at_ = skipTagWhiteSpace(at_, end_); }
  bool atEnd() const { return at_ == end_ || *at_ == '>'; }
  Doctype forcing() {
    doctype_.forcesQuirks = true;
    return doctype_;
  }

  // After the keyword: the identifier, and after a public one perhaps the system one.
  Doctype readIds(std::optional<std::string_view>& first) {
    at_ += 6;
    skipSpace();
    if (!readQuoted(first)) return forcing();
    if (&first == &doctype_.systemId) return atClosing();
    skipSpace();
    if (at_ == end_) return forcing();
    if (*at_ == '>') return doctype_;
    if (!readQuoted(doctype_.systemId)) return forcing();
    return atClosing();
  }

  // What follows a system identifier changes nothing, but for the end of the page.
  Doctype atClosing() {
    skipSpace();
    return at_ == end_ ? forcing() : doctype_;
  }

  bool readQuoted(std::optional<std::string_view>& id) {
    if (atEnd() || (*at_ != '"' && *at_ != '\'')) return false;
    const char quote = *at_++;
    const char* begin = at_;
    while (at_ != end_ && *at_ != quote && *at_ != '>') ++at_;
    id = std::string_view(begin, static_cast<std::size_t>(at_ - begin));
    if (at_ == end_ || *at_ == '>') return false;
    ++at_;
    return true;
  }

  const char* at_;
  const char* end_;
  Doctype doctype_;
};

}  // namespace

Doctype readDoctype(const char*& at, const char* end) {
  DoctypeReader reader(at, end);
  const Doctype doctype = reader.read();
  at = reader.end();
  return doctype;
}

bool meansQuirks(const Doctype& doctype) {
  if (doctype.forcesQuirks || !equalIgnoringCase(doctype.name, "html")) return true;
  if (doctype.systemId && equalIgnoringCase(*doctype.systemId, kQuirksSystemId)) return true;
  if (!doctype.publicId) return false;
  const std::string_view id = *doctype.publicId;
  return std::any_of(std::begin(kQuirksIds), std::end(kQuirksIds),
                     [id](std::string_view whole) { return equalIgnoringCase(id, whole); }) ||
         startsWithAny(id, kQuirksPrefixes) ||
         (!doctype.systemId && startsWithAny(id, kFramesetPrefixes));
}

bool meansLimitedQuirks(const Doctype& doctype) {
  if (!doctype.publicId || meansQuirks(doctype)) return false;
  return startsWithAny(*doctype.publicId, kLimitedPrefixes) ||
         (doctype.systemId && startsWithAny(*doctype.publicId, kFramesetPrefixes));
}

}  // namespace pagescan::internal
