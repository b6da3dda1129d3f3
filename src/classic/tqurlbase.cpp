#include "tqurlbase.h"

#include <algorithm>
#include <initializer_list>

#include "base/link_scan.h"
#include "base/search.h"
#include "base/url_scheme.h"
#include "charset.h"
#include "classic/scratch_text.h"
#include "classic/text_view.h"
#include "classic/url_cleaning.h"
#include "classic/url_folding.h"
#include "zkhtmlparseutils.h"

using namespace pagescan::internal;

namespace {

constexpr std::string_view kHttp = "http://";
constexpr std::string_view kHttps = "https://";
constexpr std::string_view kSlashes = "//";
constexpr std::string_view kHere = "./";
constexpr std::string_view kParent = "../";
constexpr std::size_t kNone = std::string_view::npos;

std::string_view upTo(std::string_view text, char stop) {
  return text.substr(0, text.find(stop));
}

bool beginsWithIgnoringCase(std::string_view text, std::string_view start) {
  return equalsIgnoringCase(text.substr(0, start.size()), start);
}

bool holdsIgnoringCase(std::string_view text, const CaselessText& part) {
  const char* end = text.data() + text.size();
  return findIgnoringCase(text.data(), end, part) != end;
}

RWCString joined(std::initializer_list<std::string_view> parts) {
  std::size_t length = 0;
  for (const std::string_view part : parts) length += part.size();
  ScratchText text;
  text.start(length);
  for (const std::string_view part : parts) text.append(part);
  return stringOf(text.text());
}

}  // namespace

bool isHttpProtocol(const RWCString& url) {
  const std::string_view scheme = schemeOf(viewOf(url));
  if (scheme.size() < 2) return true;
  return beginsWithIgnoringCase(scheme, "http") || beginsWithIgnoringCase(scheme, "clsid");
}

// --- The base ---------------------------------------------------------------------------------

urlBase::urlBase() : dirDepth(0), parsed(false), spareFlag(false) {}

urlBase::urlBase(const RWCString& url) : urlBase() {
  setBase(url);
}

urlBase::~urlBase() = default;

bool urlBase::setBase(const RWCString& url) {
  ScratchText scratch;
  fullUrl = stringOf(cleanUrl(upTo(viewOf(url), '#'), true, scratch));
  baseNoQuery = stringOf(upTo(viewOf(fullUrl), '?'));
  parsed = false;
  return true;
}

namespace {

// "https" wins, also where an "http://" stands before it.
std::string_view protocolOf(std::string_view url) {
  if (holdsIgnoringCase(url, kHttps)) return kHttps;
  return holdsIgnoringCase(url, kHttp) ? kHttp : std::string_view();
}

// Takes "host/dir/file" apart; returns whether there is a path.
bool splitHostAndPath(std::string_view rest, urlBase& base) {
  const std::size_t path = rest.find('/');
  base.host = stringOf(rest.substr(0, path));
  if (path == kNone) {
    base.dirPath = "/";
    return false;
  }
  rest.remove_prefix(path);
  const std::size_t file = rest.rfind('/') + 1;
  base.dirPath = stringOf(rest.substr(0, file));
  base.fileName = stringOf(rest.substr(file));
  base.dirDepth = static_cast<int>(std::count(rest.begin(), rest.end(), '/'));
  return true;
}

int split(urlBase& base, bool keepsSlashes) {
  if (base.parsed) return 1;
  base.parsed = true;
  const std::string_view url = viewOf(base.baseNoQuery);
  if (!holdsIgnoringCase(url, "http")) return -1;
  base.dirDepth = 0;
  base.host = RWCString();
  base.dirPath = RWCString();
  const std::string_view protocol = protocolOf(url);
  if (protocol.empty()) return -1;
  base.protocol =
      stringOf(keepsSlashes ? protocol : protocol.substr(0, protocol.size() - kSlashes.size()));
  return splitHostAndPath(url.substr(url.find(kSlashes) + kSlashes.size()), base) ? 0 : 1;
}

}  // namespace

int urlBase::shortParse() {
  return split(*this, true);
}

int urlBase::parse() {
  return split(*this, false);
}

// --- Resolving a single link of a host --------------------------------------------------------

