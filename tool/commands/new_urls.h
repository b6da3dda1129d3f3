// What pagescan rewrite makes of the URLs of a page: rules in, edits out.
#ifndef PAGESCAN_TOOL_NEW_URLS_H
#define PAGESCAN_TOOL_NEW_URLS_H

#include <string>
#include <string_view>
#include <vector>

#include "pagescan/edits.h"

namespace pagescan::tool {

// URLs that begin with `from` begin with `to` instead.
struct UrlMove {
  std::string from, to;
};

// How URLs are to be written.
enum class UrlForm {
  asItIs,    // where they move, absolute; else as they stand there
  absolute,  // in full
  relative,  // as short as the base allows
  proxied,   // inside of another URL
};

struct UrlRules {
  UrlForm form = UrlForm::asItIs;
  std::vector<UrlMove> moves;       // of several that fit the longest one counts
  std::string beforeUrl, afterUrl;  // of a proxied one
  unsigned kinds = 0;               // a bit for each Kind
};

// The kinds that are rewritten where none is named: all that something fetches or follows; names in
// the form of URLs, and places in the page itself, are none.
unsigned usualKinds(UrlForm form);

// The move that a text of the form FROM=TO says. What is wrong with the text is told by `problem`.
UrlMove moveOf(const std::string& text, std::string& problem);

// The edits that the rules ask for.
// url   of the page or the style sheet; empty: unknown
std::vector<Edit> editsFor(const Page& page, std::string_view url, const UrlRules& rules);
std::vector<Edit> editsFor(const StyleSheet& sheet, std::string_view url, const UrlRules& rules);

}  // namespace pagescan::tool

#endif
