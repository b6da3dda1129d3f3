#include "save/media_type.h"

#include <algorithm>
#include <cstddef>

namespace pagescan::tool {

namespace {

struct Row {
  std::string_view essence, extension;
};

// The first row of an extension is the type that the extension stands for.
constexpr Row kExtensions[] = {
    {"text/html", "html"},
    {"application/xhtml+xml", "xhtml"},
    {"text/css", "css"},
    {"text/javascript", "js"},
    {"application/javascript", "js"},
    {"application/x-javascript", "js"},
    {"application/ecmascript", "js"},
    {"text/ecmascript", "js"},
    {"application/json", "json"},
    {"application/manifest+json", "webmanifest"},
    {"application/xml", "xml"},
    {"text/xml", "xml"},
    {"text/plain", "txt"},
    {"text/vtt", "vtt"},
    {"image/svg+xml", "svg"},
    {"image/png", "png"},
    {"image/apng", "apng"},
    {"image/jpeg", "jpg"},
    {"image/gif", "gif"},
    {"image/webp", "webp"},
    {"image/avif", "avif"},
    {"image/bmp", "bmp"},
    {"image/x-icon", "ico"},
    {"image/vnd.microsoft.icon", "ico"},
    {"font/woff2", "woff2"},
    {"font/woff", "woff"},
    {"application/font-woff2", "woff2"},
    {"application/font-woff", "woff"},
    {"font/ttf", "ttf"},
    {"font/otf", "otf"},
    {"video/mp4", "mp4"},
    {"video/webm", "webm"},
    {"video/ogg", "ogv"},
    {"audio/mpeg", "mp3"},
    {"audio/mp4", "m4a"},
    {"audio/ogg", "ogg"},
    {"audio/wav", "wav"},
    {"audio/webm", "weba"},
    {"application/pdf", "pdf"},
    {"application/wasm", "wasm"},
};

// What a browser reads as a document, a sheet or a script whatever the server said.
constexpr std::string_view kActive[] = {"html", "htm",  "shtml", "shtm", "xhtml",  "xht",   "xml",
                                        "xsl",  "xslt", "svg",   "svgz", "mht",    "mhtml", "css",
                                        "js",   "mjs",  "pdf",   "hta",  "exe",    "com",   "bat",
                                        "cmd",  "lnk",  "url",   "scr",  "desktop"};
constexpr std::size_t kLongestExtension = 8;

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string lower(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](char c) { return lower(c); });
  return result;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r\n") + 1 - begin);
}

bool isAlphanumeric(char c) {
  return (c >= '0' && c <= '9') || (lower(c) >= 'a' && lower(c) <= 'z');
}

bool holdsOnly(std::string_view text, std::string_view others) {
  return std::all_of(text.begin(), text.end(), [&](char c) {
    return isAlphanumeric(c) || others.find(c) != std::string_view::npos;
  });
}

bool isEssence(std::string_view text) {
  const std::size_t slash = text.find('/');
  return slash != std::string_view::npos && slash > 0 && slash + 1 < text.size() &&
         holdsOnly(text.substr(0, slash), "+-.") && holdsOnly(text.substr(slash + 1), "+-.");
}

// The first charset of the parameters, its quotes taken off.
std::string charsetIn(std::string_view parameters) {
  while (!parameters.empty()) {
    const std::size_t end = std::min(parameters.find(';'), parameters.size());
    const std::string_view parameter = trimmed(parameters.substr(0, end));
    parameters.remove_prefix(std::min(end + 1, parameters.size()));
    const std::size_t equals = parameter.find('=');
    if (equals == std::string_view::npos || lower(parameter.substr(0, equals)) != "charset")
      continue;
    std::string_view value = parameter.substr(equals + 1);
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
      value = value.substr(1, value.size() - 2);
    }
    return holdsOnly(value, "-_.:+") ? std::string(value) : "";
  }
  return "";
}

}  // namespace

bool MediaType::isScript() const {
  const auto* const row = std::find_if(std::begin(kExtensions), std::end(kExtensions),
                                       [&](const Row& r) { return r.essence == essence; });
  return row != std::end(kExtensions) && row->extension == "js";
}

std::string MediaType::text() const {
  return charset.empty() ? essence : essence + ";charset=" + charset;
}

MediaType mediaTypeOf(std::string_view contentType) {
  const std::size_t end = std::min(contentType.find(';'), contentType.size());
  MediaType type;
  type.essence = lower(trimmed(contentType.substr(0, end)));
  if (!isEssence(type.essence)) return {};
  if (end < contentType.size()) type.charset = charsetIn(contentType.substr(end + 1));
  return type;
}

std::string extensionFor(const MediaType& type, std::string_view extensionOfUrl) {
  for (const Row& row : kExtensions) {
    if (row.essence == type.essence) return std::string(row.extension);
  }
  std::string given = lower(extensionOfUrl);
  if (given.empty() || given.size() > kLongestExtension || !holdsOnly(given, "")) return "bin";
  if (std::find(std::begin(kActive), std::end(kActive), given) != std::end(kActive)) return "bin";
  return given;
}

}  // namespace pagescan::tool
