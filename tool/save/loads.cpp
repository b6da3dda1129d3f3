#include "save/loads.h"

#include <algorithm>
#include <optional>

namespace pagescan::tool {

namespace {

constexpr std::string_view kInside[] = {"data:", "about:", "javascript:", "blob:"};
constexpr std::string_view kDocumentElements[] = {"iframe", "frame", "object", "embed"};

bool showsDocument(const std::string& element) {
  return std::find(std::begin(kDocumentElements), std::end(kDocumentElements), element) !=
         std::end(kDocumentElements);
}

template <typename Text, typename ShowsDocument>
std::vector<Load> collect(const Text& text, const ShowsDocument& isDocument) {
  std::vector<Load> loads;
  const LineIndex lines(text);
  for (const Reference& reference : text.references()) {
    if (reference.kind != Kind::load) continue;
    const std::optional<std::string> url = text.url(reference);
    if (!url || !isFetched(*url)) continue;
    loads.push_back({std::string(withoutFragment(*url)), isDocument(reference),
                     lines.at(reference.span.begin)});
  }
  return loads;
}

}  // namespace

std::vector<Load> loadsOf(const Page& page) {
  return collect(page, [&](const Reference& reference) {
    return showsDocument(page.element(reference)) && page.attribute(reference) != "style";
  });
}

std::vector<Load> loadsOf(const StyleSheet& sheet) {
  return collect(sheet, [](const Reference&) { return false; });
}

bool isFetched(std::string_view url) {
  return std::none_of(std::begin(kInside), std::end(kInside), [&](std::string_view scheme) {
    return url.substr(0, scheme.size()) == scheme;
  });
}

std::string_view withoutFragment(std::string_view url) {
  return url.substr(0, url.find('#'));
}

std::string_view fragmentOf(std::string_view url) {
  return url.substr(std::min(url.find('#'), url.size()));
}

}  // namespace pagescan::tool
