#include "base/url_scheme.h"

#include "base/byte_class.h"
#include "base/search.h"

namespace pagescan::internal {
namespace {

struct Scheme {
  std::string_view text;
  SchemeCode code;
};

constexpr Scheme kSchemes[] = {
    {"ftp:", SchemeCode::ftp},       {"file:", SchemeCode::file},
    {"http:", SchemeCode::http},     {"https:", SchemeCode::https},
    {"mailto:", SchemeCode::mailto}, {"javascript:", SchemeCode::javascript},
    {"clsid:", SchemeCode::clsid},
};

}  // namespace

std::string_view schemeOf(std::string_view url) {
  const char* end = url.data() + url.size();
  const char* colon = findFirstNotOf(url.data(), end, kLetters);
  if (colon == end || *colon != ':') return {};
  return url.substr(0, static_cast<std::size_t>(colon - url.data()) + 1);
}

SchemeCode schemeCodeOf(std::string_view scheme) {
  if (scheme.empty()) return SchemeCode::none;
  for (const Scheme& known : kSchemes) {
    if (equalsIgnoringCase(scheme, known.text)) return known.code;
  }
  return SchemeCode::other;
}

}  // namespace pagescan::internal
