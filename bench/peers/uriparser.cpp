// uriparser: resolves, escapes and unescapes.
#include <uriparser/Uri.h>

#include <memory>
#include <string>

#include "peers.h"

namespace pagescan::bench {
namespace {

struct Uri {
  explicit Uri(std::string_view text) {
    const char* errorAt = nullptr;
    isRead = uriParseSingleUriExA(&parsed, text.data(), text.data() + text.size(), &errorAt) == 0;
  }
  Uri() = default;
  Uri(const Uri&) = delete;
  Uri& operator=(const Uri&) = delete;
  ~Uri() { uriFreeUriMembersA(&parsed); }

  UriUriA parsed{};
  bool isRead = false;
};

std::size_t written(const UriUriA& uri) {
  int length = 0;
  if (uriToStringCharsRequiredA(&uri, &length) != URI_SUCCESS) return 0;
  std::string result(static_cast<std::size_t>(length), '\0');
  uriToStringA(result.data(), &uri, length + 1, nullptr);
  return result.size();
}

Resolve resolver(const std::string& base) {
  const auto text = std::make_shared<const std::string>(base);
  const auto parsed = std::make_shared<const Uri>(*text);
  return [text, parsed](std::string_view link) -> std::size_t {
    const Uri relative(link);
    Uri absolute;
    if (!relative.isRead || !parsed->isRead ||
        uriAddBaseUriA(&absolute.parsed, &relative.parsed, &parsed->parsed) != URI_SUCCESS) {
      return 0;
    }
    return written(absolute.parsed);
  };
}

std::size_t encode(std::string_view text) {
  static std::string buffer;
  if (buffer.size() < 3 * text.size() + 1) buffer.resize(3 * text.size() + 1);
  const char* const end =
      uriEscapeExA(text.data(), text.data() + text.size(), buffer.data(), URI_FALSE, URI_FALSE);
  return static_cast<std::size_t>(end - buffer.data());
}

std::size_t decode(std::string_view text) {
  std::string copy(text);
  const char* const end = uriUnescapeInPlaceExA(copy.data(), URI_FALSE, URI_BR_DONT_TOUCH);
  return static_cast<std::size_t>(end - copy.data());
}

const PeerRegistration kUriparser(
    {.name = "uriparser", .resolver = resolver, .encode = encode, .decode = decode});

}  // namespace
}  // namespace pagescan::bench
