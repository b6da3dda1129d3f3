// Every URL that an HTML page carries, with the bytes that spell it, read as browsers read pages.
//
// It finds and resolves; it fetches nothing and runs no script. All offsets count bytes of the page
// as given; spans are half-open. A Page keeps a view of the bytes: they must outlive it. One Page
// may be read on many threads at once.
#ifndef PAGESCAN_PAGE_H
#define PAGESCAN_PAGE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/export.h"

namespace pagescan {

// Bytes [begin, end) of the page as given.
struct Span {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};

// What the place of a URL is for; never whether anything was fetched.
enum class Kind : std::uint8_t {
  load,        // a browser loads it with the page, under the condition that the flags tell
  navigation,  // where a link, a refresh or a description leads
  form,        // where a form is sent
  ping,        // told when a link is followed
  connection,  // a host to connect to early
  base,        // what the document's URLs resolve against
  metadata,    // about the page: its source, its neighbours, its pictures
  identifier,  // a name in the form of a URL, never fetched
  fragment,    // a part of this document
  script,      // only scripts make use of it
  dead,        // no browser of today reads it
};

// How the URL is written in its place.
enum class Slot : std::uint8_t {
  url,        // the whole attribute value
  urlList,    // one of several between white space
  commaList,  // one of several between commas
  srcset,     // the URL of an image candidate
  refresh,    // the URL of a refresh
  cssUrl,     // url(x) without quotes
  cssString,  // a CSS string, also in url("x")
  json,       // a JSON string
};

// Under which condition a reference counts; several may hold.
enum Flag : std::uint16_t {
  kNoscript = 1,      // in a noscript element, with scripting on
  kTemplate = 2,      // in the content of a template
  kCandidate = 4,     // one of several of which a browser takes one
  kLazy = 8,          // loaded when it is needed, or never
  kConditional = 16,  // depends on media, type, rules that match, ...
  kNonstandard = 32,  // known from practice, not from a standard
  kNested = 64,       // in the document of a srcdoc attribute
};
using Flags = std::uint16_t;

// Names as the command line prints them: "load", "url_list", "noscript".
PAGESCAN_PAGE_EXPORT std::string_view nameOf(Kind kind);
PAGESCAN_PAGE_EXPORT std::string_view nameOf(Slot slot);
PAGESCAN_PAGE_EXPORT std::string_view nameOf(Flag flag);

// Reference::parent of what stands in the page itself.
inline constexpr std::uint32_t kNoParent = 0xFFFFFFFF;

// One URL of a page: plain data, meaningful together with its Page.
struct Reference {
  Span span;              // the bytes that spell it: no quotes, no descriptor, no refresh time
  std::uint32_t tag;      // offset of the "<" of its tag
  std::uint32_t parent;   // offset of the "<" of the tag whose srcdoc or noscript text holds it
  std::uint16_t element;  // ids: see Page::element, Page::attribute
  std::uint16_t attribute;
  Kind kind;
  Slot slot;
  Flags flags;
};

}  // namespace pagescan

#endif
