#include "reference/classic/tqurlbase.h"

#include <cstddef>

#include "reference/classic/charset.h"
#include "reference/classic/regexp.h"
#include "reference/classic/strings.h"
#include "reference/classic/zkhtmlparseutils.h"

namespace reference {

namespace {

bool beginsWith(const std::string& text, const std::string& start) {
  return text.substr(0, start.length()) == start;
}

std::string before(const std::string& text, char c) {
  return text.substr(0, text.find(c));
}

}  // namespace

bool isHttpProtocol(const std::string& url) {
  const Match match = search(url, "^[a-zA-Z]+:", 0);
  if (match.position == npos) return true;
  const std::string scheme = lowered(url.substr(match.position, match.length));
  return (scheme.length() >= 5 && beginsWith(scheme, "http")) ||
         (scheme.length() >= 6 && beginsWith(scheme, "clsid"));
}

bool UrlBase::setBase(const std::string& url) {
  fullUrl = before(url, '#');
  stripUrl(fullUrl, true);
  baseNoQuery = before(fullUrl, '?');
  parsed = false;
  return true;
}

int UrlBase::shortParse() {
  return split("//");
}
int UrlBase::parse() {
  return split("");
}

int UrlBase::split(const std::string& schemeEnd) {
  if (parsed) return 1;
  parsed = true;
  std::string s = baseNoQuery;
  if (s.length() < 4 || index(s, "http", 0, Case::ignore) == npos) return -1;
  dirDepth = 0;
  host.clear();
  dirPath.clear();
  if (s.length() < 7) return -1;
  if (index(s, "https://", 0, Case::ignore) != npos) {
    protocol = "https:" + schemeEnd;
  } else if (index(s, "http://", 0, Case::ignore) != npos) {
    protocol = "http:" + schemeEnd;
  } else {
    return -1;
  }
  s.erase(0, index(s, "//", 0) + 2);
  if (index(s, "/", 0) == npos) {
    host = s;
    dirPath = "/";
    return 1;
  }
  host = before(s, '/');
  s.erase(0, host.length());
  for (std::size_t slash = index(s, "/", 0); slash != npos; slash = index(s, "/", 0)) {
    ++dirDepth;
    dirPath += s.substr(0, slash + 1);
    s.erase(0, slash + 1);
  }
  fileName = s;
  return 0;
}

// ---- calcUrl(url)

// Resolves a URL that begins with "../".
std::string UrlBase::climb(const std::string& url) const {
  int k = 0;
  std::string rest = url;
  while (beginsWith(rest, "../")) {
    rest.erase(0, 3);
    ++k;
  }
  if (dirDepth <= k + 1) return protocol + host + "/" + rest;
  std::string path;
  int slashes = 0;
  for (const char c : dirPath) {
    path += c;
    if (c == '/') ++slashes;
    if (slashes == dirDepth - k) break;
  }
  return protocol + host + path + rest;
}

std::string UrlBase::calcUrl(std::string& url) {
  shortParse();
  convert(url);
  stripUrl(url, true);
  const std::string directory = protocol + host + dirPath;
  if (url == "/") return protocol + host + "/";
  if (url.length() < 2) return directory;
  const std::size_t question = index(url, "?", 0);
  const std::size_t absolute = index(url, "://", 0);
  if (absolute != npos && url[0] != '/' && (question == npos || absolute < question)) return url;
  if (beginsWith(url, "//")) {
    url.replace(0, 2, protocol);
    return url;
  }
  if (!isHttpProtocol(url)) return url;
  if (beginsWith(url, "/")) return protocol + host + url;
  if (url == "./") return directory;
  if (beginsWith(url, "../")) return climb(url);
  if (beginsWith(url, "./")) {
    url.erase(0, 2);
    return directory + url;
  }
  if (beginsWith(url, "#")) return directory + fileName + url;
  return directory + url;
}

// ---- calcUrl(in, out, resolveEmpty, decodePercent)

void UrlBase::addPrefix(std::string& out) const {
  if (beginsWith(out, "/")) {
    out.insert(0, protocol + "//" + host);
  } else if (beginsWith(out, "#") || beginsWith(out, "?")) {
    out.insert(0, baseNoQuery);
  } else {
    out.insert(0, protocol + "//" + host + dirPath);
  }
}

void UrlBase::foldParents(std::string& out) const {
  const std::size_t hostAt = index(out, host, 0);
  const std::size_t e = host.empty() || hostAt == npos ? 0 : hostAt + host.length();
  while (true) {
    const std::size_t p = index(out, "../", e);
    if (p == npos || out.length() < e + 3) return;
    if (index(out, "?", 0) < p) return;
    if (p == e + 1) {
      out.erase(e, 3);
      continue;
    }
    out.erase(p, 3);
    if (p == 0) continue;
    const std::size_t j = out.substr(0, p - 1).rfind('/');
    const std::size_t first = j == npos ? 0 : j + 1;
    out.erase(first, p - first);
  }
}

void UrlBase::calcUrl(const std::string& in, std::string& out, bool resolveEmpty,
                      bool decodePercent) {
  if (!resolveEmpty && in.empty()) return;
  parse();
  out = in;
  stripUrl(out, decodePercent);
  if (beginsWith(out, "//")) out.insert(0, protocol);
  if (beginsWith(out, "\\\\")) out.replace(0, 2, "file://");

  int length = 0;
  const int code = getProtocol(out, length);
  const auto schemeLength = static_cast<std::size_t>(length);
  if (code == 1 || code == 5 || code == 6 || code == 7) return;
  if (code == 2) {
    if (byteAt(out, schemeLength + 1) == '/') return;
    out.erase(0, schemeLength);
    out.insert(0, beginsWith(out, "/") ? "file://" : "file:///");
    return;
  }
  if (code == 3 || code == 4) {
    if (byteAt(out, schemeLength) == '/' && byteAt(out, schemeLength + 1) == '/') return;
    out.erase(0, schemeLength);
  }

  if (beginsWith(out, "./")) out.erase(0, 2);
  while (index(out, "/./", 0) != npos) out.replace(index(out, "/./", 0), 3, "/");
  for (char& c : out) {
    if (c == '\\') c = '/';
  }
  addPrefix(out);
  foldParents(out);
}

}  // namespace reference
