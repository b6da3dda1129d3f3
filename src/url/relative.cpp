// Url::relativeTo.
#include <algorithm>
#include <string>
#include <string_view>

#include "pagescan/url.h"

namespace pagescan {
namespace {

using std::string_view;

// How far two paths go through the same directories: after the "/" of the last one.
std::size_t commonDirectories(string_view a, string_view b) {
  const auto end = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
  return a.substr(0, static_cast<std::size_t>(end - a.begin())).rfind('/') + 1;
}

// From the directory of one path to another path. Both begin with "/".
std::string relativePath(string_view path, string_view basePath) {
  const std::size_t common = commonDirectories(path, basePath);
  const string_view directories = basePath.substr(common);
  std::string result;
  for (auto ups = std::count(directories.begin(), directories.end(), '/'); ups > 0; --ups) {
    result += "../";
  }
  const string_view rest = path.substr(common);
  // What begins with "/" would be a path from the root, what has a ":" may be taken for a scheme.
  const string_view first = rest.substr(0, rest.find('/'));
  const bool isUnclear = first.empty() || first.find(':') != string_view::npos;
  if (result.empty() && isUnclear) result = "./";
  result += rest;
  return result;
}

std::string referenceTo(const Url& url, const Url& base) {
  const string_view text = url.href();
  const bool isSamePath = url.path() == base.path();
  if (isSamePath && url.query() == base.query() && url.fragment()) {
    return std::string(text.substr(url.offsets().fragmentBegin));
  }
  const string_view queryAndFragment = text.substr(url.offsets().queryBegin);
  if (isSamePath && url.query()) return std::string(queryAndFragment);
  return relativePath(url.path(), base.path()).append(queryAndFragment);
}

}  // namespace

std::string Url::relativeTo(const Url& base) const {
  const bool isSameOrigin = part(0, at_.pathBegin) == base.part(0, base.at_.pathBegin);
  const bool havePaths = path().substr(0, 1) == "/" && base.path().substr(0, 1) == "/";
  if (isSameOrigin && havePaths) {
    std::string reference = referenceTo(*this, base);
    // Rules for some schemes (drive letters) may say otherwise.
    const std::optional<Url> resolved = parse(reference, base);
    if (resolved && resolved->text_ == text_) return reference;
  }
  return text_;
}

}  // namespace pagescan