namespace {

// A link with a "://" of its own, before any query.
bool isAbsolute(std::string_view link) {
  const std::size_t mark = link.find("://");
  return mark != kNone && link.front() != '/' && link.substr(0, mark).find('?') == kNone;
}

// `dirPath` through its `count`-th "/".
std::string_view topDirectories(std::string_view dirPath, long count) {
  std::size_t end = 0;
  while (count-- > 0 && end < dirPath.size()) end += upTo(dirPath.substr(end), '/').size() + 1;
  return dirPath.substr(0, end);
}

RWCString resolveAbove(const urlBase& base, std::string_view link) {
  long parents = 0;
  while (link.starts_with(kParent)) {
    link.remove_prefix(kParent.size());
    ++parents;
  }
  const std::string_view directory =
      base.dirDepth > parents + 1 ? topDirectories(viewOf(base.dirPath), base.dirDepth - parents)
                                  : "/";
  return joined({viewOf(base.protocol), viewOf(base.host), directory, link});
}

// Resolves a clean link, which it changes as the rules say.
RWCString resolveLink(const urlBase& base, RWCString& url) {
  const std::string_view link = viewOf(url);
  const std::string_view top = viewOf(base.protocol);
  const std::string_view site = viewOf(base.host);
  const std::string_view directory = viewOf(base.dirPath);
  if (link.size() < 2) return joined({top, site, link == "/" ? link : directory});
  if (isAbsolute(link)) return url;
  if (link.starts_with(kSlashes)) return url = joined({top, link.substr(kSlashes.size())});
  if (!isHttpProtocol(url)) return url;
  if (link.front() == '/') return joined({top, site, link});
  if (link == kHere) return joined({top, site, directory});
  if (link.starts_with(kParent)) return resolveAbove(base, link);
  if (link.front() == '#') return joined({top, site, directory, viewOf(base.fileName), link});
  if (link.starts_with(kHere)) url.remove(0, kHere.size());
  return joined({top, site, directory, viewOf(url)});
}

}  // namespace

RWCString urlBase::calcUrl(RWCString& url) {
  shortParse();
  RWCString link = url;  // the host's string stays as it is should memory run out
  if (CTQCharSet* charSet = CTQCharSet::fsGetSingleton()) charSet->convert(link);
  stripUrl(link, true);
  RWCString result = resolveLink(*this, link);
  url.swap(link);
  return result;
}

// --- Resolving as the offset parser does ------------------------------------------------------

namespace {

// "file:" and something without a "/" at the second place after it: a path on this machine.
std::string_view fileUrl(std::string_view link, std::size_t schemeLength, RWCString& made) {
  constexpr std::string_view kFile = "file://";
  const std::size_t second = schemeLength + 1;
  if (second < link.size() && link[second] == '/') return link;
  link.remove_prefix(schemeLength);
  made = joined({kFile, link.starts_with('/') ? "" : "/", link});
  return viewOf(made);
}

// Where folding starts: after the first occurrence of the host, even if that is in the protocol;
// hosts rely on it. 0 where the host does not occur.
std::size_t endOfHost(std::string_view url, std::string_view host) {
  const char* end = url.data() + url.size();
  const char* found = findText(url.data(), end, host);
  return found == end ? 0 : static_cast<std::size_t>(found - url.data()) + host.size();
}

RWCString resolveRelative(const urlBase& base, std::string_view link) {
  if (link.starts_with(kHere)) link.remove_prefix(kHere.size());
  const char first = link.empty() ? '\0' : link.front();
  const bool followsBase = first == '#' || first == '?';
  const bool followsHost = first == '/' || first == '\\';

  ScratchText url;
  url.start(base.baseNoQuery.length() + base.protocol.length() + kSlashes.size() +
            base.host.length() + base.dirPath.length() + link.size());
  if (followsBase) {
    url.append(viewOf(base.baseNoQuery));
  } else {
    url.append(viewOf(base.protocol));
    url.append(kSlashes);
    url.append(viewOf(base.host));
    if (!followsHost) url.append(viewOf(base.dirPath));
  }
  const std::size_t linkStart = url.size();
  url.append(link);
  if (!needsFolding(url.text())) return stringOf(url.text());

  url.shorten(linkStart);
  appendLink(link, url);
  ScratchText folded;
  foldParents(url.text(), endOfHost(url.text(), viewOf(base.host)), folded);
  return stringOf(folded.text());
}

}  // namespace

void urlBase::calcUrl(const RWCString& in, RWCString& out, bool resolveEmpty, bool decodePercent) {
  if (!resolveEmpty && in.length() == 0) return;
  if (!parsed) parse();
  ScratchText scratch;
  std::string_view link = viewOf(in);
  if (needsCleaning(link)) {
    link = cleanUrl(link, decodePercent, scratch);
  } else if (isAbsoluteHttp(link)) {
    out = in;
    return;
  }
  RWCString made;  // what `link` is a view of once it was put together anew
  if (link.starts_with(kSlashes)) {
    made = joined({viewOf(protocol), link});
    link = viewOf(made);
  } else if (link.starts_with("\\\\")) {
    made = joined({"file://", link.substr(2)});
    link = viewOf(made);
  }

  const std::string_view scheme = schemeOf(link);
  const SchemeCode code = schemeCodeOf(scheme);
  const bool isHttp = code == SchemeCode::http || code == SchemeCode::https;
  const bool isRelative = code == SchemeCode::none || code == SchemeCode::clsid ||
                          (isHttp && link.substr(scheme.size(), 2) != kSlashes);
  if (isRelative) {
    out = resolveRelative(*this, isHttp ? link.substr(scheme.size()) : link);
    return;
  }
  if (code == SchemeCode::file) link = fileUrl(link, scheme.size(), made);
  const bool isUnchanged = link.data() == in.data() && link.size() == in.length();
  out = isUnchanged ? in : stringOf(link);
}
