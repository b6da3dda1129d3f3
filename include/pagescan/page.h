// Every URL that an HTML page carries, with the bytes that spell it, read as browsers read pages.
//
// It finds and resolves; it fetches nothing and runs no script. All offsets count bytes of the page
// as given; spans are half-open. A Page keeps a view of the bytes: they must outlive it. One Page
// may be read on many threads at once; all calls on it are const.
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
  std::uint32_t begin = 0;  // of the first byte
  std::uint32_t end = 0;    // after the last byte
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

// The kind of a name as nameOf gives it; none for another name.
PAGESCAN_PAGE_EXPORT std::optional<Kind> kindOf(std::string_view name);

// Reference::parent of what stands in the page itself.
inline constexpr std::uint32_t kNoParent = 0xFFFFFFFF;

// One URL of a page: plain data, meaningful together with its Page.
struct Reference {
  Span span;                // the bytes that spell it: no quotes, no descriptor, no refresh time
  std::uint32_t tag;        // offset of the "<" of its tag; in a style sheet of its own 0
  std::uint32_t parent;     // offset of the "<" of the tag whose srcdoc or noscript text holds it
  std::uint16_t element;    // ids that Page::element and Page::attribute read
  std::uint16_t attribute;  // likewise
  Kind kind;                // what the place is for
  Slot slot;                // how the URL is written there
  Flags flags;              // under which condition it counts: values of Flag joined by |
};

// Sets of places beyond the standard ones, which are always looked at; several may be joined.
enum Profile : std::uint8_t {
  kLazyProfile = 1,  // attributes from which scripts load pictures later, such as data-src
  kMetaProfile = 2,  // URLs in the content of meta elements, such as og:image
  kDataProfile = 4,  // URLs in JSON-LD, import maps and speculation rules
};
using Profiles = std::uint8_t;

// The profile of a name ("lazy", "meta", "data"), 0 for "standard"; none for another name.
PAGESCAN_PAGE_EXPORT std::optional<Profiles> profileOf(std::string_view name);

// A user's own table of places. Its text has the form of the built-in table: a line a place, with
// the columns profile, namespace, element, attribute, slot, kind and rule between tabs; a first
// line with these names, empty lines and lines that begin with "#" are skipped. Its rows are read
// before the built-in ones, so that they may also change what is known of a place. It may name up
// to 10,000 elements that the built-in table does not know, and as many attributes.
//
// Copies share the table. It may be used on many threads at once.
class PAGESCAN_PAGE_EXPORT Places {
 public:
  // Of no rows.
  Places();

  // text    copied
  // error   receives a message that names the line ("line 3: unknown kind \"loads\"") when the text
  //         is no table, and is left alone otherwise
  // Returns the table; std::nullopt when the text is none
  // Cost    linear in the text
  static std::optional<Places> parse(std::string_view text, std::string* error = nullptr);

  struct Table;
  // For the library itself.
  const Table* table() const { return table_.get(); }

 private:
  std::shared_ptr<const Table> table_;
};

// How a page is to be read. The texts and the table are needed during the call alone.
struct PageOptions {
  std::string_view url;            // where the page comes from; empty: unknown
  std::string_view charset;        // a label from outside the page; unknown ones count as none
  bool scripting = true;           // whether scripts run: noscript is text, then
  Profiles profiles = 0;           // beyond the standard places
  const Places* places = nullptr;  // a user's own, or none
};

// The references of an HTML page.
//
// Promises: `bytes[span]`, decoded by the rules of its place, is the value. Spans lie in the page,
// stand in order, and do not overlap but for nested documents and for text of an SVG style element
// that markup splits. The list depends on the bytes and the options alone.
// Cost: linear in the page in time and memory, but for one known shape: thousands of kinds of
// formatting elements (font elements with other attributes each), three of each open at once and
// then a fourth of each in a paragraph of its own, take time with the square of their number.
// Nested documents are read to a depth of 32, deeper ones are left out.
// Fails: std::bad_alloc alone.
class PAGESCAN_PAGE_EXPORT Page {
 public:
  // Reads the page at once.
  // bytes    not copied: they must outlive the page
  // options  its texts and its table are needed during the call alone
  explicit Page(std::string_view bytes, const PageOptions& options = {});

