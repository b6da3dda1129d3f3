#include "save/file_names.h"

#include <algorithm>

namespace pagescan::tool {

namespace {

constexpr std::size_t kLongestStem = 60;

// Windows takes these for devices, whatever extension follows.
constexpr std::string_view kDevices[] = {"con", "prn", "aux", "nul", "conin", "conout"};

bool isDevice(std::string_view stem) {
  if (stem.size() == 4 && (stem.substr(0, 3) == "com" || stem.substr(0, 3) == "lpt")) {
    return stem[3] >= '0' && stem[3] <= '9';
  }
  return std::find(std::begin(kDevices), std::end(kDevices), stem) != std::end(kDevices);
}

std::string_view lastSegment(std::string_view url) {
  const std::size_t scheme = url.find("://");
  if (scheme != std::string_view::npos) url.remove_prefix(scheme + 3);
  url = url.substr(0, url.find_first_of("?#"));
  const std::size_t slash = url.find('/');
  if (slash == std::string_view::npos) return {};
  return url.substr(url.rfind('/') + 1);
}

// Each run of other characters becomes one "_".
std::string plain(std::string_view text) {
  std::string result;
  for (char c : text.substr(0, 4 * kLongestStem)) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    const bool isPlain = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    if (!isPlain) c = '_';
    if (c != '_' || result.empty() || result.back() != '_') result.push_back(c);
  }
  return result.substr(0, kLongestStem);
}

// "%20" and the like become "_", too.
std::string withoutEscapes(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    result.push_back(text[i]);
    if (text[i] == '%') i += 2;
  }
  return result;
}

std::string stemOf(std::string_view segment) {
  std::string stem = plain(withoutEscapes(segment.substr(0, 8 * kLongestStem)));
  if (stem.empty() || stem == "_") stem = "index";
  if (stem.front() == '-' || isDevice(stem)) stem.insert(stem.begin(), '_');
  return stem;
}

}  // namespace

std::string FileNames::allot(std::string_view url, const MediaType& type) {
  const std::string_view segment = lastSegment(url);
  const std::size_t dot = segment.rfind('.');
  const bool hasExtension = dot != std::string_view::npos && dot > 0;
  const std::string stem = stemOf(hasExtension ? segment.substr(0, dot) : segment);
  const std::string extension =
      "." + extensionFor(type, hasExtension ? segment.substr(dot + 1) : std::string_view());
  std::string name = stem + extension;
  for (std::size_t& number = next_[name]; !taken_.insert(name).second;) {
    number = std::max<std::size_t>(number + 1, 2);
    name = stem;
    name.append("-").append(std::to_string(number)).append(extension);
  }
  return name;
}

}  // namespace pagescan::tool