  // A page that was moved from may be destroyed or assigned to, nothing else.
  Page(Page&&) noexcept;
  // As above.
  Page& operator=(Page&&) noexcept;
  ~Page();

  // Empty; or why the page was not read: it has more than 2^32-1 bytes. There are no references
  // then.
  std::string_view error() const;

  // The bytes that the page was made of.
  std::string_view bytes() const;

  // In the order of span.begin, then of span.end.
  const std::vector<Reference>& references() const;

  // The bytes at the span of a reference.
  std::string_view raw(const Reference& reference) const;

  // What a reference spells, decoded by every layer, in UTF-8. Linear in the span, but for the CSS
  // of an SVG style element and of style text in some legacy encodings, which may look at all of
  // it.
  std::string value(const Reference& reference) const;

  // The same into a text whose storage is used again.
  void valueInto(const Reference& reference, std::string& result) const;

  // The absolute URL that a browser makes of a reference; none where it makes none.
  std::optional<std::string> url(const Reference& reference) const;

  // The same into a text whose storage is used again; false, and an empty text, where there is
  // none.
  bool urlInto(const Reference& reference, std::string& result) const;

  // The element of a reference in lower case as the parser names it ("img" for "image"); with
  // the prefix "svg:" or "math:" in these namespaces, in the parser's spelling ("svg:feImage").
  std::string element(const Reference& reference) const;

  // The attribute in lower case ("xlink:href"); empty for the text of an element.
  std::string_view attribute(const Reference& reference) const;

  // The name of the page's encoding in the Encoding Standard ("UTF-8", "windows-1252").
  std::string_view encoding() const;

  // What the document's links resolve against; empty where there is nothing.
  const std::string& base() const;

  // What a reference resolves against: the base that is in force where it counts. Empty where there
  // is nothing. Cost: logarithmic in the nested documents, linear in the base.
  std::string base(const Reference& reference) const;

  struct State;
  // For the library itself.
  const State& state() const { return *state_; }

 private:
  std::unique_ptr<State> state_;
};

class StyleSheet;

// A place in a text: both count from 1, columns in bytes.
struct Position {
  std::uint32_t line;    // the first is 1
  std::uint32_t column;  // in bytes; the first of a line is 1
};

// The lines of a page. A line ends with LF, CR or CR LF; in UTF-16 with these code units.
class PAGESCAN_PAGE_EXPORT LineIndex {
 public:
  // Reads the bytes once, and keeps four bytes a line.
  explicit LineIndex(const Page& page);
  explicit LineIndex(const StyleSheet& sheet);

  // offset   at most the size of the page
  // Cost     logarithmic in the number of lines
  Position at(std::uint32_t offset) const;

 private:
  std::vector<std::uint32_t> lineStarts_;
};

// The same for offsets in order, as those of references are: faster, and without the memory.
class PAGESCAN_PAGE_EXPORT LineCounter {
 public:
  // Borrows the bytes of the page or style sheet.
  explicit LineCounter(const Page& page);
  explicit LineCounter(const StyleSheet& sheet);

  // offset   at most the size of the page
  // Cost     linear in the bytes since the latest offset; all of them for one that lies before it
  Position at(std::uint32_t offset);

 private:
  std::string_view bytes_;
  std::optional<LineIndex> index_;  // of a page in UTF-16
  std::uint32_t offset_ = 0;        // the latest one
  std::uint32_t line_ = 1;          // its line, and where that begins
  std::uint32_t lineStart_ = 0;
};

}  // namespace pagescan

#endif
